#pragma once

#include "service/RequestFrame.h"

namespace ekinora::accounts {

using service::Callback;
using service::Json;

// The farmer's own record: profile fields and the three message permissions. The command goes into
// the address; only the properties that are set are sent, "bearer" last.
class UpdateFarmerRequest {
public:
    Json doParam{QJsonValue::Undefined};
    Json email{QJsonValue::Undefined};
    Json countyID{QJsonValue::Undefined};
    Json fullName{QJsonValue::Undefined};
    Json etkSmsPermission{QJsonValue::Undefined};
    Json etkAdvPermission{QJsonValue::Undefined};
    Json etkEmailPermission{QJsonValue::Undefined};

    service::Parameters dictionaryRepresentation() const;
    // POST with the parameters as a JSON body.
    void updateFarmer(Callback success, Callback fail) const;
};

} // namespace ekinora::accounts
