// Registration journeys: the real application in-process, offscreen, against the real reference
// service. A new number walks the farmer's wizard to the home screen; a dealer registers, waits for
// the company and then signs in; the notice's mail link goes to mail.

#include "EndToEnd.h"
#include "accounts/LoginViewController.h"
#include "core/Server.h"
#include "platform/NavigationController.h"
#include "platform/Platform.h"
#include "platform/SideMenuViewController.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QUrlQuery>
#include <algorithm>

using namespace ekinora;
using namespace ekinora::testing;

class RegisterEndToEnd : public EndToEnd {
    Q_OBJECT
private slots:
    void init() {
        startService();
        opened.clear();
    }
    void cleanup() { stopAll(); }

    void newFarmerWalksTheWizardWithTwoCropsToTheHome() {
        startApp();
        const std::string phone = "05559990011";
        saveScreenshot(window(), QStringLiteral("register-start"));
        signIn(phone);
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "memberShipView"), 5000);
        QVERIFY(!itemNamed(window(), "viewLogin"));
        saveScreenshot(window(), QStringLiteral("register-membership"));

        // The terms, accepted straight away; the notice comes over the permissions.
        tap("farmerButton");
        QTRY_VERIFY(itemNamed(window(), "alert"));
        QCOMPARE(itemNamed(window(), "alert")->property("message").toString(),
                 QStringLiteral("Kayıt olarak Kullanım Şartlarını onaylamış olursunuz."));
        QTest::qWait(300);
        saveScreenshot(window(), QStringLiteral("register-terms-alert"));
        tapAlertButton(QStringLiteral("Onaylıyorum"));
        QTRY_VERIFY(itemNamed(window(), "viewETKWeb"));

        // A tap on the notice's mail address opens mail with the subject; the notice stays.
        QTRY_VERIFY_WITH_TIMEOUT(!login()->consentPanel()->webviewETK->isLoading(), 15000);
        tapMailLink();
        QTRY_COMPARE_WITH_TIMEOUT(opened.size(), 1, 10000);
        QCOMPARE(opened.first().scheme(), QStringLiteral("mailto"));
        QCOMPARE(opened.first().path(), QStringLiteral("kvkk@ekinora.com.tr"));
        QCOMPARE(QUrlQuery(opened.first()).queryItemValue("subject", QUrl::FullyDecoded),
                 QStringLiteral("Ekinora - Kişisel Verilerin Korunması ve İşlenmesi Hakkında"));
        QVERIFY(itemNamed(window(), "webviewETK"));
        QVERIFY(!itemNamed(window(), "alert"));
        saveScreenshot(window(), QStringLiteral("register-notice"));

        tap("closeETKWebView");
        QTRY_VERIFY(!itemNamed(window(), "viewETKWeb"));
        tap("radioETK1");
        QTRY_VERIFY(login()->consentPanel()->control("radioETK1")->property("selected").toBool());
        QTest::qWait(350);
        saveScreenshot(window(), QStringLiteral("register-permissions"));
        tap("closeETKView");
        QTRY_VERIFY(!itemNamed(window(), "viewETK"));

        // The person and the place.
        QVERIFY(itemNamed(window(), "nameView"));
        tap("devamButton");
        QTRY_VERIFY(itemNamed(window(), "alert"));
        QCOMPARE(itemNamed(window(), "alert")->property("message").toString(), QStringLiteral("Kişisel bilgilerinizi giriniz."));
        tapAlertButton(QStringLiteral("Tamam"));
        typeInto("txtName", "Mehmet");
        typeInto("txtLastName", "Kaya");
        QString city, county;
        pickFirstOfList("btnCity", city);
        QTRY_COMPARE_WITH_TIMEOUT(login()->registration()->txtCity->text(), city, 5000);
        // The county button rests until the city's counties are in.
        QTRY_VERIFY_WITH_TIMEOUT(login()->registration()->btnCounty->userInteractionEnabled(), 5000);
        pickFirstOfList("btnCounty", county);
        QCOMPARE(login()->registration()->txtCounty->text(), county);
        QTest::qWait(600);
        saveScreenshot(window(), QStringLiteral("register-person"));
        tap("devamButton");
        QTRY_VERIFY(itemNamed(window(), "collFarms"));

        // Two crops; the first with two products.
        addCrop(0, "25", {0, 1});
        addCrop(2, "40", {});
        QTRY_COMPARE(cells("FarmCell").size(), 2);
        QCOMPARE(textIn(cells("FarmCell").first(), "lblFarm"), QStringLiteral("Buğday"));
        QCOMPARE(textIn(cells("FarmCell").first(), "lblFarmSize"), QStringLiteral("25 dekar"));
        QCOMPARE(textIn(cells("FarmCell").last(), "lblFarm"), QStringLiteral("Mısır"));
        // The second crop's list was never opened: the products chosen for the first stay chosen.
        QCOMPARE(textIn(cells("FarmCell").last(), "lblProducts"), textIn(cells("FarmCell").first(), "lblProducts"));
        QTRY_COMPARE(cells("NewFarmCell").size(), 1); // the list lays the row out after the reload
        saveScreenshot(window(), QStringLiteral("register-crops"));

        tap("continueToFinish");
        QTRY_VERIFY(itemNamed(window(), "viewRegisterFinal"));
        saveScreenshot(window(), QStringLiteral("register-final-farmer"));
        tap("completeRegistrationButton");

        // Signed in, at home, with the crops as his farms.
        QTRY_COMPARE_WITH_TIMEOUT(topIdentifier(), QStringLiteral("firstViewController"), 8000);
        const QString token = app->platform().defaults().stringForKey("token");
        QVERIFY(!token.isEmpty());
        QCOMPARE(app->platform().defaults().jsonForKey("userInfo").toObject().value("type").toString(), QStringLiteral("farmer"));
        const QJsonObject sent = lastBody("farmer/register");
        QCOMPARE(sent.value("deviceType"), QJsonValue(2));
        QCOMPARE(sent.value("etk-sms"), QJsonValue("1"));
        QCOMPARE(sent.value("fields").toArray().size(), 2);
        const QJsonArray farms = farmsOf(token);
        QCOMPARE(farms.size(), 2);
        QCOMPARE(farms.at(0).toObject().value("name").toString(), QStringLiteral("Buğday"));
        QCOMPARE(farms.at(0).toObject().value("aps").toArray().size(), 2);
        QCOMPARE(farms.at(1).toObject().value("range").toInt(), 40);
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
        saveScreenshot(window(), QStringLiteral("register-farmer-home"));
    }

    void dealerRegistersWaitsForActivationThenSignsIn() {
        startApp();
        const std::string phone = "05559990022";
        signIn(phone);
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "memberShipView"), 5000);
        tap("dealerButton");
        QTRY_VERIFY(itemNamed(window(), "alert"));
        // This time through the conditions.
        tapAlertButton(QStringLiteral("Kullanım Şartları Metnine Git"));
        QTRY_VERIFY(itemNamed(window(), "viewKVKK"));
        QTRY_VERIFY_WITH_TIMEOUT(!login()->consentPanel()->webKVKK->isLoading(), 15000);
        saveScreenshot(window(), QStringLiteral("register-conditions"));
        tap("acceptKVKK");
        QTRY_VERIFY(itemNamed(window(), "viewETKWeb"));
        tap("closeETKWebView");
        tap("closeETKView");
        typeInto("txtName", "Selim");
        typeInto("txtLastName", "Ozturk");
        QString city, county;
        pickFirstOfList("btnCity", city);
        QTRY_COMPARE_WITH_TIMEOUT(login()->registration()->txtCity->text(), city, 5000);
        // The county button rests until the city's counties are in.
        QTRY_VERIFY_WITH_TIMEOUT(login()->registration()->btnCounty->userInteractionEnabled(), 5000);
        pickFirstOfList("btnCounty", county);
        tap("devamButton");
        QTRY_VERIFY(itemNamed(window(), "bayiBilgileriView"));
        QVERIFY(!itemNamed(window(), "collFarms"));

        // A wrong identity number: its message under "Hata".
        typeInto("bayiAdiText", "Ozturk Tarim Market");
        typeInto("vergiNoText", "7710203344");
        typeInto("tcKimlikText", "10000000147");
        tap("continueToFinish");
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "alert"), 5000);
        QQuickItem* alert = itemNamed(window(), "alert");
        QCOMPARE(alert->property("title").toString(), QStringLiteral("Hata"));
        QCOMPARE(alert->property("message").toString(), QStringLiteral("Lütfen geçerli bir T.C. Kimlik Numarası giriniz."));
        QTest::qWait(300);
        saveScreenshot(window(), QStringLiteral("register-dealer-identity"));
        tapAlertButton(QStringLiteral("Tamam"));
        QTRY_VERIFY(!itemNamed(window(), "alert"));
        // Sent before any sign-in, with the header and no token.
        QCOMPARE(headerOf(lastRequest("dealer/check-information-field"), "Authorization"), std::string("Bearer (null)"));

        clear("tcKimlikText");
        typeInto("tcKimlikText", "10000000146");
        tap("continueToFinish");
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "viewRegisterFinal"), 5000);
        tap("completeRegistrationButton");
        QTRY_COMPARE_WITH_TIMEOUT(login()->registration()->completeRegistrationButton->title(), QStringLiteral("Geriye Dön"), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
        QCOMPARE(itemNamed(window(), "activationLabel")->property("text").toString(), Waiting);
        QVERIFY(!app->platform().defaults().contains("token"));
        QTest::qWait(300);
        saveScreenshot(window(), QStringLiteral("register-dealer-final"));

        // Back to the sign-in; until the company opens the account, the waiting panel.
        tap("completeRegistrationButton");
        QTRY_VERIFY(itemNamed(window(), "viewLoginPhone"));
        signIn(phone);
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "viewRegisterFinal"), 5000);
        QCOMPARE(itemNamed(window(), "activationLabel")->property("text").toString(), Waiting);
        QVERIFY(!app->platform().defaults().contains("userInfo"));

        QVERIFY(service->activateDealer(phone));
        tap("completeRegistrationButton");
        QTRY_VERIFY(itemNamed(window(), "viewLoginPhone"));
        signIn(phone);
        QTRY_COMPARE_WITH_TIMEOUT(topIdentifier(), QStringLiteral("messageVC"), 5000);
        QCOMPARE(app->platform().defaults().jsonForKey("userInfo").toObject().value("type").toString(), QStringLiteral("dealer"));
    }

private:
    const QString Waiting =
        QStringLiteral("Kayıt işleminiz başarıyla gerçekleştirildi. Hesabınız aktif edildiğinde sisteme giriş yapabilirsiniz");

    void startApp() {
        // Mail and other hand-offs are recorded, not handed to the desktop.
        EndToEnd::startApp([this](platform::Application& application) {
            application.setUrlOpener([this](const QUrl& url) {
                opened << url;
                return true;
            });
        });
        waitForSignIn();
    }

    void tapAlertButton(const QString& text) {
        QQuickItem* alert = itemNamed(window(), "alert");
        QVERIFY(alert);
        for (QQuickItem* button : itemsNamed(alert, "alertButton"))
            if (button->property("text").toString() == text) {
                tapItem(window(), button);
                QTRY_VERIFY(!itemNamed(window(), "alert") || itemNamed(window(), "alert") != alert);
                return;
            }
        QFAIL(qPrintable("no alert button " + text));
    }


    void clear(const char* field) {
        QQuickItem* item = itemNamed(window(), field);
        QVERIFY(item);
        tapItem(window(), item);
        QTRY_VERIFY(item->hasActiveFocus());
        QTest::keyClick(window(), Qt::Key_End);
        while (!item->property("text").toString().isEmpty()) QTest::keyClick(window(), Qt::Key_Backspace);
    }



    // Opens the list of a place button and takes its first row, whose title it gives back.
    void pickFirstOfList(const char* button, QString& title) {
        tap(button);
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "dropDownList"), 3000);
        QQuickItem* first = nullptr;
        QTRY_VERIFY((first = rowOf(cells("Cell"), 0)));
        // Let the list unroll before the tap.
        QTRY_COMPARE(itemNamed(window(), "dropDownList")->height(), 250.0);
        title = first->property("title").toString();
        tapItem(window(), first);
        QTRY_VERIFY(!itemNamed(window(), "dropDownList"));
    }

    void addCrop(int plantRow, const std::string& size, const QList<int>& productRows) {
        tapItem(window(), cells("NewFarmCell").first());
        QTRY_VERIFY(itemNamed(window(), "viewNewProduce"));
        tap("openPlantsView");
        QTRY_VERIFY(itemNamed(window(), "viewPlant"));
        QQuickItem* plant = nullptr;
        QTRY_VERIFY((plant = rowOf(cells("PlantCell"), plantRow)));
        if (productRows.size() > 0) saveScreenshot(window(), QStringLiteral("register-plants"));
        tapItem(window(), plant);
        QTRY_VERIFY(!itemNamed(window(), "viewPlant"));
        typeInto("txtFarmSize", size);
        if (!productRows.isEmpty()) {
            tap("openProductView");
            QTRY_VERIFY(itemNamed(window(), "viewProduct"));
            for (int row : productRows) {
                QQuickItem* product = nullptr;
                QTRY_VERIFY((product = rowOf(cells("ProductCell"), row)));
                tapItem(window(), product);
            }
            saveScreenshot(window(), QStringLiteral("register-products"));
            tap("acceptProductView");
            QTRY_VERIFY(!itemNamed(window(), "viewProduct"));
            QCOMPARE(login()->registration()->cropEditor()->lblProduct->text().count(u'\n'), int(productRows.size()) - 1);
            saveScreenshot(window(), QStringLiteral("register-crop-panel"));
        }
        tap("btnNewProduce");
        QTRY_VERIFY(!itemNamed(window(), "viewNewProduce"));
    }

    // Clicks the notice's "mailto:" link where it stands on screen.
    void tapMailLink() {
        QVariant centre;
        login()->consentPanel()->webviewETK->evaluateJavaScript(
            QStringLiteral("(function () { var a = document.querySelector('a[href^=\"mailto:\"]');"
                           " a.scrollIntoView({block: 'center'}); var r = a.getBoundingClientRect();"
                           " return [r.left + r.width / 2, r.top + r.height / 2]; })();"),
            [&](const QVariant& v) { centre = v; });
        QTRY_VERIFY_WITH_TIMEOUT(centre.isValid(), 10000);
        QTest::qWait(300); // the page has scrolled and painted
        const QVariantList xy = centre.toList();
        QQuickItem* web = itemNamed(window(), "webviewETK");
        QVERIFY(web && xy.size() == 2);
        const QPointF at = web->mapToScene(QPointF(xy.at(0).toDouble(), xy.at(1).toDouble()));
        QTest::mouseClick(window(), Qt::LeftButton, Qt::NoModifier, at.toPoint());
    }

    QList<QQuickItem*> cells(const char* identifier) const {
        QList<QQuickItem*> list = itemsNamed(window()->contentItem(), identifier);
        std::sort(list.begin(), list.end(),
                  [](QQuickItem* a, QQuickItem* b) { return a->property("row").toInt() < b->property("row").toInt(); });
        return list;
    }
    static QQuickItem* rowOf(const QList<QQuickItem*>& list, int row) {
        for (QQuickItem* item : list)
            if (item->property("row").toInt() == row) return item;
        return nullptr;
    }
    static QString textIn(QQuickItem* cell, const char* name) {
        const auto found = itemsNamed(cell, name);
        return found.isEmpty() ? QString() : found.first()->property("text").toString();
    }

    std::vector<server::RecordedRequest> requestsFor(const std::string& command) const {
        std::vector<server::RecordedRequest> found;
        for (const auto& r : service->requests())
            if (r.target.find("do=" + command) != std::string::npos) found.push_back(r);
        return found;
    }
    server::RecordedRequest lastRequest(const std::string& command) const {
        const auto all = requestsFor(command);
        return all.empty() ? server::RecordedRequest{} : all.back();
    }
    QJsonObject lastBody(const std::string& command) const {
        return QJsonDocument::fromJson(QByteArray::fromStdString(lastRequest(command).body)).object();
    }
    static std::string headerOf(const server::RecordedRequest& r, const std::string& name) {
        for (const auto& [key, value] : r.headers)
            if (key == name) return value;
        return {};
    }

    // The farms the service keeps for the account, through the app's own transport.
    QJsonArray farmsOf(const QString& token) {
        platform::HttpRequest request;
        request.url = QByteArray::fromStdString(service->baseUrl()) + "/api/?do=farmer/produces";
        request.setHeader("Authorization", "Bearer " + token.toUtf8());
        QJsonArray farms;
        bool done = false;
        app->platform().http().send(request, {}, [&](const platform::HttpResponse& r) {
            farms = QJsonDocument::fromJson(r.body).object().value("data").toObject().value("farmerProduces").toArray();
            done = true;
        });
        [&] { QTRY_VERIFY_WITH_TIMEOUT(done, 5000); }();
        return farms;
    }

    accounts::LoginViewController* login() const {
        auto* nav = content();
        return nav ? qobject_cast<accounts::LoginViewController*>(nav->topViewController()) : nullptr;
    }

    QList<QUrl> opened;
};

EKINORA_GUI_TEST_MAIN(RegisterEndToEnd)
#include "tst_register_e2e.moc"
