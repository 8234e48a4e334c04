#include "NotificationViewController.h"

#include "GetNotificationRequest.h"
#include "service/ServiceCall.h"
#include "platform/Overlays.h"
#include "platform/Platform.h"

#include <QPointer>

namespace ekinora::notifications {

using namespace platform;

NotificationViewController::NotificationViewController(QObject* parent)
    : ViewController(parent), tblNotification(makeControl<TableView>("tblNotification")),
      lblInfo(makeControl<Label>("lblInfo")) {
    lblInfo->setNumberOfLines(0);
    tblNotification->setDataSource([this](int section) { return numberOfRowsInSection(section); },
                                   [this](int, int row) { return cellRow(cellForRow(row), {}); });
}

QUrl NotificationViewController::viewSource() const {
    return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Notifications/NotificationView.qml"));
}

void NotificationViewController::viewDidLoad() {
    // The table's footer is empty and of no height (drawn by the view: no separators below the last row).
    arrNotifications = QJsonArray();
    getNotifications();
    lblInfo->setHidden(true);
}

void NotificationViewController::getNotifications() {
    service::ScreenCall call(this, QStringLiteral("notifications"), service::ScreenCall::WithHudOnScreen);
    GetNotificationRequest request;
    request.ignoreRead = QStringLiteral("0");
    request.getNotifications(call.done([this](const Json& response) {
                                 arrNotifications = QJsonArray();
                                 const Json list = path(response, {QStringLiteral("data"), QStringLiteral("notifications")});
                                 for (int i = 0, n = count(list); i < n; ++i) arrNotifications.append(element(list, i));
                                 lblInfo->setHidden(!arrNotifications.isEmpty());
                                 tblNotification->reloadData();
                             }),
                             call.failed());
}

int NotificationViewController::numberOfRowsInSection(int) const { return int(arrNotifications.size()); }

QVariantMap NotificationViewController::cellForRow(int row) const {
    QVariantMap cell;
    if (row < 0 || row >= arrNotifications.size()) return cell;
    const Json notice = arrNotifications.at(row);
    cell.insert(QStringLiteral("reuseIdentifier"), QStringLiteral("NotificationCell"));
    // Both texts as they come: the date is not parsed.
    cell.insert(QStringLiteral("lblDate"), stringOrNull(member(notice, QStringLiteral("date"))));
    cell.insert(QStringLiteral("lblNotification"), stringOrNull(member(notice, QStringLiteral("message"))));
    // Read and unread rows look the same.
    cell.insert(QStringLiteral("imgReadColor"), QColor::fromRgbF(0.2f, 0.2f, 0.2f, 1.0f));
    cell.insert(QStringLiteral("selectionStyle"), 0);
    return cell;
}

void NotificationViewController::closeView(QObject*) { dismissViewControllerAnimated(true); }

} // namespace ekinora::notifications
