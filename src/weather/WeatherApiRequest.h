#pragma once

#include "service/RequestFrame.h"

namespace ekinora::weather {

using service::Callback;
using service::Json;

// The weather of a point: today's hours, the week's days, and a day from the older endpoint. Weather is
// public: no token goes with these requests, and every parameter travels in the address itself.
class WeatherApiRequest {
public:
    Json latValue{QJsonValue::Undefined};
    Json lonValue{QJsonValue::Undefined};
    Json dateYMD{QJsonValue::Undefined};

    // "LAT", "LON" and "dateYmd", each only when set. No request sends it.
    service::Parameters dictionaryRepresentation() const;

    // Today's hourly records; the date is always the device's today, whatever dateYMD holds.
    void requestData(Callback success, Callback fail) const;
    // The daily records of the week.
    void requestDetailData(Callback success, Callback fail) const;
    // One day's information from the older endpoint, for dateYMD. Nothing calls it at present.
    void requestDetailInfoData(Callback success, Callback fail) const;

    // The addresses the three methods send to.
    QString dataUrl() const;
    QString detailDataUrl() const;
    QString detailInfoDataUrl() const;
};

} // namespace ekinora::weather
