#pragma once

#include "service/RequestFrame.h"

namespace ekinora::profile {

using service::Callback;
using service::Json;

// The shop's data of the signed-in dealer: a GET with "do" and "bearer" among the parameters.
class GetDealerRequest {
public:
    Json doParam{QJsonValue::Undefined};
    service::Parameters dictionaryRepresentation() const;
    void requestDealer(Callback success, Callback fail) const;
};

// The shop's data changed: the command in the address, the set fields and the fixed "term" and
// "deviceType" as a JSON body. No "bearer": the token travels in the "Authorization" header.
class UpdateDealerRequest {
public:
    Json doParam{QJsonValue::Undefined};
    Json taxNumber{QJsonValue::Undefined};
    Json dealerName{QJsonValue::Undefined};
    Json TCNo{QJsonValue::Undefined};
    service::Parameters dictionaryRepresentation() const;
    void updateDealer(Callback success, Callback fail) const;
};

} // namespace ekinora::profile
