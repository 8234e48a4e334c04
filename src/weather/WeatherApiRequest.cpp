#include "WeatherApiRequest.h"

#include "platform/Platform.h"
#include "service/ServiceRoots.h"

namespace ekinora::weather {

using namespace platform;
using service::RequestFrame;
using service::Roots;

namespace {
// A GET with "Content-Type" only: no authorisation, no redirect block, no parameters object.
const service::FrameSpec PublicGet{"GET", true, false, false};
} // namespace

service::Parameters WeatherApiRequest::dictionaryRepresentation() const {
    service::Parameters p;
    RequestFrame::add(p, QStringLiteral("LAT"), latValue);
    RequestFrame::add(p, QStringLiteral("LON"), lonValue);
    RequestFrame::add(p, QStringLiteral("dateYmd"), dateYMD);
    return p;
}

QString WeatherApiRequest::dataUrl() const {
    const QString today = formatDate(Platform::current().scheduler().now(), QStringLiteral("yyyy-MM-dd"));
    return Roots::ServiceBase +
           stringWithFormat(QStringLiteral("/?do=weather/weather-json&latitude=%@&longitude=%@&date=%@"),
                            {latValue, lonValue, today});
}

QString WeatherApiRequest::detailDataUrl() const {
    return Roots::ServiceBase +
           stringWithFormat(QStringLiteral("/?do=weather/weather-weekly&latitude=%@&longitude=%@"), {latValue, lonValue});
}

QString WeatherApiRequest::detailInfoDataUrl() const {
    return Roots::LegacyWeatherBase +
           stringWithFormat(QStringLiteral("/scripts/include/custom/weather.php?do=getWeatherInformationForDay&type=json"
                                           "&latitude=%@&longitude=%@&date=%@"),
                            {latValue, lonValue, dateYMD});
}

void WeatherApiRequest::requestData(Callback success, Callback fail) const {
    RequestFrame::send(PublicGet, dataUrl(), {}, std::move(success), std::move(fail));
}

void WeatherApiRequest::requestDetailData(Callback success, Callback fail) const {
    RequestFrame::send(PublicGet, detailDataUrl(), {}, std::move(success), std::move(fail));
}

void WeatherApiRequest::requestDetailInfoData(Callback success, Callback fail) const {
    RequestFrame::send(PublicGet, detailInfoDataUrl(), {}, std::move(success), std::move(fail));
}

} // namespace ekinora::weather
