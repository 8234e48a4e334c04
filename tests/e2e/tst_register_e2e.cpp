// A new number walks the farmer's wizard to the home screen; a dealer registers, waits for the company
// and then signs in; the notice's mail link goes to mail.

#include "EndToEnd.h"
#include "accounts/LoginViewController.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrlQuery>

using namespace ekinora;
using namespace ekinora::testing;

class RegisterEndToEnd : public EndToEnd {
    Q_OBJECT
private slots:
    void init() { startService(); }
    void cleanup() { stopAll(); }

    void newFarmerWalksTheWizardWithTwoCropsToTheHome() {
        startAppRecordingUrls();
        waitForSignIn();
        const std::string phone = "05559990011";
        saveScreenshot(window(), QStringLiteral("register-start"));
        signIn(phone);
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "memberShipView"), 5000);
        QVERIFY(!itemNamed(window(), "viewLogin"));
        saveScreenshot(window(), QStringLiteral("register-membership"));

        // The terms, accepted straight away; the notice comes over the permissions.
        tap("farmerButton");
        QTRY_COMPARE(alertText(), QStringLiteral("Kayıt olarak Kullanım Şartlarını onaylamış olursunuz."));
        shoot(QStringLiteral("register-terms-alert"));
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

        tapUntilGone("closeETKWebView", "viewETKWeb");
        tap("radioETK1");
        QTRY_VERIFY(login()->consentPanel()->control("radioETK1")->property("selected").toBool());
        shoot(QStringLiteral("register-permissions"), 350);
        tapUntilGone("closeETKView", "viewETK");

        QVERIFY(itemNamed(window(), "nameView"));
        tap("devamButton");
        QTRY_COMPARE(alertText(), QStringLiteral("Kişisel bilgilerinizi giriniz."));
        tapAlertButton(QStringLiteral("Tamam"));
        QTRY_VERIFY(!itemNamed(window(), "alert"));
        enterPerson("Mehmet", "Kaya");
        shoot(QStringLiteral("register-person"), 600);
        tapUntilShown("devamButton", "collFarms");

        addCrop(0, "25", {0, 1});
        addCrop(2, "40", {});
        QTRY_COMPARE(cells("FarmCell").size(), 2);
        QCOMPARE(textOf(cells("FarmCell").first(), "lblFarm"), QStringLiteral("Buğday"));
        QCOMPARE(textOf(cells("FarmCell").first(), "lblFarmSize"), QStringLiteral("25 dekar"));
        QCOMPARE(textOf(cells("FarmCell").last(), "lblFarm"), QStringLiteral("Mısır"));
        // The second crop's list was never opened: the products chosen for the first stay chosen.
        QCOMPARE(textOf(cells("FarmCell").last(), "lblProducts"), textOf(cells("FarmCell").first(), "lblProducts"));
        QTRY_COMPARE(cells("NewFarmCell").size(), 1); // the list lays the row out after the reload
        saveScreenshot(window(), QStringLiteral("register-crops"));

        tapUntilShown("continueToFinish", "viewRegisterFinal");
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
        shootSettled(QStringLiteral("register-farmer-home"), 0);
    }

    void dealerRegistersWaitsForActivationThenSignsIn() {
        startAppRecordingUrls();
        const std::string phone = "05559990022";
        signIn(phone);
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "memberShipView"), 5000);
        tap("dealerButton");
        // This time through the conditions.
        tapAlertButton(QStringLiteral("Kullanım Şartları Metnine Git"));
        QTRY_VERIFY(itemNamed(window(), "viewKVKK"));
        QTRY_VERIFY_WITH_TIMEOUT(!login()->consentPanel()->webKVKK->isLoading(), 15000);
        saveScreenshot(window(), QStringLiteral("register-conditions"));
        tapUntilShown("acceptKVKK", "viewETKWeb");
        tap("closeETKWebView");
        tap("closeETKView");
        enterPerson("Selim", "Ozturk");
        tapUntilShown("devamButton", "bayiBilgileriView");
        QVERIFY(!itemNamed(window(), "collFarms"));

        // A wrong identity number: its message under "Hata".
        typeInto("bayiAdiText", "Ozturk Tarim Market");
        typeInto("vergiNoText", "7710203344");
        typeInto("tcKimlikText", "10000000147");
        tap("continueToFinish");
        QTRY_COMPARE_WITH_TIMEOUT(alertText("title"), QStringLiteral("Hata"), 5000);
        QCOMPARE(alertText(), QStringLiteral("Lütfen geçerli bir T.C. Kimlik Numarası giriniz."));
        shoot(QStringLiteral("register-dealer-identity"));
        tapAlertButton(QStringLiteral("Tamam"));
        QTRY_VERIFY(!itemNamed(window(), "alert"));
        // Sent before any sign-in, with the header and no token.
        QCOMPARE(headerOf(lastRequest("dealer/check-information-field"), "Authorization"), QStringLiteral("Bearer (null)"));

        typeInto("tcKimlikText", "10000000146", true);
        tapUntilShown("continueToFinish", "viewRegisterFinal");
        tap("completeRegistrationButton");
        QTRY_COMPARE_WITH_TIMEOUT(login()->registration()->completeRegistrationButton->title(), QStringLiteral("Geriye Dön"), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
        QCOMPARE(itemNamed(window(), "activationLabel")->property("text").toString(), Waiting);
        QVERIFY(!app->platform().defaults().contains("token"));
        shoot(QStringLiteral("register-dealer-final"));

        // Back to the sign-in; until the company opens the account, the waiting panel.
        tapUntilShown("completeRegistrationButton", "viewLoginPhone");
        signIn(phone);
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "viewRegisterFinal"), 5000);
        QCOMPARE(itemNamed(window(), "activationLabel")->property("text").toString(), Waiting);
        QVERIFY(!app->platform().defaults().contains("userInfo"));

        QVERIFY(service->activateDealer(phone));
        tapUntilShown("completeRegistrationButton", "viewLoginPhone");
        signIn(phone);
        QTRY_COMPARE_WITH_TIMEOUT(topIdentifier(), QStringLiteral("messageVC"), 5000);
        QCOMPARE(app->platform().defaults().jsonForKey("userInfo").toObject().value("type").toString(), QStringLiteral("dealer"));
    }

private:
    const QString Waiting =
        QStringLiteral("Kayıt işleminiz başarıyla gerçekleştirildi. Hesabınız aktif edildiğinde sisteme giriş yapabilirsiniz");

    // The name, then the first city and its first county; the county button rests until the city's
    // counties are in.
    void enterPerson(const char* name, const char* lastName) {
        typeInto("txtName", name);
        typeInto("txtLastName", lastName);
        QString city, county;
        pickFirstOfList("btnCity", city);
        QTRY_COMPARE_WITH_TIMEOUT(login()->registration()->txtCity->text(), city, 5000);
        QTRY_VERIFY_WITH_TIMEOUT(login()->registration()->btnCounty->userInteractionEnabled(), 5000);
        pickFirstOfList("btnCounty", county);
        QCOMPARE(login()->registration()->txtCounty->text(), county);
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
        tapUntilGone(first, "dropDownList");
    }

    void addCrop(int plantRow, const std::string& size, const QList<int>& productRows) {
        tapUntilShown(cells("NewFarmCell").first(), "viewNewProduce");
        tapUntilShown("openPlantsView", "viewPlant");
        QQuickItem* plant = nullptr;
        QTRY_VERIFY((plant = rowOf(cells("PlantCell"), plantRow)));
        if (productRows.size() > 0) saveScreenshot(window(), QStringLiteral("register-plants"));
        tapUntilGone(plant, "viewPlant");
        typeInto("txtFarmSize", size);
        if (!productRows.isEmpty()) {
            tapUntilShown("openProductView", "viewProduct");
            for (int row : productRows) {
                QQuickItem* product = nullptr;
                QTRY_VERIFY((product = rowOf(cells("ProductCell"), row)));
                tapItem(window(), product);
            }
            saveScreenshot(window(), QStringLiteral("register-products"));
            tapUntilGone("acceptProductView", "viewProduct");
            QCOMPARE(login()->registration()->cropEditor()->lblProduct->text().count(u'\n'), int(productRows.size()) - 1);
            saveScreenshot(window(), QStringLiteral("register-crop-panel"));
        }
        tapUntilGone("btnNewProduce", "viewNewProduce");
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
    server::RecordedRequest lastRequest(const QString& command) const {
        const auto all = sent(command);
        return all.empty() ? server::RecordedRequest{} : all.back();
    }
    QJsonObject lastBody(const QString& command) const {
        return QJsonDocument::fromJson(QByteArray::fromStdString(lastRequest(command).body)).object();
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
};

EKINORA_GUI_TEST_MAIN(RegisterEndToEnd)
#include "tst_register_e2e.moc"
