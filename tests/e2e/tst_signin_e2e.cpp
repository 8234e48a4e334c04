// Sign-in journeys: the menu, the campaign, logout, a wrong code and a dealer not yet active.

#include "EndToEnd.h"
#include "accounts/Accounts.h"
#include "shell/LeftMenuViewController.h"
#include "shell/MenuItems.h"

using namespace ekinora;
using namespace ekinora::testing;

class SignInEndToEnd : public EndToEnd {
    Q_OBJECT
private slots:
    void init() { startService(); }
    void cleanup() { stopAll(); }

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
        tapUntilGone("closePopup", "PopupViewController");

        tapItem(window(), itemNamed(window(), "presentLeftMenuViewController"));
        QTRY_VERIFY(root()->isMenuVisible());
        shoot(QStringLiteral("signin-farmer-menu"), 400);
        const auto cells = itemsNamed(window()->contentItem(), "Cell");
        QVERIFY2(cells.size() >= 12, qPrintable(QString::number(cells.size())));
        QCOMPARE(cells.first()->property("content").toMap().value("text").toString(), QStringLiteral("Anasayfa"));

        tapItem(window(), cells.at(1));
        QTRY_COMPARE(topIdentifier(), QStringLiteral("profileVC"));
        QTRY_VERIFY(!root()->isMenuVisible());
        QCOMPARE(content()->topTitle(), QStringLiteral("Profilim"));

        // Logout: the store is reset and the farewell panel greets the next sign-in.
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000); // the profile has loaded
        tapItem(window(), itemNamed(window(), "presentLeftMenuViewController"));
        QTRY_VERIFY(root()->isMenuVisible());
        QTest::qWait(300);
        tapUntilShown("logout", "viewLogout");
        QVERIFY(!app->platform().defaults().contains("token"));
        QVERIFY(!app->platform().defaults().contains("userInfo"));
        shoot(QStringLiteral("signin-logout"));
        const auto logouts = sent("farmer/logout");
        QVERIFY(!logouts.empty() && logouts.back().target.find("bearer") == std::string::npos);
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 8000);
        tapUntilGone("loginBack", "viewLogout");
        QVERIFY(itemNamed(window(), "txtLoginPhone"));
    }

    void wrongCodeIsRefusedWithItsMessage() {
        startApp();
        askCode(server::accounts::demoAccount("farmer").phone);
        typeInto("txtLoginCode", QString(codes.last() == "111111" ? "222222" : "111111"));
        tapItem(window(), itemNamed(window(), "validateSmsCodeForLogin"));
        QTRY_COMPARE_WITH_TIMEOUT(alertText("title"), QStringLiteral("Hata"), 5000);
        QCOMPARE(alertText(), QStringLiteral("Lütfen kodu doğru giriniz"));
        shoot(QStringLiteral("signin-wrong-code"));
        dismissAlert();
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
        shoot(QStringLiteral("signin-inactive-dealer"));
    }

private:
    void askCode(const std::string& phone) {
        EndToEnd::askCode(phone);
        QCOMPARE(itemNamed(window(), "txtLoginPhoneCode")->property("text").toString(), QString::fromStdString(phone));
    }
    void signIn(const std::string& phone) {
        askCode(phone);
        typeInto("txtLoginCode", codes.last());
        saveScreenshot(window(), QStringLiteral("signin-code"));
        tap("validateSmsCodeForLogin");
    }
};

EKINORA_GUI_TEST_MAIN(SignInEndToEnd)
#include "tst_signin_e2e.moc"
