#pragma once

#include "RequestFrame.h"

namespace ekinora::service {

// The general request: one property per parameter, nil by default; the command in the parameters.
class WSRequest {
public:
    Json doParam;
    Json objectID;
    Json cityID;
    Json eventStatus;
    Json slugName;
    Json produceType;
    Json produceCategory;
    Json stockLocation;
    Json produceID;
    Json agrivoCity;
    Json agrivoCounty;
    Json ignoreRead; // kept, never set
    Json isForced;   // kept, never set
    Json pageToken;
    Json barcodeID; // kept, never set

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
    Json isDevelopment; // "test"; nothing sets it

    Parameters dictionaryRepresentation() const;
    void checkMaintenance(Callback success, Callback fail) const;
    static QString url();
};

// The service's own maintenance command: the command in the URL and again among the parameters, with
// neither "Content-Type" nor "Authorization".
class MaintenanceRequest {
public:
    Json doParam;

    Parameters dictionaryRepresentation() const;
    void checkMaintenance(Callback success, Callback fail) const;
};

} // namespace ekinora::service
