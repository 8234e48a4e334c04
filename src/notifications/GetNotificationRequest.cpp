#include "GetNotificationRequest.h"

#include "service/ServiceRoots.h"

namespace ekinora::notifications {

using namespace platform;
using service::RequestFrame;

service::Parameters GetNotificationRequest::dictionaryRepresentation() const {
    service::Parameters p;
    RequestFrame::add(p, QStringLiteral("ignore_read"), ignoreRead);
    RequestFrame::addBearer(p);
    return p;
}

void GetNotificationRequest::getNotifications(Callback success, Callback fail) const {
    static const service::FrameSpec frame{"GET", true, true, true};
    RequestFrame::send(frame, stringWithFormat(QStringLiteral("%@/?do=notifications"), {service::Roots::ServiceBase}),
                       dictionaryRepresentation(), std::move(success), std::move(fail));
}

} // namespace ekinora::notifications
