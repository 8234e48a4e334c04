#include "DealerRequests.h"

#include "service/ServiceRoots.h"

namespace ekinora::profile {

using service::RequestFrame;

namespace {
const service::FrameSpec GetFrame{"GET", true, true, true};
const service::FrameSpec UpdateFrame{"POST", true, true, false};
} // namespace

service::Parameters GetDealerRequest::dictionaryRepresentation() const {
    service::Parameters p;
    RequestFrame::add(p, QStringLiteral("do"), doParam);
    RequestFrame::addBearer(p);
    return p;
}

void GetDealerRequest::requestDealer(Callback success, Callback fail) const {
    RequestFrame::send(GetFrame, service::Roots::ServiceBase, dictionaryRepresentation(), std::move(success),
                       std::move(fail));
}

service::Parameters UpdateDealerRequest::dictionaryRepresentation() const {
    service::Parameters p;
    RequestFrame::add(p, QStringLiteral("taxNumber"), taxNumber);
    RequestFrame::add(p, QStringLiteral("dealerName"), dealerName);
    RequestFrame::add(p, QStringLiteral("TCNo"), TCNo);
    RequestFrame::add(p, QStringLiteral("term"), QStringLiteral("yes"));
    RequestFrame::add(p, QStringLiteral("deviceType"), 2);
    return p;
}

void UpdateDealerRequest::updateDealer(Callback success, Callback fail) const {
    RequestFrame::send(UpdateFrame, RequestFrame::commandUrl(platform::stringOrNull(doParam)), dictionaryRepresentation(),
                       std::move(success), std::move(fail));
}

} // namespace ekinora::profile
