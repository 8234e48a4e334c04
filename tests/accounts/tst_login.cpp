// The sign-in screen's controller: what it loads at start, the phone fields, every branch of the code
// check, where each role lands, and the registration code requests' own messages. The code requests
// carry no token, even with one stored.

#include "Ekinora.h"
#include "FakePlatform.h"
#include "accounts/LoginViewController.h"
#include "platform/WebView.h"
#include "platform/AlertController.h"
#include "platform/NavigationController.h"
#include "platform/SideMenuViewController.h"
#include "platform/Storyboard.h"
#include "service/LocalStore.h"
#include "service/ServiceRoots.h"

#include <QJsonObject>
#include <QSignalSpy>
#include <QTest>

using namespace ekinora;
using namespace ekinora::testing;
using accounts::LoginViewController;
using platform::AlertController;
namespace StoreKey = service::StoreKey;

namespace {

QJsonObject envelope(const QJsonValue& data, int status = 200, const QJsonValue& errors = QJsonValue::Undefined) {
    QJsonObject o{{"status", status}, {"message", ""}, {"data", data}};
    if (!errors.isUndefined()) o.insert("errors", errors);
    return o;
}

QString header(const HttpRequest& r, const QByteArray& name) {
    for (const auto& h : r.headers)
        if (h.first.compare(name, Qt::CaseInsensitive) == 0) return QString::fromUtf8(h.second);
    return {};
}

} // namespace

class LoginTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        fake = new FakePlatform;
        service::Roots::configure(QStringLiteral("http://svc.test"));
        platform::Storyboard::clear();
        Ekinora::registerScreens();
    }
    void cleanup() { delete fake; }

    void loadSendsTheStartRequestsAndShowsTheFarewellOnce() {
        fake->store->setString(StoreKey::IsLogout, QStringLiteral("YES"));
        LoginViewController* login = start();
        QStringList sent;
        for (const auto& r : fake->http->requests) {
            const QString slug = queryValues(r, "slug").value(0);
            sent << commandOf(r) + (slug.isEmpty() ? QString() : "/" + slug);
        }
        // The home loads its crop lists before it finds nobody signed in and hands over to the sign-in.
        QCOMPARE(sent, (QStringList{"produces", "produce/aps", "page/detail/kvkk", "region/cities", "produces", "produce/aps",
                                    "page/detail/conditions-of-use"}));
        QVERIFY(!login->viewLogout->isHidden());
        QVERIFY(!fake->store->contains(StoreKey::IsLogout));
        QVERIFY(!login->viewLogin->isHidden());
        QVERIFY(login->viewRegister->isHidden());
        QVERIFY(login->viewLoginCode->isHidden());
        // The conditions' indicator waits a second after the text has come.
        QCOMPARE(fake->platform->window().hudCount(), 1);

        login->loginBack();
        QVERIFY(login->viewLogout->isHidden());
        // A second screen made later has no farewell.
        QVERIFY(start()->viewLogout->isHidden());
    }

    void startLoadsFillTheListsAndThePages() {
        fake->http->on("region/cities", jsonReply(envelope(QJsonObject{{"cities", QJsonArray{QJsonObject{{"id", 6}, {"name", "Ankara"}}}}})));
        fake->http->on("produce/aps", jsonReply(envelope(QJsonObject{{"aps", QJsonArray{QJsonObject{{"id", 101}, {"name", "Tarvenza<sup>&reg;</sup> 250 EC"}}}}})));
        fake->http->on("page/detail", [](const HttpRequest& r) {
            return jsonReply(envelope(QJsonObject{{"page", QJsonObject{{"text", "<p>" + queryValues(r, "slug").value(0) + "</p>"}}}}));
        });
        LoginViewController* login = start();
        fake->run(0);
        QCOMPARE(login->registration()->arrCities.size(), 1);
        QCOMPARE(login->registration()->cropEditor()->arrProducts.first().toObject().value("name").toString(), QStringLiteral("Tarvenza® 250 EC"));
        QCOMPARE(login->consentPanel()->webKVKK->html(), QStringLiteral("<html><head></head><body><p>conditions-of-use</p></body></html>"));
        QCOMPARE(login->consentPanel()->webviewETK->html(), QStringLiteral("<html><head></head><body><p>kvkk</p></body></html>"));
        QVERIFY(login->consentPanel()->webKVKK->baseUrl().isEmpty());
        // Loaded pages stay as they came: nothing is run in them.
        QSignalSpy scripts(login->consentPanel()->webKVKK, &platform::WebView::scriptRequested);
        login->consentPanel()->webKVKK->navigationFinished();
        QCOMPARE(scripts.size(), 0);
        QCOMPARE(fake->platform->window().hudCount(), 1);
        fake->run(999);
        QCOMPARE(fake->platform->window().hudCount(), 1);
        fake->run(1);
        QCOMPARE(fake->platform->window().hudCount(), 0);
    }

    void phoneFieldsStopAtElevenCharacters() {
        LoginViewController* login = start();
        for (auto* field : {login->txtLoginPhone, login->txtLoginPhoneCode, login->txtRegisterPhone, login->txtRegisterPhoneCode}) {
            field->userType(QStringLiteral("053210001019"));
            QCOMPARE(field->text(), QStringLiteral("05321000101"));
            QVERIFY(field->userEdit(10, 1, QString())); // deleting stays possible
            QCOMPARE(field->text(), QStringLiteral("0532100010"));
            field->setText(QString());
            // A long paste into an empty field goes through: only the present length counts.
            QVERIFY(field->userEdit(0, 0, QStringLiteral("0532 100 01 01 99")));
        }
        login->txtLoginCode->userType(QStringLiteral("1234567890123"));
        QCOMPARE(login->txtLoginCode->text().size(), 13);
    }

    void askingForALoginCode() {
        fake->http->on("sms/get", jsonReply(envelope(QJsonObject{{"hash", "h-1"}, {"nextAction", "login"}, {"code", "482913"}})));
        LoginViewController* login = start();
        fake->store->setString(StoreKey::Token, QStringLiteral("should-not-travel"));
        login->txtLoginPhone->setText(QStringLiteral("0532 100 0101"));
        login->getSmsCodeForLogin();
        QVERIFY(login->txtLoginCode->isFirstResponder());
        fake->run(0);
        const HttpRequest r = fake->http->requestsFor("sms/get").last();
        QCOMPARE(queryValues(r, "phoneNumber"), QStringList{"0532 100 0101"}); // sent as typed
        QVERIFY(queryValues(r, "type").isEmpty());
        QVERIFY(queryValues(r, "bearer").isEmpty());
        QVERIFY(header(r, "Authorization").isEmpty());
        QCOMPARE(header(r, "Content-Type"), QStringLiteral("application/json; charset=UTF-8"));
        QCOMPARE(fake->store->stringForKey(StoreKey::HashCode), QStringLiteral("h-1"));
        QCOMPARE(login->actionType.toString(), QStringLiteral("login"));
        QVERIFY(login->viewLoginPhone->isHidden());
        QVERIFY(!login->viewLoginCode->isHidden());
        QCOMPARE(login->txtLoginPhoneCode->text(), QStringLiteral("0532 100 0101"));
        QVERIFY(fake->logged("482913"));
    }

    void aRefusedNumberShowsTheFirstError() {
        fake->http->on("sms/get", jsonReply(envelope(QJsonValue::Null, 400, QJsonObject{{"phoneNumber", "Lütfen geçerli bir cep telefonu numarası giriniz."}}), 400));
        LoginViewController* login = start();
        login->getSmsCodeForLogin();
        fake->run(0);
        // A 400 with a JSON body reaches the failure block: it only logs.
        QVERIFY(!fake->alert());
        fake->http->on("sms/get", jsonReply(envelope(QJsonValue::Null, 422, QJsonObject{{"phoneNumber", "Lütfen geçerli bir cep telefonu numarası giriniz."}})));
        login->getSmsCodeForLogin();
        fake->run(0);
        QVERIFY(fake->alert());
        QCOMPARE(fake->alert()->message(), QStringLiteral("Lütfen geçerli bir cep telefonu numarası giriniz."));
        QVERIFY(!login->viewLoginPhone->isHidden());
    }

    void anEmptyCodeIsNotSent() {
        LoginViewController* login = start();
        const int before = int(fake->http->requests.size());
        login->validateSmsCodeForLogin();
        QCOMPARE(fake->http->requests.size(), before);
        QCOMPARE(fake->alert()->title(), QStringLiteral("Hata"));
        QCOMPARE(fake->alert()->message(), QStringLiteral("Sms kodunu giriniz"));
    }

    void codeCheckReplies_data() {
        QTest::addColumn<QJsonObject>("reply");
        QTest::addColumn<QString>("message"); // empty: no alert
        QTest::addColumn<bool>("finalPanel");
        QTest::newRow("no such code") << envelope(QJsonValue::Null, 400) << "Kod bulunamadı" << false;
        QTest::newRow("wrong code") << envelope(QJsonObject{{"action", QJsonValue::Null}}, 400) << "Lütfen kodu doğru giriniz" << false;
        QTest::newRow("dealer not active") << envelope(QJsonObject{{"action", "notActiveDealer"}}, 400) << "" << true;
        QTest::newRow("another action") << envelope(QJsonObject{{"action", "register"}}, 400) << "" << false;
        QTest::newRow("no action") << envelope(QJsonObject{}, 400) << "" << false;
        QTest::newRow("other status") << envelope(QJsonValue::Null, 500) << "" << false;
    }
    void codeCheckReplies() {
        QFETCH(QJsonObject, reply);
        QFETCH(QString, message);
        QFETCH(bool, finalPanel);
        fake->http->on("farmer/login", jsonReply(reply));
        LoginViewController* login = atCodeEntry("login");
        login->validateSmsCodeForLogin();
        fake->run(0);
        QCOMPARE(fake->platform->window().hudCount(), 0);
        if (message.isEmpty()) {
            QVERIFY(!fake->alert());
        } else {
            QCOMPARE(fake->alert()->title(), QStringLiteral("Hata"));
            QCOMPARE(fake->alert()->message(), message);
        }
        QCOMPARE(!login->viewRegister->isHidden() && !login->registration()->viewRegisterFinal->isHidden(), finalPanel);
        if (finalPanel) {
            QVERIFY(login->viewLogin->isHidden() && login->registration()->memberShipView->isHidden() && !login->viewRegister->isHidden());
            QVERIFY(login->txtLoginCode->text().isEmpty() && login->txtLoginPhone->text().isEmpty());
            QCOMPARE(login->registration()->completeRegistrationButton->title(), QStringLiteral("Geriye Dön"));
        }
        QVERIFY(!fake->store->contains(StoreKey::UserInfo));
    }

    void rolesDecideTheFirstScreen_data() {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("screen");
        QTest::newRow("farmer") << "farmer" << "firstViewController";
        QTest::newRow("loyalty") << "loyalty" << "firstViewController";
        QTest::newRow("dealer") << "dealer" << "messageVC";
        QTest::newRow("staff") << "adminUser" << "messageVC";
        QTest::newRow("unknown role is signed in all the same") << "guest" << "messageVC";
    }
    void rolesDecideTheFirstScreen() {
        QFETCH(QString, type);
        QFETCH(QString, screen);
        const QJsonObject record{{"token", "tok-9"}, {"type", type}, {"menu", QJsonArray{5, 0}}, {"fullname", "Hasan Doğru"}};
        fake->http->on("farmer/login", jsonReply(envelope(record)));
        LoginViewController* login = atCodeEntry("login");
        auto* root = qobject_cast<platform::SideMenuViewController*>(fake->platform->window().rootViewController());
        root->presentLeftMenuViewController();
        login->validateSmsCodeForLogin();
        fake->run(0);
        QCOMPARE(fake->store->jsonForKey(StoreKey::UserInfo).toObject(), record);
        QCOMPARE(fake->store->stringForKey(StoreKey::Token), QStringLiteral("tok-9"));
        QVERIFY(fake->posts.contains("checkMenuList"));
        auto* content = qobject_cast<platform::NavigationController*>(root->contentViewController());
        QCOMPARE(content->depth(), 1);
        QCOMPARE(content->topViewController()->property("storyboardIdentifier").toString(), screen);
        QVERIFY(!root->isMenuVisible());
    }

    void loginCarriesTheDeviceOnlyWhenAPushTokenIsStored() {
        fake->http->on("farmer/login", jsonReply(envelope(QJsonValue::Null, 500)));
        LoginViewController* login = atCodeEntry("login");
        login->validateSmsCodeForLogin();
        fake->run(0);
        HttpRequest r = fake->http->requestsFor("farmer/login").last();
        QVERIFY(queryValues(r, "deviceId").isEmpty());
        QCOMPARE(queryValues(r, "deviceType"), QStringList{"2"});
        QCOMPARE(queryValues(r, "type"), QStringList{"login"});
        QCOMPARE(queryValues(r, "hash"), QStringList{"h-7"});
        QCOMPARE(queryValues(r, "code"), QStringList{"123456"});
        QVERIFY(header(r, "Authorization").isEmpty());

        fake->store->setString(StoreKey::NotifToken, QStringLiteral("ab12"));
        login->validateSmsCodeForLogin();
        fake->run(0);
        r = fake->http->requestsFor("farmer/login").last();
        QCOMPARE(queryValues(r, "deviceId"), QStringList{"ab12"});
    }

    void aNewNumberGoesToTheWizardThroughTheCodeCheck() {
        fake->http->on("sms/check", jsonReply(envelope(QJsonObject{{"verified", true}})));
        LoginViewController* login = atCodeEntry("register");
        login->validateSmsCodeForLogin();
        fake->run(0);
        QVERIFY(fake->http->requestsFor("farmer/login").isEmpty());
        QCOMPARE(queryValues(fake->http->requestsFor("sms/check").last(), "type"), QStringList{"register"});
        QVERIFY(!login->viewRegister->isHidden());
        QVERIFY(!login->registration()->viewRegisterInfo->isHidden());
        QVERIFY(!login->registration()->memberShipView->isHidden());
        QVERIFY(login->viewLogin->isHidden());
        QVERIFY(login->registration()->devamButton->isHidden());
        QVERIFY(!fake->store->contains(StoreKey::UserInfo));
    }

    void registrationCodeRequestsKeepTheirOwnMessages() {
        LoginViewController* login = start();
        fake->http->on("sms/get", jsonReply(envelope(QJsonValue::Null, 422, QJsonObject{{"phoneNumber", "Geçersiz numara"}})));
        fake->run(0);
        login->getSmsCode();
        QCOMPARE(fake->platform->window().hudCount(), 0); // no indicator here
        fake->run(0);
        QCOMPARE(queryValues(fake->http->requestsFor("sms/get").last(), "type"), QStringList{"register"});
        // The "errors" member itself, unformatted.
        QVERIFY(fake->alert()->message().contains("phoneNumber = "));
        QVERIFY(fake->alert()->message().contains("Geçersiz numara"));
        fake->alert()->tapButton(0);

        fake->http->on("sms/check", jsonReply(envelope(QJsonValue::Null, 422)));
        login->validateSmsCode();
        fake->run(0);
        QCOMPARE(fake->alert()->message(), QStringLiteral("Onay kodu doğrulanamadı lütfen tekrar deneyiniz."));
        fake->alert()->tapButton(0);

        fake->http->on("sms/get", jsonReply(envelope(QJsonObject{{"hash", "r-1"}})));
        login->txtRegisterPhone->setText(QStringLiteral("05551234567"));
        login->getSmsCode();
        fake->run(0);
        QCOMPARE(fake->store->stringForKey(StoreKey::HashCode), QStringLiteral("r-1"));
        QVERIFY(login->viewRegisterPhone->isHidden() && !login->viewRegisterCode->isHidden());
        QCOMPARE(login->txtRegisterPhoneCode->text(), QStringLiteral("05551234567"));
    }

private:
    // The application's root with nobody signed in: the home hands over to the sign-in screen.
    LoginViewController* start() {
        auto* root = platform::Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("RootViewController"));
        fake->platform->window().setRootViewController(root);
        fake->platform->window().makeKeyAndVisible();
        fake->clock->advance(0);
        auto* content = qobject_cast<platform::NavigationController*>(
            qobject_cast<platform::SideMenuViewController*>(root)->contentViewController());
        auto* login = qobject_cast<LoginViewController*>(content->topViewController());
        Q_ASSERT(login);
        return login;
    }
    LoginViewController* atCodeEntry(const QString& nextAction) {
        fake->http->on("sms/get", jsonReply(envelope(QJsonObject{{"hash", "h-7"}, {"nextAction", nextAction}, {"code", "123456"}})));
        LoginViewController* login = start();
        login->getSmsCodeForLogin();
        fake->run(1000);
        login->txtLoginCode->setText(QStringLiteral("123456"));
        return login;
    }

    FakePlatform* fake = nullptr;
};

QTEST_GUILESS_MAIN(LoginTest)
#include "tst_login.moc"
