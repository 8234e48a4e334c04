#pragma once

#include "service/RequestFrame.h"

namespace ekinora::farms {

using service::Callback;
using service::Json;

// The crop and farm commands. The command goes into the address; every property is left out until a
// caller sets it.
class FarmerProductRequest {
public:
    Json doParam{QJsonValue::Undefined};
    Json objectID{QJsonValue::Undefined};
    Json produceID{QJsonValue::Undefined};
    Json periodID{QJsonValue::Undefined};
    Json farmerPriority{QJsonValue::Undefined};
    Json apsList{QJsonValue::Undefined};
    Json range{QJsonValue::Undefined};

    service::Parameters dictionaryRepresentation() const;
    // GET with the parameters in the query.
    void requestData(Callback success, Callback fail) const;
    // POST with the parameters as a JSON body.
    void addProduct(Callback success, Callback fail) const;
};

} // namespace ekinora::farms
