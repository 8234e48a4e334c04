// The bell and the notice list against scripted replies: the count on the badge, the broadcast that
// asks for it again, and the list with its empty state.

#include "FakePlatform.h"
#include "farms/FarmsViewController.h"
#include "notifications/Bell.h"
#include "notifications/NotificationViewController.h"
#include "platform/NavigationController.h"
#include "platform/Storyboard.h"
#include "widgets/BadgeBarButtonItem.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTest>

using namespace ekinora;
using namespace ekinora::testing;
using notifications::NotificationViewController;

namespace {

QJsonObject envelope(const QJsonValue& data) {
    return QJsonObject{{"status", 200}, {"message", ""}, {"errors", QJsonObject{}}, {"data", data}};
}

QJsonObject notice(const QString& message, const QString& date) {
    return QJsonObject{{"id", 1}, {"message", message}, {"date", date}, {"read", 0}};
}

} // namespace

class NotificationsTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        fake = new FakePlatform;
        fake->store->setString("token", "tok-9");
        platform::Storyboard::clear();
        platform::Storyboard::registerIdentifier("NotificationViewController", [] { return new NotificationViewController; });
        unread = QJsonValue(2);
        notices = QJsonArray{notice("Don uyarısı", "21.11.2025 09:30"), notice("Yarışma başladı", "20.11.2025 12:00")};
        fake->http->on("notifications", [this](const HttpRequest&) {
            return jsonReply(envelope(QJsonObject{{"notifications", notices}, {"unreadCount", unread}}));
        });
        // The screen with the bell, with its other loads left unanswered.
        nav = new platform::NavigationController;
        screen = new farms::FarmsViewController;
        nav->setViewControllers({screen});
        fake->platform->window().setRootViewController(nav);
    }
    void cleanup() {
        delete fake;
        platform::Storyboard::clear();
    }

    void theRequestCountsWithoutTouchingTheMarks() {
        fake->platform->window().makeKeyAndVisible();
        fake->clock->advance(0);
        const HttpRequest sent = fake->http->requestsFor("notifications").value(0);
        QCOMPARE(sent.method, QByteArray("GET"));
        QCOMPARE(queryValues(sent, "ignore_read"), QStringList{"1"});
        QCOMPARE(queryValues(sent, "bearer"), QStringList{"tok-9"});
        QCOMPARE(sent.header("Authorization"), QByteArray("Bearer tok-9"));
        QVERIFY(sent.url.contains("/?do=notifications&"));
    }

    void badgeShowsTheUnreadCount_data() {
        QTest::addColumn<QJsonValue>("reply");
        QTest::addColumn<QString>("badge");
        QTest::newRow("three") << QJsonValue(envelope(QJsonObject{{"unreadCount", 3}})) << "3";
        QTest::newRow("as a text") << QJsonValue(envelope(QJsonObject{{"unreadCount", "12"}})) << "12";
        QTest::newRow("none") << QJsonValue(envelope(QJsonObject{{"unreadCount", 0}})) << "";
        QTest::newRow("below zero") << QJsonValue(envelope(QJsonObject{{"unreadCount", -4}})) << "";
        QTest::newRow("no data") << QJsonValue(QJsonObject{{"status", 401}}) << "";
        QTest::newRow("null data keeps the badge") << QJsonValue(envelope(QJsonValue::Null)) << "7";
        QTest::newRow("a failure keeps the badge") << QJsonValue() << "7";
    }
    void badgeShowsTheUnreadCount() {
        QFETCH(QJsonValue, reply);
        QFETCH(QString, badge);
        screen->rightBarButtonItem()->setBadgeValue("7");
        fake->http->on("notifications", reply.isNull() ? transportFailure() : jsonReply(reply));
        fake->platform->window().makeKeyAndVisible();
        fake->run(0);
        QCOMPARE(screen->rightBarButtonItem()->badgeValue(), badge);
        // The badge's own rule: an empty value hides the label.
        auto* item = qobject_cast<widgets::BadgeBarButtonItem*>(screen->rightBarButtonItem());
        QVERIFY(item);
        QCOMPARE(item->badge()->isHidden(), badge.isEmpty());
    }

    void eachAppearanceAddsAnObserverThatStays() {
        fake->platform->window().makeKeyAndVisible();
        fake->run(0);
        QCOMPARE(screen->rightBarButtonItem()->badgeValue(), QStringLiteral("2"));
        // Another screen goes on top and comes off again: a second appearance.
        auto* other = new platform::ViewController;
        nav->pushViewController(other, false);
        nav->popViewControllerAnimated(false);
        QCOMPARE(fake->platform->notificationCenter().observerCount("checkNotifBadge"), 2);
        fake->run(0);
        fake->http->requests.clear();

        unread = QJsonValue(5);
        fake->platform->notificationCenter().postNotificationName("checkNotifBadge");
        QCOMPARE(fake->http->requestsFor("notifications").size(), 2);
        fake->run(0);
        QCOMPARE(screen->rightBarButtonItem()->badgeValue(), QStringLiteral("5"));

        // Gone from the screen, still alive in the stack: it keeps counting.
        nav->pushViewController(new platform::ViewController, false);
        fake->http->requests.clear();
        fake->platform->notificationCenter().postNotificationName("checkNotifBadge");
        QCOMPARE(fake->http->requestsFor("notifications").size(), 2);
    }

    void theBellOpensTheListWhichMarksAndShowsTheNotices() {
        fake->platform->window().makeKeyAndVisible();
        fake->run(0);
        fake->http->requests.clear();
        auto* item = screen->rightBarButtonItem();
        QCOMPARE(item->objectName(), QStringLiteral("btnNotification"));
        item->tap();
        auto* list = qobject_cast<NotificationViewController*>(screen->presentedViewController());
        QVERIFY(list);
        QCOMPARE(queryValues(fake->http->requestsFor("notifications").value(0), "ignore_read"), QStringList{"0"});
        QVERIFY(list->lblInfo->isHidden());
        QCOMPARE(fake->platform->window().hudCount(), 1);
        fake->run(0);
        QCOMPARE(fake->platform->window().hudCount(), 0);
        QCOMPARE(list->numberOfRowsInSection(0), 2);
        const QVariantMap first = list->cellForRow(0);
        QCOMPARE(first.value("reuseIdentifier").toString(), QStringLiteral("NotificationCell"));
        QCOMPARE(first.value("lblNotification").toString(), QStringLiteral("Don uyarısı"));
        QCOMPARE(first.value("lblDate").toString(), QStringLiteral("21.11.2025 09:30"));
        QVERIFY(list->lblInfo->isHidden());
        // Opening the list leaves the badge until the next count.
        QCOMPARE(item->badgeValue(), QStringLiteral("2"));
        list->closeView();
        QVERIFY(!screen->presentedViewController());
    }

    void anEmptyListShowsTheInfoAndAFailureKeepsIt() {
        notices = QJsonArray{};
        fake->platform->window().makeKeyAndVisible();
        fake->clock->advance(0);
        screen->rightBarButtonItem()->tap();
        auto* list = qobject_cast<NotificationViewController*>(screen->presentedViewController());
        QVERIFY(list);
        fake->run(0);
        QVERIFY(!list->lblInfo->isHidden());
        QCOMPARE(list->numberOfRowsInSection(0), 0);

        fake->http->on("notifications", transportFailure());
        list->getNotifications();
        fake->run(0);
        QVERIFY(!list->lblInfo->isHidden());
        QCOMPARE(fake->platform->window().hudCount(), 0);
    }

private:
    FakePlatform* fake = nullptr;
    platform::NavigationController* nav = nullptr;
    farms::FarmsViewController* screen = nullptr;
    QJsonValue unread;
    QJsonArray notices;
};

QTEST_GUILESS_MAIN(NotificationsTest)
#include "tst_notifications.moc"
