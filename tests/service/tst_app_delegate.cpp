// The application's start: its order and timetable, both maintenance checks, the popup poll, the
// update prompt, push registration and what is announced on activation and on a push.

#include "Ekinora.h"
#include "FakePlatform.h"
#include "platform/AlertController.h"
#include "platform/Storyboard.h"
#include "service/AppDelegate.h"
#include "service/LocalStore.h"
#include "service/ServiceRoots.h"

#include <QJsonObject>
#include <QTest>

using namespace ekinora;
using namespace ekinora::service;
using namespace ekinora::testing;
using platform::Json;

namespace {

// Stands for the campaign card: records what the poll hands it.
class CardStandIn : public platform::ViewController {
    Q_OBJECT
    Q_PROPERTY(QJsonValue dictPopup MEMBER dictPopup)
public:
    QJsonValue dictPopup;
};

QJsonObject envelope(const QJsonValue& data, int status = 200, const QJsonValue& message = QString()) {
    return QJsonObject{{"status", status}, {"message", message}, {"data", data}};
}

} // namespace

class AppDelegateTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        fake = new FakePlatform;
        Roots::configure(QStringLiteral("http://svc.test"));
        platform::Storyboard::clear();
        Ekinora::registerScreens();
        platform::Storyboard::registerIdentifier(QStringLiteral("PopupViewController"), [] { return new CardStandIn; });
        // The sign-in screen's own loads are not the delegate's, nor are the home's.
        platform::Storyboard::registerIdentifier(QStringLiteral("loginVC"), [] { return new platform::ViewController; });
        platform::Storyboard::registerIdentifier(QStringLiteral("firstViewController"), [] { return new platform::ViewController; });
        fake->platform->window().setRootViewController(
            platform::Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("RootViewController")));
        delegate = new AppDelegate;
    }
    void cleanup() {
        delete delegate;
        delete fake;
    }

    void timetableRunsPushAtOneSecondChecksAtTwoAndPollsEveryTen() {
        fake->platform->application().setApplicationIconBadgeNumber(5);
        QVERIFY(delegate->didFinishLaunching());
        QCOMPARE(fake->platform->application().applicationIconBadgeNumber(), 0);
        QCOMPARE(fake->platform->application().supportedInterfaceOrientations(), 2);
        // The maintenance check goes at once.
        QCOMPARE(fake->http->requests.size(), 1);
        fake->run(999);
        QCOMPARE(fake->push->settingsTypes, -1);
        fake->run(1);
        QCOMPARE(fake->push->settingsTypes, 7);
        QCOMPARE(fake->push->remoteRegistrations, 1);
        QCOMPARE(fake->http->requests.size(), 1);
        fake->run(1000);
        // The update check, then the probe.
        QCOMPARE(fake->http->requests.size(), 3);
        QCOMPARE(commandOf(fake->http->requests.at(1)), QStringLiteral("app/version"));
        QCOMPARE(fake->http->requests.at(2).url, QByteArray("http://svc.test/check"));
        QCOMPARE(fake->http->requests.at(2).header("Authorization"), QByteArray("Bearer (null)"));
        // Nobody is logged in: the poll sends nothing.
        fake->run(8000);
        QCOMPARE(fake->http->requestsFor("popup").size(), 0);
        // After a login the same timer starts asking, without a restart.
        LocalStore::setUserInfo(QJsonObject{{"type", "farmer"}});
        fake->run(10000);
        QCOMPARE(fake->http->requestsFor("popup").size(), 1);
        fake->run(30000);
        QCOMPARE(fake->http->requestsFor("popup").size(), 4);
        // After logout it goes on ticking and does nothing.
        LocalStore::logoutReset();
        fake->run(50000);
        QCOMPARE(fake->http->requestsFor("popup").size(), 4);
    }

    void serviceMaintenanceReadsLooseTypes_data() {
        QTest::addColumn<QJsonObject>("reply");
        QTest::addColumn<bool>("alert");
        QTest::newRow("texts that read as 200 and true")
            << QJsonObject{{"status", "200"}, {"message", QJsonObject{{"text", "x"}}}, {"data", QJsonObject{{"maintenance", "1"}}}}
            << true;
        QTest::newRow("off") << envelope(QJsonObject{{"maintenance", false}}) << false;
        QTest::newRow("a rejection") << envelope(QJsonObject{{"maintenance", true}}, 400) << false;
        QTest::newRow("no data member") << QJsonObject{{"status", 200}} << false;
    }
    void serviceMaintenanceReadsLooseTypes() {
        QFETCH(QJsonObject, reply);
        QFETCH(bool, alert);
        fake->http->on("maintenance", jsonReply(reply));
        delegate->didFinishLaunching();
        fake->http->flush();
        QCOMPARE(fake->alert() != nullptr, alert);
    }

    void probeDownEndsWithTwoAndTheSecondAlertIsRefused() {
        fake->http->on("maintenance", jsonReply(envelope(QJsonObject{{"maintenance", true}}, 200, QJsonObject{{"text", "A"}})));
        fake->http->on("/check", jsonReply(QJsonObject{{"status", false}, {"message", "Sunucu kapalı"}}));
        delegate->didFinishLaunching();
        fake->run(2000);
        // Both checks want the root; the probe's alert is refused while the first is up.
        QCOMPARE(fake->platform->window().presentedControllers().size(), 1);
        QCOMPARE(fake->alert()->message(), QStringLiteral("A"));
        QVERIFY(fake->logged("Attempt to present"));
        fake->alert()->tapButton(0);
        QCOMPARE(fake->endings, QList<int>{0});
    }

    void popupIsPresentedOnlyForARecord_data() {
        QTest::addColumn<QJsonObject>("reply");
        QTest::addColumn<bool>("shown");
        const QJsonObject card{{"header", "Kampanya"}, {"content", "<b>İndirim</b>"}, {"pest_id", QJsonValue::Null}};
        QTest::newRow("a card") << envelope(QJsonObject{{"popup", card}}) << true;
        QTest::newRow("no card") << envelope(QJsonObject{{"popup", QJsonValue::Null}}) << false;
        QTest::newRow("null data") << envelope(QJsonValue::Null) << false;
        // The status is not looked at.
        QTest::newRow("a card in a rejection") << envelope(QJsonObject{{"popup", card}}, 400) << true;
    }
    void popupIsPresentedOnlyForARecord() {
        QFETCH(QJsonObject, reply);
        QFETCH(bool, shown);
        LocalStore::setUserInfo(QJsonObject{{"type", "farmer"}});
        fake->http->on("popup", jsonReply(reply));
        delegate->didFinishLaunching();
        fake->run(10000);
        const auto presented = fake->platform->window().presentedControllers();
        QCOMPARE(presented.size(), shown ? 1 : 0);
        if (!shown) return;
        auto* card = qobject_cast<CardStandIn*>(presented.first());
        QVERIFY(card);
        QCOMPARE(card->modalPresentationStyle, 5);
        QCOMPARE(card->modalTransitionStyle, 2);
        QCOMPARE(card->dictPopup.toObject().value("header").toString(), QStringLiteral("Kampanya"));
        // The next tick tries again and the platform refuses it while the card is up.
        fake->run(10000);
        QCOMPARE(fake->platform->window().presentedControllers().size(), 1);
        QVERIFY(fake->logged("Attempt to present CardStandIn"));
    }

    void deviceTokenIsSixtyFourHexDigits() {
        QByteArray bytes;
        for (int i = 0; i < 40; ++i) bytes.append(char(i * 7 + 0xa0));
        const QString text = AppDelegate::tokenText(bytes);
        QCOMPARE(text.size(), 64);
        QVERIFY(text.startsWith(QStringLiteral("a0a7aeb5")));
        QCOMPARE(text, text.toLower());
        emit fake->push->didRegisterForRemoteNotificationsWithDeviceToken(bytes);
        QCOMPARE(fake->store->stringForKey(StoreKey::NotifToken), text);
        QVERIFY(fake->logged("notificationToken " + text));
        emit fake->push->didFailToRegisterForRemoteNotificationsWithError(QStringLiteral("yok"));
        QVERIFY(fake->logged("Fail remote notification err :yok"));
    }

    void pushArrivalResetsTheBadgeAndPostsThreeInOrder() {
        fake->platform->application().setApplicationIconBadgeNumber(5);
        emit fake->push->didReceiveRemoteNotification(QJsonObject{{"aps", QJsonObject{{"badge", 1}}}});
        QCOMPARE(fake->platform->application().applicationIconBadgeNumber(), 0);
        QCOMPARE(fake->posts, (QStringList{"checkUnreadMessages", "refreshMessages", "checkNotifBadge"}));
        QVERIFY(fake->logged("yesssss"));
    }

    void activationPostsTwoAndForegroundChecksTheVersion() {
        delegate->applicationDidBecomeActive();
        QCOMPARE(fake->posts, (QStringList{"checkUnreadMessages", "refreshMessages"}));
        delegate->applicationWillEnterForeground();
        QCOMPARE(fake->http->requestsFor("app/version").size(), 1);
    }

    void anUpdateRenewsTheVersionButNotTheMenuStamp() {
        fake->store->setString(StoreKey::AppVersion, QStringLiteral("1.3.9"));
        fake->store->setString(StoreKey::MenuItemCounter, QStringLiteral("2025-01-02 03:04:05"));
        fake->store->setString(StoreKey::LibStat, QStringLiteral("2"));
        delegate->didFinishLaunching();
        QCOMPARE(fake->store->stringForKey(StoreKey::AppVersion), QStringLiteral("1.4.0"));
        QCOMPARE(fake->store->stringForKey(StoreKey::MenuItemCounter), QStringLiteral("2025-01-02 03:04:05"));
        QCOMPARE(fake->store->stringForKey(StoreKey::LibStat), QStringLiteral("1"));
    }

    void updatePromptIsForcedForMinorAndMajorOptionalForPatch_data() {
        QTest::addColumn<QString>("published");
        QTest::addColumn<QStringList>("buttons");
        QTest::newRow("major") << "2.0.0" << QStringList{"Güncelle"};
        QTest::newRow("minor") << "1.5.0" << QStringList{"Güncelle"};
        QTest::newRow("patch") << "1.4.1" << QStringList{"Sonraki Sefere", "Güncelle"};
        QTest::newRow("same") << "1.4.0" << QStringList{};
        QTest::newRow("older") << "1.3.7" << QStringList{};
    }
    void updatePromptIsForcedForMinorAndMajorOptionalForPatch() {
        QFETCH(QString, published);
        QFETCH(QStringList, buttons);
        fake->http->on("app/version", jsonReply(envelope(QJsonObject{{"version", published},
                                                                       {"storeUrl", "http://svc.test/store/ekinora"}})));
        QList<QUrl> opened;
        connect(&fake->platform->application(), &platform::Application::urlOpened, this,
                [&](const QUrl& u) { opened << u; });
        delegate->didFinishLaunching();
        fake->run(2000);
        if (buttons.isEmpty()) {
            QVERIFY(!fake->alert());
            return;
        }
        QVERIFY(fake->alert());
        QCOMPARE(fake->alert()->buttonTitles(), buttons);
        fake->alert()->tapButton(int(buttons.size()) - 1);
        QCOMPARE(opened, QList<QUrl>{QUrl("http://svc.test/store/ekinora")});
    }

private:
    FakePlatform* fake = nullptr;
    AppDelegate* delegate = nullptr;
};

QTEST_GUILESS_MAIN(AppDelegateTest)
#include "tst_app_delegate.moc"
