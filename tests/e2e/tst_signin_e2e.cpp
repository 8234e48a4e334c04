// Sign-in journeys: the real application in-process, offscreen, against the real reference service,
// driven through the object contract as a user would (typing, tapping).

#include "Ekinora.h"
#include "QuickProbe.h"
#include "accounts/Accounts.h"
#include "accounts/DemoAccounts.h"
#include "core/Server.h"
#include "platform/NavigationController.h"
#include "platform/Platform.h"
#include "platform/SideMenuViewController.h"
#include "shell/LeftMenuViewController.h"
#include "shell/MenuItems.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace ekinora;
using namespace ekinora::testing;

class SignInEndToEnd : public QObject {
    Q_OBJECT
private slots:
    void init() {
        service = std::make_unique<server::Server>(server::ServerOptions{});
        service->start();
        settings = std::make_unique<QTemporaryDir>();
        codes.clear();
    }
    void cleanup() {
        app.reset();
        service.reset();
        settings.reset();
    }

    void farmerSignsInSeesHisMenuTheCampaignAndLogsOut() {
        service->setPopupActive(true);
        startApp();
        const auto& farmer = server::accounts::demoAccount("farmer");
        signIn(farmer.phone);

        // The home, with the menu of his record in the service's order.
        QTRY_COMPARE_WITH_TIMEOUT(topIdentifier(), QStringLiteral("firstViewController"), 5000);
        QCOMPARE(content()->topTitle(), QStringLiteral("Anasayfa"));
        auto* menu = qobject_cast<shell::LeftMenuViewController*>(root()->leftMenuViewController());
        QVERIFY(menu);
        QStringList expected;
        for (int code : server::accounts::defaultMenu("farmer")) expected << shell::menuItem(code)->label;
        QStringList shown;
        for (const auto& item : menu->menuListArr) shown << item.toObject().value("name").toString();
        QCOMPARE(shown, expected);

        // The campaign comes up at the next poll and closes.
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "PopupViewController"), 15000);
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 15000);
        tapItem(window(), itemNamed(window(), "closePopup"));
        QTRY_VERIFY(!itemNamed(window(), "PopupViewController"));

        // The menu opens by its button and lists the rows.
        tapItem(window(), itemNamed(window(), "presentLeftMenuViewController"));
        QTRY_VERIFY(root()->isMenuVisible());
        QTest::qWait(400);
        saveScreenshot(window(), QStringLiteral("signin-farmer-menu"));
        const auto cells = itemsNamed(window()->contentItem(), "Cell");
        QVERIFY2(cells.size() >= 12, qPrintable(QString::number(cells.size())));
        QCOMPARE(cells.first()->property("content").toMap().value("text").toString(), QStringLiteral("Anasayfa"));
        saveScreenshot(window(), QStringLiteral("signin-farmer-menu"));

        // A row replaces the content.
        tapItem(window(), cells.at(1));
        QTRY_COMPARE(topIdentifier(), QStringLiteral("profileVC"));
        QTRY_VERIFY(!root()->isMenuVisible());
        QCOMPARE(content()->topTitle(), QStringLiteral("Profilim"));

        // Logout: the store is reset and the farewell panel greets the next sign-in.
        tapItem(window(), itemNamed(window(), "presentLeftMenuViewController"));
        QTRY_VERIFY(root()->isMenuVisible());
        QTest::qWait(300);
        tapItem(window(), itemNamed(window(), "logout"));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "viewLogout"), 5000);
        QVERIFY(!app->platform().defaults().contains("token"));
        QVERIFY(!app->platform().defaults().contains("userInfo"));
        QTest::qWait(300);
        saveScreenshot(window(), QStringLiteral("signin-logout"));
        bool loggedOut = false;
        for (const auto& r : service->requests())
            if (r.target.find("do=farmer%2Flogout") != std::string::npos || r.target.find("do=farmer/logout") != std::string::npos)
                loggedOut = r.target.find("bearer") == std::string::npos;
        QVERIFY(loggedOut);
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 8000);
        tapItem(window(), itemNamed(window(), "loginBack"));
        QTRY_VERIFY(!itemNamed(window(), "viewLogout"));
        QVERIFY(itemNamed(window(), "txtLoginPhone"));
    }

    void dealerLandsOnMessages() {
        startApp();
        signIn(server::accounts::demoAccount("dealer").phone);
        QTRY_COMPARE_WITH_TIMEOUT(topIdentifier(), QStringLiteral("messageVC"), 5000);
        QCOMPARE(content()->topTitle(), QStringLiteral("Mesajlarım"));
        QCOMPARE(app->platform().defaults().stringForKey("token").isEmpty(), false);
    }

    void wrongCodeIsRefusedWithItsMessage() {
        startApp();
        askCode(server::accounts::demoAccount("farmer").phone);
        typeInto("txtLoginCode", QString(codes.last() == "111111" ? "222222" : "111111"));
        tapItem(window(), itemNamed(window(), "validateSmsCodeForLogin"));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "alert"), 5000);
        QQuickItem* alert = itemNamed(window(), "alert");
        QCOMPARE(alert->property("title").toString(), QStringLiteral("Hata"));
        QCOMPARE(alert->property("message").toString(), QStringLiteral("Lütfen kodu doğru giriniz"));
        QTest::qWait(300);
        saveScreenshot(window(), QStringLiteral("signin-wrong-code"));
        tapItem(window(), itemsNamed(alert, "alertButton").first());
        QTRY_VERIFY(!itemNamed(window(), "alert"));
        // Still on the code panel; nothing stored.
        QVERIFY(itemNamed(window(), "viewLoginCode"));
        QVERIFY(!app->platform().defaults().contains("userInfo"));
    }

    void inactiveDealerSeesTheWaitingPanel() {
        startApp();
        signIn(server::accounts::demoAccount("dealer", false).phone);
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "viewRegisterFinal"), 5000);
        QCOMPARE(itemNamed(window(), "activationLabel")->property("text").toString(),
                 QStringLiteral("Kayıt işleminiz başarıyla gerçekleştirildi. Hesabınız aktif edildiğinde sisteme giriş yapabilirsiniz"));
        QCOMPARE(itemNamed(window(), "completeRegistrationButton")->property("text").toString(), QStringLiteral("Geriye Dön"));
        QVERIFY(!itemNamed(window(), "viewLogin"));
        QVERIFY(!app->platform().defaults().contains("userInfo"));
        QTest::qWait(300);
        saveScreenshot(window(), QStringLiteral("signin-inactive-dealer"));
    }

private:
    void startApp() {
        StartOptions options;
        options.serviceBase = QString::fromStdString(service->baseUrl());
        options.settingsDir = settings->path();
        app = std::make_unique<Ekinora>(options);
        auto& application = app->platform().application();
        application.setEchoLog(qEnvironmentVariableIsSet("EKINORA_ECHO_LOG"));
        // The code the service issued is written to the log.
        connect(&application, &platform::Application::logged, this, [this](const QString& line) {
            if (QRegularExpression(QStringLiteral("^\\d{6}$")).match(line).hasMatch()) codes << line;
        });
        QVERIFY(app->start());
        QVERIFY(QTest::qWaitForWindowExposed(window()));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "txtLoginPhone"), 5000);
        // The conditions load under an indicator that goes a second after.
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 8000);
    }

    void typeInto(const char* field, const std::string& text) {
        QQuickItem* item = itemNamed(window(), field);
        QVERIFY(item);
        tapItem(window(), item);
        QTRY_VERIFY(item->hasActiveFocus());
        for (char c : text) QTest::keyClick(window(), c);
        QTRY_COMPARE(item->property("text").toString(), QString::fromStdString(text));
    }
    void typeInto(const char* field, const QString& text) { typeInto(field, text.toStdString()); }

    void askCode(const std::string& phone) {
        typeInto("txtLoginPhone", phone);
        saveScreenshot(window(), QStringLiteral("signin-phone"));
        tapItem(window(), itemNamed(window(), "getSmsCodeForLogin"));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "viewLoginCode"), 5000);
        QTRY_VERIFY(!codes.isEmpty());
        QCOMPARE(itemNamed(window(), "txtLoginPhoneCode")->property("text").toString(), QString::fromStdString(phone));
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
    }

    void signIn(const std::string& phone) {
        askCode(phone);
        typeInto("txtLoginCode", codes.last());
        saveScreenshot(window(), QStringLiteral("signin-code"));
        tapItem(window(), itemNamed(window(), "validateSmsCodeForLogin"));
    }

    platform::SideMenuViewController* root() const {
        return qobject_cast<platform::SideMenuViewController*>(app->platform().window().rootViewController());
    }
    platform::NavigationController* content() const {
        return qobject_cast<platform::NavigationController*>(root()->contentViewController());
    }
    QString topIdentifier() const {
        auto* nav = content();
        if (!nav || !nav->topViewController()) return {};
        return nav->topViewController()->property("storyboardIdentifier").toString();
    }
    QQuickWindow* window() const { return app->platform().window().quickWindow(); }

    std::unique_ptr<server::Server> service;
    std::unique_ptr<QTemporaryDir> settings;
    std::unique_ptr<Ekinora> app;
    QStringList codes;
};

EKINORA_GUI_TEST_MAIN(SignInEndToEnd)
#include "tst_signin_e2e.moc"
