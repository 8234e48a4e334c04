#pragma once

#include "RequestFrame.h"

namespace ekinora::service {

// The general request: one property per parameter, nil by default; the command in the parameters.
class WSRequest {
public:
    Json doParam{QJsonValue::Undefined};
    Json objectID{QJsonValue::Undefined};
    Json cityID{QJsonValue::Undefined};
    Json eventStatus{QJsonValue::Undefined};
    Json slugName{QJsonValue::Undefined};
    Json produceType{QJsonValue::Undefined};
    Json produceCategory{QJsonValue::Undefined};
    Json stockLocation{QJsonValue::Undefined};
    Json produceID{QJsonValue::Undefined};
    Json agrivoCity{QJsonValue::Undefined};
    Json agrivoCounty{QJsonValue::Undefined};
    Json ignoreRead{QJsonValue::Undefined}; // kept, never set
    Json isForced{QJsonValue::Undefined};   // kept, never set
    Json pageToken{QJsonValue::Undefined};
    Json barcodeID{QJsonValue::Undefined}; // kept, never set

    Parameters dictionaryRepresentation() const;
    void requestData(Callback success, Callback fail) const;
    // Kept for symmetry; nothing calls it.
    void requestPostData(Callback success, Callback fail) const;

    static const FrameSpec GetFrame;
    static const FrameSpec PostFrame;
};

// The probe of the host outside "/api": "/check" on ServiceRoot.
class MaintenanceModeRequest {
public:
    Json isDevelopment{QJsonValue::Undefined}; // "test"; nothing sets it

    Parameters dictionaryRepresentation() const;
    void checkMaintenance(Callback success, Callback fail) const;
    static QString url();
};

// The service's own maintenance command: the command in the URL and again among the parameters, with
// neither "Content-Type" nor "Authorization".
class MaintenanceRequest {
public:
    Json doParam{QJsonValue::Undefined};

    Parameters dictionaryRepresentation() const;
    void checkMaintenance(Callback success, Callback fail) const;
};

} // namespace ekinora::service
