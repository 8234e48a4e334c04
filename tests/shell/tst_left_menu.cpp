// The side menu: the items of the stored "menu" in its order, the new mark's 60 days, what a row
// opens, logout's order of steps, the unread check and the scheme opener.

#include "Ekinora.h"
#include "FakePlatform.h"
#include "platform/NavigationController.h"
#include "platform/SideMenuViewController.h"
#include "platform/Storyboard.h"
#include "service/LocalStore.h"
#include "service/ServiceRoots.h"
#include "shell/LeftMenuViewController.h"

#include <QJsonObject>
#include <QTest>

using namespace ekinora;
using namespace ekinora::testing;
using shell::LeftMenuViewController;
namespace StoreKey = service::StoreKey;

class LeftMenuTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        fake = new FakePlatform;
        service::Roots::configure(QStringLiteral("http://svc.test"));
        platform::Storyboard::clear();
        Ekinora::registerScreens();
        // Screens behind the rows are not under test here.
        for (const char* screen : {"loginVC", "HomeSB"})
            platform::Storyboard::registerIdentifier(QString::fromLatin1(screen), [] { return new platform::ViewController; });
        fake->store->setString(StoreKey::MenuItemCounter, QStringLiteral("2026-03-01 08:00:00"));
        root = qobject_cast<platform::SideMenuViewController*>(
            platform::Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("RootViewController")));
        fake->platform->window().setRootViewController(root);
        fake->platform->window().makeKeyAndVisible();
        fake->clock->advance(0);
        menu = qobject_cast<LeftMenuViewController*>(root->leftMenuViewController());
        menu->loadViewIfNeeded();
    }
    void cleanup() { delete fake; }

    void rootPicksTheFirstScreenByTheStoredRole_data() {
        QTest::addColumn<QJsonValue>("type");
        QTest::addColumn<QString>("first");
        QTest::addColumn<int>("stacks");
        QTest::newRow("dealer") << QJsonValue("dealer") << "messages" << 2;
        QTest::newRow("adminUser") << QJsonValue("adminUser") << "messages" << 2;
        QTest::newRow("farmer") << QJsonValue("farmer") << "home" << 2;
        QTest::newRow("loyalty") << QJsonValue("loyalty") << "home" << 2;
        QTest::newRow("other text") << QJsonValue("Farmer") << "home" << 1;
        QTest::newRow("not a text") << QJsonValue(3) << "home" << 1;
        QTest::newRow("nobody") << QJsonValue(QJsonValue::Undefined) << "home" << 1;
    }
    void rootPicksTheFirstScreenByTheStoredRole() {
        QFETCH(QJsonValue, type);
        QFETCH(QString, first);
        QFETCH(int, stacks);
        auto named = [](const QString& name) {
            auto* screen = new platform::ViewController;
            screen->setObjectName(name);
            return screen;
        };
        platform::Storyboard::registerIdentifier(QStringLiteral("firstViewController"), [=] { return named("home"); });
        platform::Storyboard::registerIdentifier(QStringLiteral("messageVC"), [=] { return named("messages"); });
        int made = 0;
        platform::Storyboard::registerIdentifier(QStringLiteral("contentViewController"), [&made] {
            ++made;
            auto* content = new platform::NavigationController;
            content->setViewControllers({platform::Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("firstViewController"))});
            return content;
        });
        if (type.isUndefined()) service::LocalStore::defaults().removeObjectForKey(StoreKey::UserInfo);
        else service::LocalStore::setUserInfo(QJsonObject{{"type", type}});
        auto* fresh = qobject_cast<platform::SideMenuViewController*>(
            platform::Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("RootViewController")));
        auto* content = qobject_cast<platform::NavigationController*>(fresh->contentViewController());
        QVERIFY(content);
        QCOMPARE(content->topViewController()->objectName(), first);
        QCOMPARE(made, stacks); // a recognised role replaces the default stack by a new one
        fresh->release();
    }

    void menuFollowsTheRecordsOrder() {
        signIn(QJsonArray{5, 0, 99, "1", -1});
        QCOMPARE(names(), (QStringList{"Mesajlarım", "Anasayfa", "Profilim"}));
        QCOMPARE(menu->menuListArr.at(0).toObject().value("id").toString(), QStringLiteral("5"));
        QVERIFY(menu->arrList.isEmpty());

        // Without a record the list stays; a record without "menu" empties it.
        fake->store->removeObjectForKey(StoreKey::UserInfo);
        fake->platform->notificationCenter().postNotificationName("checkMenuList");
        QCOMPARE(names().size(), 3);
        service::LocalStore::setUserInfo(QJsonObject{{"type", "farmer"}});
        fake->platform->notificationCenter().postNotificationName("checkMenuList");
        QVERIFY(names().isEmpty());
    }

    void newMarkLastsSixtyWholeDays_data() {
        QTest::addColumn<QDateTime>("now");
        QTest::addColumn<bool>("marked");
        QTest::newRow("day 60 and some hours") << QDateTime(QDate(2026, 4, 30), QTime(21, 0)) << true;
        QTest::newRow("day 61") << QDateTime(QDate(2026, 5, 1), QTime(8, 0)) << false;
    }
    void newMarkLastsSixtyWholeDays() {
        QFETCH(QDateTime, now);
        QFETCH(bool, marked);
        fake->clock->setNow(now);
        signIn(QJsonArray{15, 0});
        const QVariantMap cell = menu->cellForRow(0);
        QCOMPARE(cell.value("marked").toBool(), marked);
        if (marked) {
            QCOMPARE(cell.value("text").toString(), QStringLiteral("Bitki Koruma Ürünleri  YENİ "));
            QVERIFY(cell.value("html").toString().contains("#e39e29"));
            QVERIFY(cell.value("html").toString().startsWith("Bitki Koruma Ürünleri <span"));
        } else {
            QCOMPARE(cell.value("text").toString(), QStringLiteral("Bitki Koruma Ürünleri"));
        }
        // The stored name keeps its mark either way, and the row still opens its screen.
        QCOMPARE(names().first(), QStringLiteral("Bitki Koruma Ürünleri  YENİ "));
        QCOMPARE(menu->cellForRow(1).value("marked").toBool(), false);
        menu->didSelectRow(0);
        QCOMPARE(topIdentifier(), QStringLiteral("HomeSB"));
    }

    void rowsReplaceTheContent() {
        signIn(QJsonArray{16, 17, 3});
        root->presentLeftMenuViewController();
        menu->didSelectRow(0);
        QCOMPARE(fake->store->stringForKey(StoreKey::MaizeCanola), QStringLiteral("maize"));
        QCOMPARE(topIdentifier(), QStringLiteral("MaizeSB"));
        QVERIFY(!root->isMenuVisible());
        menu->didSelectRow(1);
        QCOMPARE(fake->store->stringForKey(StoreKey::MaizeCanola), QStringLiteral("canola"));
        QCOMPARE(topIdentifier(), QStringLiteral("MaizeAllSB"));
        menu->didSelectRow(2);
        QCOMPARE(topIdentifier(), QStringLiteral("farmVC"));
        QCOMPARE(content()->depth(), 1);

        // A name that matches no label installs a content without any screen.
        menu->menuListArr.append(QJsonObject{{"name", "Eski Menü"}, {"icon", "info"}, {"id", "42"}});
        menu->didSelectRow(3);
        QVERIFY(content());
        QCOMPARE(content()->depth(), 0);

        fake->platform->notificationCenter().postNotificationName("goToLoyalty");
        QCOMPARE(topIdentifier(), QStringLiteral("loyaltyVC"));
    }

    void logoutResetsTheStoreBeforeItsRequest() {
        signIn(QJsonArray{0});
        fake->store->setString(StoreKey::Token, QStringLiteral("tok-1"));
        platform::ViewController* before = root->contentViewController();
        menu->logout();
        // Sent after the reset: no token.
        const HttpRequest r = fake->http->requestsFor("farmer/logout").last();
        QVERIFY(queryValues(r, "bearer").isEmpty());
        QVERIFY(r.headers.contains({"Authorization", "Bearer (null)"}));
        QVERIFY(!fake->store->contains(StoreKey::Token));
        QVERIFY(!fake->store->contains(StoreKey::UserInfo));
        QCOMPARE(fake->store->stringForKey(StoreKey::IsLogout), QStringLiteral("YES"));
        // A failed logout leaves the old content on screen.
        fake->run(0);
        QCOMPARE(root->contentViewController(), before);
        // The menu survives until the next check.
        QCOMPARE(names(), QStringList{"Anasayfa"});

        fake->http->on("farmer/logout", jsonReply(QJsonObject{{"status", 200}}));
        menu->logout();
        fake->run(0);
        QVERIFY(root->contentViewController() != before);
        QCOMPARE(content()->depth(), 1);
    }

    void unreadCheckReloadsOnlyOnSuccess() {
        signIn(QJsonArray{5});
        const int revision = menu->tableView->revision();
        fake->http->on("subject/message/check", jsonReply(QJsonObject{{"status", 401}}));
        fake->platform->notificationCenter().postNotificationName("checkUnreadMessages");
        fake->run(0);
        QCOMPARE(menu->tableView->revision(), revision);
        fake->http->on("subject/message/check", jsonReply(QJsonObject{{"status", 200}, {"data", QJsonObject{{"count", 3}}}}));
        fake->platform->notificationCenter().postNotificationName("checkUnreadMessages");
        fake->run(0);
        QCOMPARE(menu->tableView->revision(), revision + 1);
    }

    void schemesOpenOrSendToTheStore() {
        QList<QUrl> opened;
        auto& app = fake->platform->application();
        app.setUrlOpener([&](const QUrl& u) {
            opened << u;
            return true;
        });
        app.setUrlChecker([](const QUrl& u) { return u.scheme() == "ekinorakulup"; });
        menu->openScheme(QStringLiteral("ekinorakulup://"));
        QVERIFY(fake->logged("Opened ekinorakulup://"));
        menu->openScheme(QStringLiteral("baskauygulama://"));
        QCOMPARE(opened, (QList<QUrl>{QUrl("ekinorakulup://"), QUrl(service::Roots::StoreAppURL)}));
    }

private:
    void signIn(const QJsonArray& codes) {
        service::LocalStore::setUserInfo(QJsonObject{{"type", "farmer"}, {"menu", codes}});
        // Signed in: the screens the menu opens send with the token.
        fake->store->setString(StoreKey::Token, QStringLiteral("token"));
        fake->platform->notificationCenter().postNotificationName("checkMenuList");
    }
    QStringList names() const {
        QStringList list;
        for (int i = 0; i < menu->numberOfRowsInSection(0); ++i) list << menu->menuListArr.at(i).toObject().value("name").toString();
        return list;
    }
    platform::NavigationController* content() const {
        return qobject_cast<platform::NavigationController*>(root->contentViewController());
    }
    QString topIdentifier() const {
        auto* top = content() ? content()->topViewController() : nullptr;
        return top ? top->property("storyboardIdentifier").toString() : QString();
    }

    FakePlatform* fake = nullptr;
    platform::SideMenuViewController* root = nullptr;
    LeftMenuViewController* menu = nullptr;
};

QTEST_GUILESS_MAIN(LeftMenuTest)
#include "tst_left_menu.moc"
