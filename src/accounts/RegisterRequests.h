#pragma once

#include "service/RequestFrame.h"

namespace ekinora::accounts {

using service::Callback;
using service::Json;

// A farmer's registration: POST with the command in the address only, neither "Content-Type" nor
// "Authorization" of its own, no redirect block. Only set properties are sent.
class RegisterFarmerRequest {
public:
    Json doParam{QJsonValue::Undefined};
    Json email{QJsonValue::Undefined};
    Json deviceID{QJsonValue::Undefined};
    Json countyID{QJsonValue::Undefined};
    Json fullName{QJsonValue::Undefined};
    Json firstName{QJsonValue::Undefined};
    Json lastName{QJsonValue::Undefined};
    Json hashID{QJsonValue::Undefined};
    Json arrFields{QJsonValue::Undefined}; // "fields", only with at least one crop
    Json etkSmsPermission{QJsonValue::Undefined};
    Json etkAdvPermission{QJsonValue::Undefined};
    Json etkEmailPermission{QJsonValue::Undefined};

    // The set properties in this order, then "term" "yes" and "deviceType" 2, always.
    service::Parameters dictionaryRepresentation() const;
    void registerFarmer(Callback success, Callback fail) const;
};

// A dealer's registration: the same frame as a farmer's.
class RegisterDealerRequest {
public:
    Json doParam{QJsonValue::Undefined};
    Json email{QJsonValue::Undefined};
    Json deviceID{QJsonValue::Undefined};
    Json countyID{QJsonValue::Undefined};
    Json fullName{QJsonValue::Undefined};
    Json firstName{QJsonValue::Undefined};
    Json lastName{QJsonValue::Undefined};
    Json etkSmsPermission{QJsonValue::Undefined};
    Json etkAdvPermission{QJsonValue::Undefined};
    Json etkEmailPermission{QJsonValue::Undefined};
    Json hashID{QJsonValue::Undefined};
    Json dealerNumber{QJsonValue::Undefined}; // "taxNumber"
    Json dealerName{QJsonValue::Undefined};
    Json TCNo{QJsonValue::Undefined};

    service::Parameters dictionaryRepresentation() const;
    void registerDealer(Callback success, Callback fail) const;
};

// The check of a dealer's shop data before the last panel: POST with "Content-Type" and
// "Authorization" (carrying "(null)" before any sign-in), the command in the address and in the body,
// no "bearer", no redirect block.
class CheckDealerRequest {
public:
    Json doParam{QJsonValue::Undefined};
    Json taxNumber{QJsonValue::Undefined};
    Json dealerName{QJsonValue::Undefined};
    Json TCNo{QJsonValue::Undefined};

    service::Parameters dictionaryRepresentation() const;
    void checkDealer(Callback success, Callback fail) const;
};

} // namespace ekinora::accounts
