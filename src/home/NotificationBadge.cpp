#include "NotificationBadge.h"

#include "platform/Foundation.h"
#include "platform/ViewController.h"
#include "service/RequestFrame.h"

namespace ekinora::home {

using namespace platform;
using service::RequestFrame;

void refreshNotificationBadge(ViewController* screen) {
    // The count without touching the read marks: "ignore_read" 1.
    static const service::FrameSpec frame{"GET", true, true, true};
    service::Parameters parameters;
    RequestFrame::add(parameters, QStringLiteral("ignore_read"), QStringLiteral("1"));
    RequestFrame::addBearer(parameters);
    auto self = strong(screen);
    RequestFrame::send(
        frame, RequestFrame::commandUrl(QStringLiteral("notifications")), parameters,
        [self](const Json& response) {
            const Json data = member(response, QStringLiteral("data"));
            if (data.isNull()) return;
            const int unread = intValue(member(data, QStringLiteral("unreadCount")));
            if (BarButtonItem* bell = self->rightBarButtonItem())
                bell->setBadgeValue(unread < 1 ? QString("") : stringWithFormat(QStringLiteral("%d"), {unread}));
        },
        [](const Json&) {});
}

} // namespace ekinora::home
