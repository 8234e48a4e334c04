#pragma once

#include "service/RequestFrame.h"

namespace ekinora::accounts {

using service::Callback;
using service::Json;

// The SMS code and login requests: GET to the command endpoint with the command among the parameters,
// "Content-Type" set and no token at all.
class SmsRequest {
public:
    Json phoneNumber{QJsonValue::Undefined};
    Json queryType{QJsonValue::Undefined};
    Json deviceID{QJsonValue::Undefined};
    Json deviceType{QJsonValue::Undefined};
    Json doParam{QJsonValue::Undefined};
    Json hashID{QJsonValue::Undefined};
    Json validationCode{QJsonValue::Undefined};

    service::Parameters dictionaryRepresentation() const;
    void getSmsCode(Callback success, Callback fail) const;
    void validateSmsCode(Callback success, Callback fail) const;
};

} // namespace ekinora::accounts
