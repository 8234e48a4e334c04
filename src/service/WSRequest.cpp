#include "WSRequest.h"

#include "ServiceRoots.h"

namespace ekinora::service {

using namespace platform;

const FrameSpec WSRequest::GetFrame{"GET", true, true, true};
const FrameSpec WSRequest::PostFrame{"POST", true, true, true};

Parameters WSRequest::dictionaryRepresentation() const {
    Parameters p;
    RequestFrame::add(p, QStringLiteral("do"), doParam);
    RequestFrame::add(p, QStringLiteral("id"), objectID);
    RequestFrame::add(p, QStringLiteral("cityId"), cityID);
    RequestFrame::add(p, QStringLiteral("status"), eventStatus);
    RequestFrame::add(p, QStringLiteral("slug"), slugName);
    RequestFrame::add(p, QStringLiteral("type"), produceType);
    RequestFrame::add(p, QStringLiteral("category"), produceCategory);
    RequestFrame::add(p, QStringLiteral("strict_location"), stockLocation);
    RequestFrame::add(p, QStringLiteral("produce"), produceID);
    RequestFrame::add(p, QStringLiteral("city"), agrivoCity);
    RequestFrame::add(p, QStringLiteral("county"), agrivoCounty);
    RequestFrame::add(p, QStringLiteral("ignore_read"), ignoreRead);
    RequestFrame::add(p, QStringLiteral("forced"), isForced);
    RequestFrame::add(p, QStringLiteral("ptoken"), pageToken);
    RequestFrame::add(p, QStringLiteral("serialNumber"), barcodeID);
    RequestFrame::addBearer(p);
    return p;
}

void WSRequest::requestData(Callback success, Callback fail) const {
    RequestFrame::send(GetFrame, Roots::ServiceBase, dictionaryRepresentation(), std::move(success), std::move(fail));
}

void WSRequest::requestPostData(Callback success, Callback fail) const {
    RequestFrame::send(PostFrame, Roots::ServiceBase, dictionaryRepresentation(), std::move(success), std::move(fail));
}

Parameters MaintenanceModeRequest::dictionaryRepresentation() const {
    Parameters p;
    RequestFrame::add(p, QStringLiteral("test"), isDevelopment);
    RequestFrame::addBearer(p);
    return p;
}

QString MaintenanceModeRequest::url() {
    QString root = Roots::ServiceBase;
    root.replace(QStringLiteral("/api"), QString());
    return stringWithFormat(QStringLiteral("%@/check"), {root});
}

void MaintenanceModeRequest::checkMaintenance(Callback success, Callback fail) const {
    static const FrameSpec frame{"GET", true, true, true};
    RequestFrame::send(frame, url(), dictionaryRepresentation(), std::move(success), std::move(fail));
}

Parameters MaintenanceRequest::dictionaryRepresentation() const {
    Parameters p;
    RequestFrame::add(p, QStringLiteral("do"), doParam);
    return p;
}

void MaintenanceRequest::checkMaintenance(Callback success, Callback fail) const {
    static const FrameSpec frame{"GET", false, false, false};
    RequestFrame::send(frame, RequestFrame::commandUrl(description(doParam)), dictionaryRepresentation(),
                       std::move(success), std::move(fail));
}

} // namespace ekinora::service
