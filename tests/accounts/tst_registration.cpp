// The registration wizard of the sign-in screen against scripted replies: the place lists and their
// delay, the order of the steps, the crop rules that adding checks and updating doesn't, the exact
// registration requests, the dealer check's alerts, and where the notice's links go.

#include "FakePlatform.h"
#include "accounts/LoginViewController.h"
#include "platform/AlertController.h"
#include "widgets/DropDownList.h"
#include "widgets/GroupedRadioButton.h"

#include <QJsonDocument>
#include <QTest>
#include <QUrlQuery>

using namespace ekinora;
using namespace ekinora::platform;
using namespace ekinora::testing;
using accounts::LoginViewController;
using widgets::DropDownList;

namespace {

QJsonObject envelope(const QJsonValue& data, int status = 200, const QJsonObject& errors = {}) {
    return QJsonObject{{"status", status}, {"message", ""}, {"errors", errors}, {"data", data}};
}

QJsonObject bodyOf(const HttpRequest& request) { return QJsonDocument::fromJson(request.body).object(); }

// Two cities of one name: the lookups take the last.
const QJsonArray Cities{QJsonObject{{"id", 42}, {"name", "Konya"}}, QJsonObject{{"id", 6}, {"name", "Ankara"}},
                        QJsonObject{{"id", "420"}, {"name", "Konya"}}};
const QJsonArray Counties{QJsonObject{{"id", 4201}, {"name", "Karatay"}}, QJsonObject{{"id", 4202}, {"name", "Çumra"}},
                          QJsonObject{{"id", 4299}, {"name", "Karatay"}}};
const QJsonArray Plants{QJsonObject{{"id", 1}, {"name", "Buğday"}}, QJsonObject{{"id", 2}, {"name", "Arpa"}},
                        QJsonObject{{"id", 4}, {"name", "Ayçiçeği"}}};
const QJsonArray Products{QJsonObject{{"id", 101}, {"name", "Tarvenza<sup>&reg;</sup> 250 EC"}},
                          QJsonObject{{"id", 102}, {"name", "Korsan 5 WG"}}, QJsonObject{{"id", 103}, {"name", "Mantis SC"}},
                          QJsonObject{{"id", 104}, {"name", "Bariyer 20 SL"}}};
const QString Waiting =
    QStringLiteral("Kayıt işleminiz başarıyla gerçekleştirildi. Hesabınız aktif edildiğinde sisteme giriş yapabilirsiniz");

} // namespace

class RegistrationTest : public QObject {
    Q_OBJECT
    FakePlatform* fake = nullptr;
    LoginViewController* screen = nullptr;
    QList<QUrl> opened;

    accounts::RegistrationWizard* wizard() const { return screen->registration(); }
    farms::CropEditor* editor() const { return screen->registration()->cropEditor(); }
    AlertController* alert() const { return fake->alert(); }
    QString alertText() const { return alert() ? alert()->title() + u'|' + alert()->message() : QString(); }
    void closeAlert() {
        QVERIFY(alert());
        alert()->tapButton(0);
    }
    DropDownList* openList() const { return qobject_cast<DropDownList*>(wizard()->dropDownCityCounty()); }

    // Picks a row of the open list as a tap does.
    void pick(const QString& name) {
        DropDownList* list = openList();
        QVERIFY(list);
        const int row = list->list().indexOf(name);
        QVERIFY(row >= 0);
        list->didSelectRow(row);
    }

    // The personal data with a place chosen through the lists.
    void fillPerson() {
        wizard()->txtName->setText("Mehmet");
        wizard()->txtLastName->setText("Kaya");
        wizard()->txtMail->setText("");
        wizard()->btnCity->tap();
        pick("Konya");
        fake->run(500);
        wizard()->btnCounty->tap();
        pick("Karatay");
    }

    void chooseFarmer(const char* role = "farmer") {
        screen->openRegisterView();
        (QByteArray(role) == "farmer" ? wizard()->farmerButton : wizard()->dealerButton)->tap();
        closeAlertWith(QStringLiteral("Onaylıyorum"));
        screen->consentPanel()->closeETKWebView();
        screen->consentPanel()->closeETKView();
        fillPerson();
        wizard()->devamButton->tap();
    }
    void closeAlertWith(const QString& button) {
        QVERIFY(alert());
        alert()->tapButton(int(alert()->buttonTitles().indexOf(button)));
    }

    void newCrop(const QString& plant, const QString& size, const QStringList& products = {}) {
        wizard()->didSelectItem(wizard()->collFarms, int(wizard()->arrFarms.size()));
        QVERIFY(!editor()->viewNewProduce->isHidden());
        if (!plant.isEmpty()) {
            editor()->openPlantsView();
            editor()->selectPlant(indexOf(editor()->arrPlants, plant));
        }
        editor()->txtFarmSize->setText(size);
        // The product list is always passed through: the last crop's choice would stay otherwise.
        editor()->openProductView();
        for (const QString& p : products) editor()->selectProduct(indexOf(editor()->arrProducts, p));
        editor()->acceptProductView();
        editor()->btnNewProduce->tap();
    }
    static int indexOf(const QJsonArray& list, const QString& name) {
        for (int i = 0; i < list.size(); ++i)
            if (list.at(i).toObject().value("name").toString() == name) return i;
        return -1;
    }

private slots:
    void init() {
        fake = new FakePlatform;
        opened.clear();
        fake->platform->application().setUrlOpener([this](const QUrl& url) {
            opened << url;
            return true;
        });
        fake->http->on("region/cities", jsonReply(envelope(QJsonObject{{"cities", Cities}})));
        fake->http->on("region/counties", jsonReply(envelope(QJsonObject{{"counties", Counties}})));
        fake->http->on("produces", jsonReply(envelope(QJsonObject{{"produces", Plants}})));
        fake->http->on("produce/aps", jsonReply(envelope(QJsonObject{{"aps", Products}})));
        fake->http->on("page/detail", [](const HttpRequest& r) {
            const QString slug = queryValues(r, "slug").value(0);
            return jsonReply(envelope(QJsonObject{
                {"page", QJsonObject{{"text", slug == "kvkk" ? "<p><a href=\"mailto:kvkk@ekinora.com.tr\">kvkk</a></p>" : "<p>Şartlar</p>"}}}}));
        });
        screen = new LoginViewController;
        fake->platform->window().setRootViewController(screen);
        fake->platform->window().makeKeyAndVisible();
        fake->clock->advance(0);
        screen->loadViewIfNeeded();
        fake->run(1000);
    }
    void cleanup() {
        delete fake;
        screen = nullptr;
    }

    void placeListsWaitHalfASecondAndTakeTheLastMatch() {
        // No county list before a city: a warning, and no list.
        wizard()->btnCounty->tap();
        QCOMPARE(alertText(), QStringLiteral("Uyarı|Önce şehir seçiniz."));
        QVERIFY(!openList());
        closeAlert();

        wizard()->btnCity->tap();
        DropDownList* cities = openList();
        QVERIFY(cities);
        QCOMPARE(cities->list(), (QStringList{"Konya", "Ankara", "Konya"}));
        // A second tap closes the open list instead of opening another.
        wizard()->btnCity->tap();
        QVERIFY(!openList());
        QVERIFY(!cities->isOpen());
        wizard()->btnCity->tap();
        pick("Konya");
        QVERIFY(!openList());

        // The county button rests until the new city's list is in.
        QVERIFY(!wizard()->btnCounty->userInteractionEnabled());
        fake->http->flush();
        fake->clock->advance(499);
        QCOMPARE(fake->http->requestsFor("region/counties").size(), 0);
        wizard()->btnCounty->tap();
        QVERIFY(!openList());
        QVERIFY(!alert());
        fake->clock->advance(1);
        QCOMPARE(fake->http->requestsFor("region/counties").size(), 1);
        QCOMPARE(queryValues(fake->http->requestsFor("region/counties").first(), "cityId"), QStringList{"420"});
        QCOMPARE(wizard()->txtCity->text(), QStringLiteral("Konya"));
        fake->run(0);
        QVERIFY(wizard()->btnCounty->userInteractionEnabled());

        wizard()->btnCounty->tap();
        pick("Çumra");
        QCOMPARE(wizard()->txtCounty->text(), QStringLiteral("Çumra"));

        // Another city empties the county when its list arrives.
        wizard()->btnCity->tap();
        pick("Ankara");
        QCOMPARE(wizard()->txtCounty->text(), QStringLiteral("Çumra"));
        fake->run(500);
        QCOMPARE(wizard()->txtCity->text(), QStringLiteral("Ankara"));
        QCOMPARE(wizard()->txtCounty->text(), QString());
        QCOMPARE(queryValues(fake->http->requestsFor("region/counties").last(), "cityId"), QStringList{"6"});
    }

    void aCityNotInTheListSendsNoId() {
        wizard()->btnCity->setTitle("Atlantis");
        wizard()->getCounties();
        QVERIFY(queryValues(fake->http->requestsFor("region/counties").first(), "cityId").isEmpty());
    }

    void wizardStepsInOrder() {
        screen->openRegisterView();
        QVERIFY(!screen->viewRegister->isHidden() && !wizard()->memberShipView->isHidden() && !wizard()->viewRegisterInfo->isHidden());
        QVERIFY(wizard()->nameView->isHidden() && wizard()->devamButton->isHidden() && screen->viewLogin->isHidden());

        wizard()->farmerButton->tap();
        QCOMPARE(wizard()->registerType, QJsonValue("farmer"));
        QVERIFY(wizard()->memberShipView->isHidden() && !wizard()->nameView->isHidden() && !wizard()->devamButton->isHidden());
        QCOMPARE(alertText(), QStringLiteral("Uyarı|Kayıt olarak Kullanım Şartlarını onaylamış olursunuz."));
        QCOMPARE(alert()->buttonTitles(), (QStringList{"Onaylıyorum", "Kullanım Şartları Metnine Git"}));

        // The conditions first, then their acceptance.
        closeAlertWith("Kullanım Şartları Metnine Git");
        QVERIFY(!screen->consentPanel()->viewKVKK->isHidden());
        QCOMPARE(screen->consentPanel()->frontPanel(), QStringLiteral("viewKVKK"));
        QCOMPARE(screen->consentPanel()->webKVKK->html(), QStringLiteral("<html><head></head><body><p>Şartlar</p></body></html>"));
        screen->consentPanel()->acceptKVKK();
        QVERIFY(screen->consentPanel()->viewKVKK->isHidden() && !screen->consentPanel()->viewETK->isHidden() && !screen->consentPanel()->viewETKWeb->isHidden());
        QCOMPARE(screen->consentPanel()->frontPanel(), QStringLiteral("viewETKWeb"));
        screen->consentPanel()->closeETKWebView();
        QVERIFY(screen->consentPanel()->viewETKWeb->isHidden() && !screen->consentPanel()->viewETK->isHidden());
        screen->consentPanel()->closeETKView();
        QVERIFY(screen->consentPanel()->viewETK->isHidden());

        // Name, surname, city and county are needed; e-mail is not.
        wizard()->devamButton->tap();
        QCOMPARE(alertText(), QStringLiteral("Uyarı|Kişisel bilgilerinizi giriniz."));
        closeAlert();
        wizard()->txtName->setText("Mehmet");
        wizard()->txtLastName->setText("Kaya");
        wizard()->devamButton->tap();
        QCOMPARE(alertText(), QStringLiteral("Uyarı|Kişisel bilgilerinizi giriniz."));
        closeAlert();
        fillPerson();
        wizard()->devamButton->tap();
        QVERIFY(!alert());
        QVERIFY(!wizard()->viewRegisterFarm->isHidden() && !wizard()->ciftciTarlaView->isHidden());
        QVERIFY(wizard()->bayiBilgileriView->isHidden() && wizard()->viewRegisterInfo->isHidden());

        // Back to the person and forward again; no crop is needed.
        screen->continueToInfo();
        QVERIFY(wizard()->viewRegisterFarm->isHidden() && !wizard()->viewRegisterInfo->isHidden());
        wizard()->devamButton->tap();
        screen->continueToFinish();
        QVERIFY(wizard()->viewRegisterFarm->isHidden() && !wizard()->viewRegisterFinal->isHidden());
    }

    void addingChecksTheCropUpdatingDoesNot() {
        chooseFarmer();
        newCrop("", "12");
        QCOMPARE(alertText(), QStringLiteral("Uyarı|Ürün seçmediniz."));
        closeAlert();
        QVERIFY(!editor()->viewNewProduce->isHidden());
        for (const char* size : {"", "0"}) {
            editor()->txtFarmSize->setText(size);
            editor()->openPlantsView();
            editor()->selectPlant(0);
            QCOMPARE(editor()->lblFarm->text(), QStringLiteral("Buğday"));
            editor()->btnNewProduce->tap();
            QCOMPARE(alertText(), QStringLiteral("Uyarı|Tarla büyüklüğünü girmediniz."));
            closeAlert();
            // A second tap on the chosen plant takes the choice back.
            editor()->openPlantsView();
            editor()->selectPlant(0);
            QCOMPARE(editor()->lblFarm->text(), QStringLiteral("Ürün Seçiniz"));
        }
        editor()->openPlantsView();
        editor()->selectPlant(0);
        editor()->txtFarmSize->setText("10001");
        editor()->btnNewProduce->tap();
        QCOMPARE(alertText(), QStringLiteral("Uyarı|Tarla büyüklüğü 10000 dekardan büyük olamaz."));
        closeAlert();
        QVERIFY(wizard()->arrFarms.isEmpty());

        // "12a" reads as 12 and "abc" is not "0": both pass.
        editor()->txtFarmSize->setText("12a");
        editor()->openProductView();
        for (int row : {0, 2, 1, 3}) editor()->selectProduct(row);
        // A fourth product stays out, without a word.
        QCOMPARE(editor()->arrSelectedProducts, (QStringList{"Tarvenza® 250 EC", "Mantis SC", "Korsan 5 WG"}));
        QVERIFY(!alert());
        QCOMPARE(editor()->productCell(3).value("underline").toBool(), false);
        QCOMPARE(editor()->productCell(2).value("underline").toBool(), true);
        editor()->selectProduct(2);
        editor()->acceptProductView();
        QCOMPARE(editor()->lblProduct->text(), QStringLiteral("Tarvenza® 250 EC\nKorsan 5 WG"));
        editor()->btnNewProduce->tap();
        QVERIFY(editor()->viewNewProduce->isHidden());
        newCrop("Arpa", "abc");
        newCrop("Ayçiçeği", "10000");
        QCOMPARE(wizard()->arrFarms.size(), 3);

        const QVariantMap card = wizard()->cellForItem(wizard()->collFarms, 0);
        QCOMPARE(card.value("reuseIdentifier").toString(), QStringLiteral("FarmCell"));
        QCOMPARE(card.value("lblFarm").toString(), QStringLiteral("Buğday"));
        QCOMPARE(card.value("lblFarmSize").toString(), QStringLiteral("12a dekar"));
        QCOMPARE(card.value("lblProducts").toString(), QStringLiteral("Tarvenza® 250 EC\nKorsan 5 WG"));
        QCOMPARE(wizard()->cellForItem(wizard()->collFarms, 1).value("lblProducts").toString(), QStringLiteral("Zirai Ürün Seçilmedi"));
        QCOMPARE(wizard()->arrFarms.at(0).toObject(),
                 (QJsonObject{{"range", "12a"},
                              {"produceId", 1},
                              {"name", "Buğday"},
                              {"aps", QJsonArray{QJsonObject{{"id", 101}, {"name", "Tarvenza® 250 EC"}},
                                                 QJsonObject{{"id", 102}, {"name", "Korsan 5 WG"}}}}}));
        QVERIFY(!wizard()->arrFarms.at(1).toObject().contains("aps"));

        // Three crops: no adding cell.
        QCOMPARE(wizard()->numberOfItemsInSection(wizard()->collFarms), 3);

        // An update takes a size of 0 and keeps the kind under "id"; with no product chosen the
        // panel's placeholder matches nothing and "aps" is empty.
        wizard()->didSelectItem(wizard()->collFarms, 1);
        QVERIFY(!editor()->btnUpdateProduce->isHidden() && editor()->btnNewProduce->isHidden());
        QCOMPARE(editor()->lblProduct->text(), QStringLiteral("Zirai Ürün Seçiniz"));
        QCOMPARE(editor()->arrSelectedProducts, QStringList{"Zirai Ürün Seçiniz"});
        editor()->txtFarmSize->setText("0");
        editor()->btnUpdateProduce->tap();
        QVERIFY(!alert());
        QCOMPARE(wizard()->arrFarms.at(1).toObject(),
                 (QJsonObject{{"range", "0"}, {"id", 2}, {"name", "Arpa"}, {"aps", QJsonArray()}}));

        // Deleting one brings the adding cell back.
        wizard()->didSelectItem(wizard()->collFarms, 2);
        editor()->btnDeleteProduce->tap();
        QCOMPARE(wizard()->arrFarms.size(), 2);
        QCOMPARE(wizard()->numberOfItemsInSection(wizard()->collFarms), 3);
        QCOMPARE(wizard()->cellForItem(wizard()->collFarms, 2).value("reuseIdentifier").toString(), QStringLiteral("NewFarmCell"));

        // A new crop's labels start blank, but the products chosen for the last one stay chosen.
        wizard()->didSelectItem(wizard()->collFarms, 0);
        wizard()->didSelectItem(wizard()->collFarms, 2);
        QCOMPARE(editor()->lblFarm->text(), QStringLiteral("Ürün Seçiniz"));
        QCOMPARE(editor()->lblProduct->text(), QStringLiteral("Zirai Ürün Seçiniz"));
        QCOMPARE(editor()->arrSelectedProducts, (QStringList{"Tarvenza® 250 EC", "Korsan 5 WG"}));
    }

    void farmerRegistrationSendsExactlyTheseKeys() {
        fake->store->setString("hashCode", "h-123");
        chooseFarmer();
        newCrop("Buğday", "12", {"Tarvenza® 250 EC", "Mantis SC"});
        newCrop("Arpa", "5");
        wizard()->didSelectItem(wizard()->collFarms, 1);
        editor()->btnUpdateProduce->tap();
        screen->consentPanel()->radioETK1->tap();
        screen->consentPanel()->radioETK3->tap();
        screen->consentPanel()->radioETK3->tap(); // switched off again
        screen->consentPanel()->radioETK2->tap();
        screen->continueToFinish();
        fake->http->on("farmer/register", jsonReply(envelope(QJsonValue::Null, 400, {{"hash", "Telefon doğrulamanızın süresi doldu."}})));
        wizard()->completeRegistrationButton->tap();
        QCOMPARE(fake->platform->window().hudCount(), 1);
        fake->run(0);
        QCOMPARE(fake->platform->window().hudCount(), 0);

        const HttpRequest sent = fake->http->requestsFor("farmer/register").first();
        QCOMPARE(sent.method, QByteArray("POST"));
        QVERIFY(sent.url.endsWith("/?do=farmer/register"));
        QVERIFY(!sent.hasHeader("Authorization"));
        const QJsonObject body = bodyOf(sent);
        const QJsonArray fields{
            QJsonObject{{"range", "12"}, {"produceId", 1}, {"name", "Buğday"}, {"aps", QJsonArray{101, 103}}},
            QJsonObject{{"range", "5"}, {"id", 2}, {"name", "Arpa"}, {"aps", QJsonArray()}}};
        QCOMPARE(body, (QJsonObject{{"countyId", 4299}, // the last "Karatay"
                                    {"deviceType", 2}, {"email", ""}, {"hash", "h-123"}, {"term", "yes"},
                                    {"fields", fields}, {"firstName", "Mehmet"}, {"lastName", "Kaya"},
                                    {"etk-sms", "1"}, {"etk-email", "1"}, {"etk-advertising", "0"}}));

        // A rejection keeps everything for another press, with the same hash.
        QCOMPARE(alertText(), QStringLiteral("Uyarı|Telefon doğrulamanızın süresi doldu."));
        closeAlert();
        QVERIFY(!wizard()->viewRegisterFinal->isHidden());
        const QJsonObject user{{"id", 9}, {"type", "farmer"}, {"token", "tok-9"}, {"menu", QJsonArray{1, 2}}, {"location", QJsonObject()}};
        fake->http->on("farmer/register", jsonReply(envelope(user)));
        wizard()->completeRegistrationButton->tap();
        fake->run(0);
        QCOMPARE(bodyOf(fake->http->requestsFor("farmer/register").last()), body);
        // Signed in as by a login.
        QCOMPARE(fake->store->stringForKey("token"), QStringLiteral("tok-9"));
        QCOMPARE(fake->store->jsonForKey("userInfo").toObject(), user);
        QVERIFY(fake->posts.contains("checkMenuList"));
    }

    void farmerWithoutCropsSendsNoFields() {
        fake->store->setString("notifToken", QString(64, 'a'));
        chooseFarmer();
        wizard()->arrCounties = QJsonArray(); // the county's name no longer matches a record
        screen->continueToFinish();
        screen->finishRegistration();
        const QJsonObject body = bodyOf(fake->http->requestsFor("farmer/register").first());
        QVERIFY(!body.contains("fields"));
        QVERIFY(!body.contains("countyId"));
        QVERIFY(!body.contains("hash"));
        QCOMPARE(body.value("deviceId"), QJsonValue(QString(64, 'a')));
        for (const char* key : {"etk-sms", "etk-email", "etk-advertising"}) QCOMPARE(body.value(key), QJsonValue("0"));
    }

    void dealerCheckShowsTheFirstErrorOnly() {
        chooseFarmer("dealer");
        // The crop panel goes, the shop's keeps what it had.
        QVERIFY(wizard()->ciftciTarlaView->isHidden());
        QVERIFY(!wizard()->bayiBilgileriView->isHidden());
        wizard()->bayiAdiText->setText("Öztürk Tarım");
        wizard()->vergiNoText->setText("7710203344");
        screen->continueToFinish();
        QCOMPARE(alertText(), QStringLiteral("Uyarı|Bayi bilgilerini giriniz."));
        closeAlert();
        QVERIFY(fake->http->requestsFor("dealer/check-information-field").isEmpty());
        wizard()->tcKimlikText->setText("10000000147");

        fake->http->on("dealer/check-information-field",
                       jsonReply(envelope(QJsonValue::Null, 400,
                                          {{"taxNumber", "Vergi numarası 10 haneli olmalıdır."},
                                           {"TCNo", "Lütfen geçerli bir T.C. Kimlik Numarası giriniz."}})));
        screen->continueToFinish();
        QCOMPARE(fake->platform->window().hudCount(), 0);
        fake->run(0);
        const HttpRequest check = fake->http->requestsFor("dealer/check-information-field").first();
        QCOMPARE(check.method, QByteArray("POST"));
        QVERIFY(check.url.endsWith("/?do=dealer/check-information-field"));
        QCOMPARE(check.header("Authorization"), QByteArray("Bearer (null)"));
        QCOMPARE(check.header("Content-Type"), QByteArray("application/json; charset=UTF-8"));
        QCOMPARE(bodyOf(check), (QJsonObject{{"do", "dealer/check-information-field"},
                                             {"taxNumber", "7710203344"},
                                             {"dealerName", "Öztürk Tarım"},
                                             {"TCNo", "10000000147"}}));
        // The identity alert is up, so the second one is refused.
        QCOMPARE(alertText(), QStringLiteral("Hata|Lütfen geçerli bir T.C. Kimlik Numarası giriniz."));
        QCOMPARE(fake->platform->window().presentedControllers().size(), 1);
        QVERIFY(fake->logged("which is already presenting"));
        closeAlert();
        QVERIFY(!alert());
        QVERIFY(wizard()->viewRegisterFinal->isHidden());

        fake->http->on("dealer/check-information-field",
                       jsonReply(envelope(QJsonValue::Null, 400, {{"taxNumber", "Bu vergi numarası ile kayıtlı bir bayi bulunuyor."}})));
        screen->continueToFinish();
        fake->run(0);
        QCOMPARE(alertText(), QStringLiteral("Hata|Bu vergi numarası ile kayıtlı bir bayi bulunuyor."));
        closeAlert();
        fake->http->on("dealer/check-information-field", jsonReply(envelope(QJsonValue::Null, 400, {{"dealerName", "x"}})));
        screen->continueToFinish();
        fake->run(0);
        QCOMPARE(alertText(), QStringLiteral("Hata|Bilgileri doğru girdiğinizden emin olun"));
        closeAlert();

        fake->http->on("dealer/check-information-field", jsonReply(envelope(QJsonValue::Null)));
        screen->continueToFinish();
        fake->run(0);
        QVERIFY(!wizard()->viewRegisterFinal->isHidden());
        QVERIFY(wizard()->viewRegisterFarm->isHidden() && wizard()->bayiBilgileriView->isHidden());
    }

    void dealerRegistersWithoutSigningIn() {
        fake->store->setString("hashCode", "h-77");
        chooseFarmer("dealer");
        wizard()->bayiAdiText->setText("Öztürk Tarım");
        wizard()->vergiNoText->setText("7710203344");
        wizard()->tcKimlikText->setText("10000000146");
        screen->consentPanel()->radioETK3->tap();
        fake->http->on("dealer/check-information-field", jsonReply(envelope(QJsonValue::Null)));
        fake->http->on("dealer/register", jsonReply(envelope(QJsonValue::Null)));
        screen->continueToFinish();
        fake->run(0);
        wizard()->completeRegistrationButton->tap();
        fake->run(0);
        const HttpRequest sent = fake->http->requestsFor("dealer/register").first();
        QVERIFY(!sent.hasHeader("Authorization"));
        QCOMPARE(bodyOf(sent), (QJsonObject{{"email", ""},
                                            {"countyId", 4299},
                                            {"firstName", "Mehmet"},
                                            {"lastName", "Kaya"},
                                            {"etk-sms", "0"},
                                            {"etk-advertising", "1"},
                                            {"etk-email", "0"},
                                            {"hash", "h-77"},
                                            {"taxNumber", "7710203344"},
                                            {"dealerName", "Öztürk Tarım"},
                                            {"TCNo", "10000000146"},
                                            {"term", "yes"},
                                            {"deviceType", 2}}));
        QCOMPARE(wizard()->activationLabel->text(), Waiting);
        QCOMPARE(wizard()->completeRegistrationButton->title(), QStringLiteral("Geriye Dön"));
        QVERIFY(!fake->store->contains("token") && !fake->store->contains("userInfo"));

        // The same button now leads back to the sign-in, without registering again.
        screen->txtLoginPhone->setText("05559998877");
        wizard()->completeRegistrationButton->tap();
        fake->run(0);
        QCOMPARE(fake->http->requestsFor("dealer/register").size(), 1);
        QVERIFY(screen->viewRegister->isHidden() && !screen->viewLogin->isHidden() && !screen->viewLoginPhone->isHidden());
        QVERIFY(screen->viewLoginCode->isHidden());
        QCOMPARE(screen->txtLoginPhone->text(), QString());
    }

    void mailLinksOfTheNoticeGoToMail() {
        const QUrl link(QStringLiteral("mailto:kvkk@ekinora.com.tr"));
        // Only a tapped link.
        QVERIFY(screen->consentPanel()->webviewETK->shouldNavigate(link, WebView::Other));
        QVERIFY(opened.isEmpty());
        QVERIFY(screen->consentPanel()->webKVKK->shouldNavigate(QUrl("https://www.kvkk.gov.tr"), WebView::LinkActivated));

        QVERIFY(!screen->consentPanel()->webviewETK->shouldNavigate(link, WebView::LinkActivated));
        QCOMPARE(opened.size(), 1);
        QCOMPARE(opened.first().scheme(), QStringLiteral("mailto"));
        QCOMPARE(opened.first().path(), QStringLiteral("kvkk@ekinora.com.tr"));
        QCOMPARE(QUrlQuery(opened.first()).queryItemValue("subject", QUrl::FullyDecoded),
                 QStringLiteral("Ekinora - Kişisel Verilerin Korunması ve İşlenmesi Hakkında"));
        QVERIFY(!alert());

        // Without a mail account: a warning and nothing opened.
        fake->platform->application().setUrlChecker([](const QUrl& url) { return url.scheme() != "mailto"; });
        QVERIFY(!screen->consentPanel()->webKVKK->shouldNavigate(link, WebView::LinkActivated));
        QCOMPARE(opened.size(), 1);
        QCOMPARE(alertText(), QStringLiteral("Uyarı|Mail hesabınız telefonunuza kurulu değildir."));
    }
};

QTEST_GUILESS_MAIN(RegistrationTest)
#include "tst_registration.moc"
