#include "LoginViewController.h"

#include "RegisterRequests.h"
#include "SmsRequest.h"
#include "platform/AlertController.h"
#include "platform/NavigationController.h"
#include "platform/Overlays.h"
#include "platform/Platform.h"
#include "platform/SideMenuViewController.h"
#include "platform/Storyboard.h"
#include "service/LocalStore.h"
#include "service/Replies.h"
#include "service/ServiceCall.h"
#include "service/TextHelpers.h"
#include "service/WSRequest.h"
#include "widgets/DropDownList.h"

#include <QUrlQuery>

namespace ekinora::accounts {

using namespace platform;
using service::LocalStore;
namespace StoreKey = service::StoreKey;

namespace {

Platform& P() { return Platform::current(); }
void log(const QString& line) { P().application().log(line); }

bool statusIs(const Json& response, int status) { return intValue(member(response, QStringLiteral("status"))) == status; }

// The id of the last record of the list whose "name" is exactly the text, or nil.
Json lastIdNamed(const QJsonArray& list, const QString& name) {
    Json found = nil();
    for (const auto& record : list)
        if (isString(member(record, QStringLiteral("name")), name)) found = member(record, QStringLiteral("id"));
    return found;
}

// A value as a label shows it: a text as it is, anything else as "%@" writes it.
QString textOf(const Json& value) { return value.isString() ? value.toString() : description(value); }

// A stored text, or nil when the key is absent.
Json storedText(const QString& key) {
    const QString value = LocalStore::defaults().stringForKey(key);
    return value.isNull() ? nil() : Json(value);
}

const QString NoPlant = QStringLiteral("Ürün Seçiniz");
const QString NoProducts = QStringLiteral("Zirai Ürün Seçiniz");
const QString NoProductsOnCard = QStringLiteral("Zirai Ürün Seçilmedi");
const QString BackTitle = QStringLiteral("Geriye Dön");
const QString WaitingText =
    QStringLiteral("Kayıt işleminiz başarıyla gerçekleştirildi. Hesabınız aktif edildiğinde sisteme giriş yapabilirsiniz");
const QString MailSubject = QStringLiteral("Ekinora - Kişisel Verilerin Korunması ve İşlenmesi Hakkında");
constexpr int CityListTag = 101;
constexpr int CountyListTag = 102;
constexpr int MaxCrops = 3;

const QStringList PhoneFields{QStringLiteral("txtLoginPhone"), QStringLiteral("txtLoginPhoneCode"),
                              QStringLiteral("txtRegisterPhone"), QStringLiteral("txtRegisterPhoneCode")};

} // namespace

LoginViewController::LoginViewController(QObject* parent)
    : ViewController(parent), viewLogin(makeControl<View>("viewLogin")), viewLoginPhone(makeControl<View>("viewLoginPhone")),
      viewLoginCode(makeControl<View>("viewLoginCode")), viewLogout(makeControl<View>("viewLogout")),
      viewRegister(makeControl<View>("viewRegister")), viewRegisterPhone(makeControl<View>("viewRegisterPhone")),
      viewRegisterCode(makeControl<View>("viewRegisterCode")), memberShipView(makeControl<View>("memberShipView")),
      viewRegisterInfo(makeControl<View>("viewRegisterInfo")), nameView(makeControl<View>("nameView")),
      viewRegisterFarm(makeControl<View>("viewRegisterFarm")), ciftciTarlaView(makeControl<View>("ciftciTarlaView")),
      bayiBilgileriView(makeControl<View>("bayiBilgileriView")),
      viewRegisterActivation(makeControl<View>("viewRegisterActivation")),
      viewRegisterFinal(makeControl<View>("viewRegisterFinal")), txtLoginPhone(makeControl<TextField>("txtLoginPhone")),
      txtLoginPhoneCode(makeControl<TextField>("txtLoginPhoneCode")), txtLoginCode(makeControl<TextField>("txtLoginCode")),
      txtRegisterPhone(makeControl<TextField>("txtRegisterPhone")),
      txtRegisterPhoneCode(makeControl<TextField>("txtRegisterPhoneCode")),
      txtRegisterCode(makeControl<TextField>("txtRegisterCode")), farmerButton(makeControl<Button>("farmerButton")),
      dealerButton(makeControl<Button>("dealerButton")), devamButton(makeControl<Button>("devamButton")),
      completeRegistrationButton(makeControl<Button>("completeRegistrationButton")),
      activationLabel(makeControl<Label>("activationLabel")) {
    for (TextField* field : {txtLoginPhone, txtLoginPhoneCode, txtLoginCode, txtRegisterPhone, txtRegisterPhoneCode, txtRegisterCode}) {
        field->setShouldChange([this](TextField* f, int location, int length, const QString& replacement) {
            return textFieldShouldChangeCharacters(f, location, length, replacement);
        });
        field->setShouldReturn([this](TextField* f) { return textFieldShouldReturn(f); });
    }
    for (TextField* phone : {txtLoginPhone, txtLoginPhoneCode, txtRegisterPhone, txtRegisterPhoneCode}) phone->setKeyboardType(5);
    txtLoginCode->setKeyboardType(4);
    txtRegisterCode->setKeyboardType(4);
    completeRegistrationButton->setTitle(QStringLiteral("Kaydı Tamamla"));
    activationLabel->setNumberOfLines(0);
    activationLabel->setText(QStringLiteral("Bilgileriniz hazır. Kaydınızı tamamlamak için aşağıdaki butona dokunun."));

    txtName = makeControl<TextField>("txtName");
    txtLastName = makeControl<TextField>("txtLastName");
    txtMail = makeControl<TextField>("txtMail");
    txtCity = makeControl<TextField>("txtCity");
    txtCounty = makeControl<TextField>("txtCounty");
    btnCity = makeControl<Button>("btnCity");
    btnCounty = makeControl<Button>("btnCounty");
    bayiAdiText = makeControl<TextField>("bayiAdiText");
    vergiNoText = makeControl<TextField>("vergiNoText");
    tcKimlikText = makeControl<TextField>("tcKimlikText");
    collFarms = makeControl<TableView>("collFarms");

    // The crops stay here until the registration sends them; at most three products each.
    farms::CropEditorPolicy crop;
    crop.productTextControl = QStringLiteral("lblProductName");
    crop.endEditingOnOpen = true;
    crop.endEditingOnAccept = true;
    // A new crop starts from the products chosen last: opening the panel leaves them as they are.
    crop.clearProductsOnOpen = false;
    crop.productSelectionStyle = true;
    crop.add = [this] { addCrop(); };
    crop.update = [this] { updateCrop(); };
    crop.remove = [this] { deleteCrop(); };
    crop.productsHint = QStringLiteral("En fazla 3 ürün seçebilirsiniz.");
    m_cropEditor = new farms::CropEditor(std::move(crop), this);
    // The conditions of use come first, then the permissions with the notice over them.
    ConsentPolicy consent;
    consent.withTerms = true;
    consent.permissionTitles = {QStringLiteral("SMS ile bilgi almak istiyorum"), QStringLiteral("E-posta ile bilgi almak istiyorum"),
                                QStringLiteral("Tanıtım iletilerine izin veriyorum")};
    consent.squareBoxes = true;
    consent.permissionsHint = QStringLiteral("Hangi kanallardan bilgi almak istediğinizi seçin. Seçim yapmadan da devam edebilirsiniz.");
    consent.noticeLink = QStringLiteral("Aydınlatma Metnini Oku");
    consent.permissionsButton = QStringLiteral("Devam");
    consent.noticeTitle = QStringLiteral("Aydınlatma Metni");
    consent.noticeButton = QStringLiteral("Okudum");
    m_consent = new ConsentPanel(std::move(consent), this);
    TextField* txtFarmSize = m_cropEditor->txtFarmSize;

    for (TextField* field : {txtName, txtLastName, txtMail, bayiAdiText, vergiNoText, tcKimlikText, txtFarmSize})
        field->setShouldReturn([this](TextField* f) { return textFieldShouldReturn(f); });
    txtName->setPlaceholder(QStringLiteral("Adınız"));
    txtLastName->setPlaceholder(QStringLiteral("Soyadınız"));
    txtMail->setPlaceholder(QStringLiteral("E-posta adresiniz (isteğe bağlı)"));
    txtMail->setKeyboardType(7);
    // The place is shown in these two fields; the buttons over them open the lists.
    txtCity->setPlaceholder(QStringLiteral("İl Seçiniz"));
    txtCounty->setPlaceholder(QStringLiteral("İlçe Seçiniz"));
    bayiAdiText->setPlaceholder(QStringLiteral("Bayi adı"));
    vergiNoText->setPlaceholder(QStringLiteral("Vergi numarası"));
    vergiNoText->setKeyboardType(4);
    tcKimlikText->setPlaceholder(QStringLiteral("T.C. Kimlik Numarası"));
    tcKimlikText->setKeyboardType(4);
    txtFarmSize->setPlaceholder(QStringLiteral("Tarla büyüklüğü (dekar)"));
    txtFarmSize->setKeyboardType(4);
    m_cropEditor->lblFarm->setText(NoPlant);
    m_cropEditor->lblProduct->setText(NoProducts);

    farmerButton->setTitle(QStringLiteral("Çiftçiyim"));
    dealerButton->setTitle(QStringLiteral("Bayiyim"));
    devamButton->setTitle(QStringLiteral("Devam"));
    m_cropEditor->btnNewProduce->setTitle(QStringLiteral("Ekle"));
    m_cropEditor->btnUpdateProduce->setTitle(QStringLiteral("Güncelle"));
    m_cropEditor->btnDeleteProduce->setTitle(QStringLiteral("Sil"));

    // The connections the screen's layout makes.
    collFarms->setDataSource([this](int section) { return numberOfItemsInSection(collFarms, section); },
                             [this](int, int row) {
                                 return cellRow(cellForItem(collFarms, row), sizeForItem(collFarms, row, collFarms->size().width()));
                             });
    collFarms->setDidSelectRow([this](int, int row) { didSelectItem(collFarms, row); });
    farmerButton->addTarget(this, QStringLiteral("farmerButtonTapped"));
    dealerButton->addTarget(this, QStringLiteral("dealerButtonTapped"));
    devamButton->addTarget(this, QStringLiteral("continueToFarm"));
    completeRegistrationButton->addTarget(this, QStringLiteral("finishRegistration"));
    btnCity->addTarget(this, QStringLiteral("selectCity"));
    btnCounty->addTarget(this, QStringLiteral("selectCounty"));
}

QUrl LoginViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Accounts/LoginView.qml")); }

void LoginViewController::showAlert(const QString& title, const QString& message, int style) {
    auto* alert = AlertController::alertControllerWithTitle(title, message);
    alert->addAction(QStringLiteral("Tamam"), AlertController::ActionStyle(style));
    presentViewController(alert, true);
}

void LoginViewController::viewDidLoad() {
    // 1. The one-time-code content type was handed to the wrong setter of the wrong field; it changes
    //    nothing for the user, so nothing is set here.
    embed(m_cropEditor, "cropEditorSlot");
    embed(m_consent, "consentSlot");
    WebView* webKVKK = m_consent->webKVKK;
    WebView* webviewETK = m_consent->webviewETK;
    // 2.
    // The page is shown as it came; its view, not the page, keeps it from scrolling sideways.
    webKVKK->setDidFinishNavigation([](WebView*) {});
    webviewETK->setDidFinishNavigation([](WebView*) {});
    for (WebView* web : {webKVKK, webviewETK})
        web->setDecidePolicy([this](WebView* w, const QUrl& url, int type) { return decidePolicyForNavigationAction(w, url, type); });
    m_consent->btn1Enb->setEnabled(false);
    m_consent->btn2Enb->setEnabled(false);
    m_consent->btn3Enb->setEnabled(false);
    if (NavigationController* nav = navigationController()) nav->setNavigationBarHidden(true);
    // 3.
    arrCities = QJsonArray();
    arrCounties = QJsonArray();
    // 4.
    m_consent->hidePages();
    m_consent->loadWebviewETK();
    // 5.
    for (View* v : {viewLogin, viewRegister, viewRegisterPhone, viewLoginPhone, viewLoginCode, memberShipView})
        v->setAlpha(1.0);
    viewLogin->setHidden(false);
    viewRegister->setHidden(true);
    viewRegisterPhone->setHidden(false);
    viewLoginPhone->setHidden(false);
    viewLoginCode->setHidden(true);
    memberShipView->setHidden(false);
    // 6.
    getCities();
    // 7. The crop list shows its adding cell from the start.
    arrFarms = QJsonArray();
    collFarms->reloadData();
    m_cropEditor->load();
    // 8.
    m_consent->getInfo();
    // 9. The farewell after a logout, once.
    UserDefaults& store = LocalStore::defaults();
    if (store.contains(StoreKey::IsLogout)) {
        viewLogout->setHidden(false);
        store.removeObjectForKey(StoreKey::IsLogout);
        store.synchronize();
    } else {
        viewLogout->setHidden(true);
    }
    // 10.
    webKVKK->setBounces(false);
}

void LoginViewController::getCities() {
    service::WSRequest request;
    request.doParam = QStringLiteral("region/cities");
    auto self = strong(this);
    request.requestData(
        [self](const Json& response) {
            self->arrCities = service::listOf(path(response, {QStringLiteral("data"), QStringLiteral("cities")}));
        },
        [](const Json& error) { log(QStringLiteral("getCities: %1").arg(description(error))); });
}

bool LoginViewController::textFieldShouldChangeCharacters(TextField* field, int, int, const QString& replacement) {
    // A phone number stops at 11 characters; deleting stays possible.
    if (PhoneFields.contains(field->objectName()) && field->text().length() >= 11 && !replacement.isEmpty()) return false;
    return true;
}

bool LoginViewController::textFieldShouldReturn(TextField* field) {
    field->resignFirstResponder();
    return true;
}

void LoginViewController::getSmsCodeForLogin(QObject*) {
    txtLoginCode->becomeFirstResponder();
    service::ScreenCall call(this, QStringLiteral("sms/get"), service::ScreenCall::WithHud);
    SmsRequest request;
    request.doParam = QStringLiteral("sms/get");
    request.phoneNumber = txtLoginPhone->text();
    auto self = strong(this);
    request.getSmsCode(
        call.done([self](const Json& response) {
            if (!statusIs(response, 200)) {
                self->showAlert(QStringLiteral("Uyarı"), service::firstError(response));
                return;
            }
            const Json data = member(response, QStringLiteral("data"));
            self->actionType = member(data, QStringLiteral("nextAction"));
            UserDefaults& store = LocalStore::defaults();
            const Json hash = member(data, QStringLiteral("hash"));
            if (hash.isUndefined()) store.removeObjectForKey(StoreKey::HashCode);
            else store.setString(StoreKey::HashCode, hash.isString() ? hash.toString() : description(hash));
            store.synchronize();
            self->viewLoginPhone->setHidden(true);
            self->viewLoginCode->setHidden(false);
            self->txtLoginPhoneCode->setText(self->txtLoginPhone->text());
            log(description(member(data, QStringLiteral("code"))));
        }),
        call.failed());
}

void LoginViewController::validateSmsCodeForLogin(QObject* sender) {
    if (txtLoginCode->text().isEmpty()) {
        showAlert(QStringLiteral("Hata"), QStringLiteral("Sms kodunu giriniz"));
        return;
    }
    service::ScreenCall call(this, QStringLiteral("validateSmsCode"), service::ScreenCall::WithHud);
    UserDefaults& store = LocalStore::defaults();
    SmsRequest request;
    request.doParam = isString(actionType, QStringLiteral("login")) ? QStringLiteral("farmer/login") : QStringLiteral("sms/check");
    const QString hash = store.stringForKey(StoreKey::HashCode);
    request.hashID = hash.isNull() ? nil() : Json(hash);
    request.validationCode = txtLoginCode->text();
    request.queryType = actionType;
    request.deviceType = QStringLiteral("2");
    // Without a push token there is no device to name.
    const QString device = store.stringForKey(StoreKey::NotifToken);
    request.deviceID = device.isNull() ? nil() : Json(device);
    auto self = strong(this);
    QPointer<QObject> from(sender);
    request.validateSmsCode(
        call.done([self, from](const Json& response) {
            const int status = intValue(member(response, QStringLiteral("status")));
            if (status == 200) {
                if (isString(self->actionType, QStringLiteral("login"))) self->enterApplication(member(response, QStringLiteral("data")));
                else self->openRegisterView(from);
            } else if (status == 400) {
                const Json data = member(response, QStringLiteral("data"));
                if (data.isNull()) {
                    self->showAlert(QStringLiteral("Hata"), QStringLiteral("Kod bulunamadı"));
                    return;
                }
                const Json action = member(data, QStringLiteral("action"));
                if (action.isNull()) self->showAlert(QStringLiteral("Hata"), QStringLiteral("Lütfen kodu doğru giriniz"));
                else if (isString(action, QStringLiteral("notActiveDealer"))) self->showActivationPending();
                // Any other action, or none: nothing.
            }
        }),
        call.failed());
}

void LoginViewController::enterApplication(const Json& data) {
    // The session is kept before the role is looked at, so an unknown role is signed in all the same.
    UserDefaults& store = LocalStore::defaults();
    LocalStore::setUserInfo(data);
    const Json token = member(data, QStringLiteral("token"));
    if (token.isUndefined()) store.removeObjectForKey(StoreKey::Token);
    else if (token.isNull()) fatal(QStringLiteral("Attempt to insert non-property list object <null> for key token"));
    else store.setString(StoreKey::Token, token.isString() ? token.toString() : description(token));
    store.synchronize();

    auto* content = qobject_cast<NavigationController*>(
        Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("contentViewController")));
    const Json type = member(data, QStringLiteral("type"));
    const bool farmerSide = isString(type, QStringLiteral("farmer")) || isString(type, QStringLiteral("loyalty"));
    ViewController* first = Storyboard::instantiateViewControllerWithIdentifier(
        farmerSide ? QStringLiteral("firstViewController") : QStringLiteral("messageVC"));
    if (content) content->setViewControllers(first ? QList<ViewController*>{first} : QList<ViewController*>{});
    P().notificationCenter().postNotificationName(QStringLiteral("checkMenuList"));
    if (SideMenuViewController* menu = sideMenuViewController(); menu && content) {
        menu->setContentViewController(content, true);
        menu->hideMenuViewController();
    }
}

void LoginViewController::showActivationPending() {
    // A dealer whose account the company has not activated yet.
    for (View* v : {m_consent->viewKVKK, viewLogout, viewLogin, viewRegisterFarm, viewRegisterInfo, viewRegisterActivation, memberShipView})
        v->setHidden(true);
    viewRegister->setHidden(false);
    viewRegisterFinal->setHidden(false);
    txtLoginCode->setText(QString());
    txtLoginPhone->setText(QString());
    txtLoginPhoneCode->setText(QString());
    completeRegistrationButton->setTitle(BackTitle);
    activationLabel->setText(WaitingText);
}

void LoginViewController::getSmsCode(QObject*) {
    SmsRequest request;
    request.doParam = QStringLiteral("sms/get");
    request.phoneNumber = txtRegisterPhone->text();
    request.queryType = QStringLiteral("register");
    auto self = strong(this);
    request.getSmsCode(
        [self](const Json& response) {
            if (!statusIs(response, 200)) {
                // The "errors" member itself, unformatted.
                self->showAlert(QStringLiteral("Uyarı"), description(member(response, QStringLiteral("errors"))));
                return;
            }
            UserDefaults& store = LocalStore::defaults();
            const Json hash = path(response, {QStringLiteral("data"), QStringLiteral("hash")});
            if (hash.isUndefined()) store.removeObjectForKey(StoreKey::HashCode);
            else store.setString(StoreKey::HashCode, hash.isString() ? hash.toString() : description(hash));
            store.synchronize();
            self->viewRegisterPhone->setHidden(true);
            self->viewRegisterCode->setHidden(false);
            self->txtRegisterPhoneCode->setText(self->txtRegisterPhone->text());
        },
        [](const Json& error) { log(QStringLiteral("sms/get: %1").arg(description(error))); });
}

void LoginViewController::validateSmsCode(QObject*) {
    SmsRequest request;
    request.doParam = QStringLiteral("sms/check");
    const QString hash = LocalStore::defaults().stringForKey(StoreKey::HashCode);
    request.hashID = hash.isNull() ? nil() : Json(hash);
    request.validationCode = txtRegisterCode->text();
    request.queryType = QStringLiteral("register");
    auto self = strong(this);
    request.validateSmsCode(
        [self](const Json& response) {
            if (!statusIs(response, 200)) {
                self->showAlert(QStringLiteral("Hata"), QStringLiteral("Onay kodu doğrulanamadı lütfen tekrar deneyiniz."),
                                AlertController::Destructive);
                return;
            }
            self->viewRegisterActivation->setHidden(true);
            self->viewRegisterInfo->setHidden(false);
        },
        [](const Json& error) { log(QStringLiteral("sms/check: %1").arg(description(error))); });
}

void LoginViewController::loginBack(QObject*) { viewLogout->setHidden(true); }

void LoginViewController::openRegisterView(QObject*) {
    endEditing();
    for (View* v : {viewRegister, viewRegisterInfo, memberShipView}) v->setHidden(false);
    for (View* v : {viewRegisterCode, nameView, viewRegisterActivation, viewRegisterFinal, viewRegisterFarm, viewLogin})
        v->setHidden(true);
    devamButton->setHidden(true);
}

// Region lookup ----------------------------------------------------------------------------------

void LoginViewController::setDropDown(QObject* list) {
    m_dropDown = qobject_cast<widgets::DropDownList*>(list);
    emit dropDownChanged();
}

void LoginViewController::rel() { setDropDown(nullptr); }

void LoginViewController::getCounties() {
    txtCity->setText(btnCity->title());
    service::WSRequest request;
    request.doParam = QStringLiteral("region/counties");
    request.cityID = lastIdNamed(arrCities, txtCity->text());
    auto self = strong(this);
    request.requestData(
        [self](const Json& response) {
            self->txtCounty->setText(QString());
            self->arrCounties = service::listOf(path(response, {QStringLiteral("data"), QStringLiteral("counties")}));
            self->btnCounty->setUserInteractionEnabled(true);
        },
        [](const Json& error) { log(QStringLiteral("getCounties: %1").arg(description(error))); });
}

void LoginViewController::selectCity(QObject* sender) {
    endEditing();
    QStringList names;
    for (const auto& city : std::as_const(arrCities)) names << textOf(member(city, QStringLiteral("name")));
    if (names.isEmpty()) return;
    if (auto* open = qobject_cast<widgets::DropDownList*>(m_dropDown.data())) {
        open->hideDropDown(qobject_cast<Button*>(sender));
        rel();
        return;
    }
    auto* list = new widgets::DropDownList;
    list->showDropDown(qobject_cast<Button*>(sender), 250, names, {}, QStringLiteral("down"));
    list->setDelegate(this);
    list->setTag(CityListTag);
    setDropDown(list);
}

void LoginViewController::selectCounty(QObject* sender) {
    endEditing();
    QStringList names;
    for (const auto& county : std::as_const(arrCounties)) names << textOf(member(county, QStringLiteral("name")));
    if (!names.isEmpty()) {
        if (auto* open = qobject_cast<widgets::DropDownList*>(m_dropDown.data())) {
            open->hideDropDown(qobject_cast<Button*>(sender));
            rel();
        } else {
            auto* list = new widgets::DropDownList;
            list->showDropDown(qobject_cast<Button*>(sender), 250, names, {}, QStringLiteral("down"));
            list->setDelegate(this);
            list->setTag(CountyListTag);
            setDropDown(list);
        }
    }
    if (arrCounties.isEmpty()) showAlert(QStringLiteral("Uyarı"), QStringLiteral("Önce şehir seçiniz."));
}

void LoginViewController::dropDownListDelegateMethod(QObject* sender) {
    rel();
    auto* list = qobject_cast<widgets::DropDownList*>(sender);
    if (list && list->tag() == CityListTag) {
        // While the new city's counties are on their way the old list can't be opened.
        btnCounty->setUserInteractionEnabled(false);
        auto self = strong(this);
        P().scheduler().after(500, [self] { self->getCounties(); });
    } else {
        txtCounty->setText(btnCounty->title());
    }
}

// The wizard -------------------------------------------------------------------------------------

void LoginViewController::farmerButtonTapped(QObject*) {
    memberShipView->setHidden(true);
    nameView->setHidden(false);
    devamButton->setHidden(false);
    registerType = QStringLiteral("farmer");
    canOpenKvkkView();
}

void LoginViewController::dealerButtonTapped(QObject*) {
    memberShipView->setHidden(true);
    nameView->setHidden(false);
    devamButton->setHidden(false);
    registerType = QStringLiteral("dealer");
    canOpenKvkkView();
}

void LoginViewController::canOpenKvkkView() {
    auto* alert = AlertController::alertControllerWithTitle(
        QStringLiteral("Uyarı"), QStringLiteral("Kayıt olarak Kullanım Şartlarını onaylamış olursunuz."));
    auto self = strong(this);
    alert->addAction(QStringLiteral("Onaylıyorum"), AlertController::Default, [self] { self->m_consent->acceptKVKK(); });
    alert->addAction(QStringLiteral("Kullanım Şartları Metnine Git"), AlertController::Default, [self] {
        self->m_consent->viewKVKK->setHidden(false);
        self->m_consent->bringSubviewToFront(self->m_consent->viewKVKK);
    });
    service::hudHost(this)->presentViewController(alert, true);
}

void LoginViewController::continueToActivation(QObject*) {}

void LoginViewController::continueToInfo(QObject*) {
    endEditing();
    for (View* v : {viewRegisterActivation, viewRegisterFarm, viewRegisterFinal}) v->setHidden(true);
    viewRegisterInfo->setHidden(false);
}

void LoginViewController::continueToFarm(QObject*) {
    endEditing();
    for (TextField* f : {txtName, txtLastName, txtCounty, txtCity}) {
        if (f->text().isEmpty()) {
            showAlert(QStringLiteral("Uyarı"), QStringLiteral("Kişisel bilgilerinizi giriniz."));
            return;
        }
    }
    if (isString(registerType, QStringLiteral("dealer"))) {
        // The shop's panel keeps the visibility it had.
        ciftciTarlaView->setHidden(true);
    } else if (isString(registerType, QStringLiteral("farmer"))) {
        ciftciTarlaView->setHidden(false);
        bayiBilgileriView->setHidden(true);
    }
    viewRegisterFarm->setHidden(false);
    for (View* v : {viewRegisterActivation, viewRegisterInfo, viewRegisterFinal}) v->setHidden(true);
}

void LoginViewController::continueToFinish(QObject*) {
    if (isString(registerType, QStringLiteral("dealer"))) {
        if (bayiAdiText->text().isEmpty() || vergiNoText->text().isEmpty() || tcKimlikText->text().isEmpty()) {
            showAlert(QStringLiteral("Uyarı"), QStringLiteral("Bayi bilgilerini giriniz."));
            return;
        }
        checkDealer();
        return;
    }
    // A farmer may register without a crop.
    endEditing();
    for (View* v : {viewRegisterFarm, viewRegisterActivation, viewRegisterInfo}) v->setHidden(true);
    viewRegisterFinal->setHidden(false);
}

void LoginViewController::checkDealer() {
    CheckDealerRequest request;
    request.doParam = QStringLiteral("dealer/check-information-field");
    request.taxNumber = vergiNoText->text();
    request.dealerName = bayiAdiText->text();
    request.TCNo = tcKimlikText->text();
    auto self = strong(this);
    request.checkDealer(
        [self](const Json& response) {
            if (statusIs(response, 200)) {
                for (View* v : {self->viewRegisterFarm, self->viewRegisterActivation, self->bayiBilgileriView,
                                self->viewRegisterInfo})
                    v->setHidden(true);
                self->viewRegisterFinal->setHidden(false);
                return;
            }
            const Json errors = member(response, QStringLiteral("errors"));
            const Json identity = member(errors, QStringLiteral("TCNo"));
            if (!identity.isUndefined()) self->showAlert(QStringLiteral("Hata"), textOf(identity), AlertController::Destructive);
            // Presented after the identity alert, so that with both errors only the first is seen.
            const Json tax = member(errors, QStringLiteral("taxNumber"));
            self->showAlert(QStringLiteral("Hata"),
                            tax.isUndefined() ? QStringLiteral("Bilgileri doğru girdiğinizden emin olun") : textOf(tax),
                            AlertController::Destructive);
        },
        [](const Json& error) { log(QStringLiteral("checkDealer: %1").arg(description(error))); });
}

void LoginViewController::finishRegistration(QObject*) {
    if (completeRegistrationButton->title() == BackTitle) {
        backToLogin();
        return;
    }
    if (isString(registerType, QStringLiteral("farmer"))) registerFarmer();
    else if (isString(registerType, QStringLiteral("dealer"))) registerDealer();
}

void LoginViewController::backToLogin() {
    for (View* v : {m_consent->viewKVKK, viewLogout, viewRegister}) v->setHidden(true);
    txtLoginCode->setText(QString());
    txtLoginPhone->setText(QString());
    txtLoginPhoneCode->setText(QString());
    for (View* v : {viewLogin, viewRegisterPhone, viewLoginPhone}) v->setHidden(false);
    viewLoginCode->setHidden(true);
    for (View* v : {viewLogin, viewRegisterPhone, viewLoginPhone, viewLoginCode}) v->setAlpha(1.0);
}

Json LoginViewController::countyIdByName(const QString& name) const { return lastIdNamed(arrCounties, name); }

void LoginViewController::registerFarmer() {
    service::ScreenCall call(this, QStringLiteral("farmer/register"), service::ScreenCall::WithHud);
    RegisterFarmerRequest request;
    request.doParam = QStringLiteral("farmer/register");
    request.email = txtMail->text();
    request.deviceID = storedText(StoreKey::NotifToken);
    request.countyID = countyIdByName(txtCounty->text());
    request.firstName = txtName->text();
    request.lastName = txtLastName->text();
    request.hashID = storedText(StoreKey::HashCode);
    // Each crop as it was entered, with its products reduced to their ids.
    QJsonArray fields;
    for (const auto& crop : std::as_const(arrFarms)) {
        QJsonObject field = crop.toObject();
        QJsonArray ids;
        const Json aps = member(crop, QStringLiteral("aps"));
        for (int i = 0, n = count(aps); i < n; ++i) ids.append(member(element(aps, i), QStringLiteral("id")));
        field.insert(QStringLiteral("aps"), ids);
        fields.append(field);
    }
    request.arrFields = fields;
    request.etkSmsPermission = m_consent->smsPermission();
    request.etkAdvPermission = m_consent->advPermission();
    request.etkEmailPermission = m_consent->emailPermission();
    auto self = strong(this);
    request.registerFarmer(
        call.done([self](const Json& response) {
            if (!statusIs(response, 200)) {
                // The data stays for another press; the hash goes again as it is.
                self->showAlert(QStringLiteral("Uyarı"), service::firstError(response));
                return;
            }
            self->enterApplication(member(response, QStringLiteral("data")));
        }),
        call.failed());
}

void LoginViewController::registerDealer() {
    service::ScreenCall call(this, QStringLiteral("dealer/register"), service::ScreenCall::WithHud);
    RegisterDealerRequest request;
    request.doParam = QStringLiteral("dealer/register");
    request.email = txtMail->text();
    request.deviceID = storedText(StoreKey::NotifToken);
    request.countyID = countyIdByName(txtCounty->text());
    request.firstName = txtName->text();
    request.lastName = txtLastName->text();
    request.etkSmsPermission = m_consent->smsPermission();
    request.etkAdvPermission = m_consent->advPermission();
    request.etkEmailPermission = m_consent->emailPermission();
    request.hashID = storedText(StoreKey::HashCode);
    request.dealerNumber = vergiNoText->text();
    request.dealerName = bayiAdiText->text();
    request.TCNo = tcKimlikText->text();
    auto self = strong(this);
    request.registerDealer(
        call.done([self](const Json& response) {
            if (!statusIs(response, 200)) {
                self->showAlert(QStringLiteral("Uyarı"), service::firstError(response));
                return;
            }
            // Not signed in: the company opens the account later. The next press leads back.
            self->activationLabel->setText(WaitingText);
            self->completeRegistrationButton->setTitle(BackTitle);
        }),
        call.failed());
}

// The crops ----------------------------------------------------------------------------------------

QString LoginViewController::productLines(const Json& aps, const QString& none) {
    QString lines;
    for (int i = 0, n = count(aps); i < n; ++i) lines += textOf(member(element(aps, i), QStringLiteral("name"))) + u'\n';
    lines = service::plainProductName(lines);
    if (lines.isEmpty()) return none;
    lines.chop(1);
    return lines;
}

int LoginViewController::numberOfItemsInSection(QObject* collection, int) {
    if (collection == collFarms) return arrFarms.size() == MaxCrops ? MaxCrops : int(arrFarms.size()) + 1;
    return 0;
}

QVariantMap LoginViewController::cellForItem(QObject* collection, int row) const {
    QVariantMap cell;
    if (collection != collFarms) return cell;
    if (row >= arrFarms.size()) {
        cell.insert(QStringLiteral("reuseIdentifier"), QStringLiteral("NewFarmCell"));
        return cell;
    }
    const Json crop = arrFarms.at(row);
    const Json name = member(crop, QStringLiteral("name"));
    cell.insert(QStringLiteral("reuseIdentifier"), QStringLiteral("FarmCell"));
    cell.insert(QStringLiteral("lblFarm"), name.isUndefined() ? QString() : textOf(name));
    cell.insert(QStringLiteral("lblFarmSize"), stringWithFormat(QStringLiteral("%@ dekar"), {member(crop, QStringLiteral("range"))}));
    cell.insert(QStringLiteral("lblProducts"), productLines(member(crop, QStringLiteral("aps")), NoProductsOnCard));
    return cell;
}

void LoginViewController::didSelectItem(QObject* collection, int row) {
    if (collection != collFarms) return;
    if (row >= arrFarms.size()) {
        m_cropEditor->openNewProduceView();
        return;
    }
    // The crop opens in the edit panel.
    selectedProduceID = row;
    const Json crop = arrFarms.at(row);
    const Json name = member(crop, QStringLiteral("name"));
    m_cropEditor->openCrop(name.isUndefined() ? QString() : textOf(name), textOf(member(crop, QStringLiteral("range"))),
                           productLines(member(crop, QStringLiteral("aps")), NoProducts));
}

QSizeF LoginViewController::sizeForItem(QObject* collection, int row, double frameWidth) const {
    if (collection == collFarms) return QSizeF(frameWidth - 32, row < arrFarms.size() ? 190 : 65);
    return QSizeF(frameWidth, 50);
}

double LoginViewController::minimumLineSpacing(QObject* collection) const { return collection == collFarms ? 16 : 1; }

double LoginViewController::minimumInteritemSpacing(QObject*) const { return 1; }

double LoginViewController::sectionInset(QObject* collection) const { return collection == collFarms ? 16 : 0; }

void LoginViewController::addCrop() {
    endEditing();
    const QString size = m_cropEditor->txtFarmSize->text();
    const QString plantText = m_cropEditor->lblFarm->text();
    QJsonObject crop{{QStringLiteral("range"), size}};
    const QJsonArray aps = m_cropEditor->chosenProducts();
    if (!aps.isEmpty()) crop.insert(QStringLiteral("aps"), aps);
    if (const Json plant = m_cropEditor->chosenPlant(); !plant.isUndefined()) {
        crop.insert(QStringLiteral("produceId"), member(plant, QStringLiteral("id")));
        crop.insert(QStringLiteral("name"), member(plant, QStringLiteral("name")));
    }

    QString problem;
    if (plantText == NoPlant || plantText.isEmpty()) problem = QStringLiteral("Ürün seçmediniz.");
    else if (size.isEmpty() || size == QStringLiteral("0")) problem = QStringLiteral("Tarla büyüklüğünü girmediniz.");
    else if (intValueOfString(size) >= 10001) problem = QStringLiteral("Tarla büyüklüğü 10000 dekardan büyük olamaz.");
    if (!problem.isEmpty()) {
        showAlert(QStringLiteral("Uyarı"), problem);
        return;
    }
    arrFarms.append(crop);
    m_cropEditor->removeNewProduceView();
    collFarms->reloadData();
}

void LoginViewController::updateCrop() {
    // Unlike adding, an update is not checked: an empty size, 0 or more than 10000 all pass.
    endEditing();
    QJsonObject crop{{QStringLiteral("range"), m_cropEditor->txtFarmSize->text()}};
    crop.insert(QStringLiteral("aps"), m_cropEditor->chosenProducts());
    // The crop kind goes under "id" here, and that is how an updated crop is sent.
    if (const Json plant = m_cropEditor->chosenPlant(); !plant.isUndefined()) {
        crop.insert(QStringLiteral("id"), member(plant, QStringLiteral("id")));
        crop.insert(QStringLiteral("name"), member(plant, QStringLiteral("name")));
    }
    if (selectedProduceID < 0 || selectedProduceID >= arrFarms.size())
        fatal(QStringLiteral("-[__NSArrayM replaceObjectAtIndex:withObject:]: index %1 beyond bounds").arg(selectedProduceID));
    arrFarms.replace(selectedProduceID, crop);
    m_cropEditor->removeNewProduceView();
    collFarms->reloadData();
}

void LoginViewController::deleteCrop() {
    endEditing();
    if (selectedProduceID < 0 || selectedProduceID >= arrFarms.size())
        fatal(QStringLiteral("-[__NSArrayM removeObjectsInRange:]: range {%1, 1} beyond bounds").arg(selectedProduceID));
    arrFarms.removeAt(selectedProduceID);
    m_cropEditor->removeNewProduceView();
    collFarms->reloadData();
}

// Consent ----------------------------------------------------------------------------------------

bool LoginViewController::decidePolicyForNavigationAction(WebView*, const QUrl& url, int navigationType) {
    const QString text = url.toString();
    if (navigationType != WebView::LinkActivated || !text.contains(QStringLiteral("mailto:"))) return true;
    Application& app = P().application();
    if (app.canOpenURL(QUrl(QStringLiteral("mailto:")))) {
        // Mail to the address alone, with the subject filled in and an empty body.
        QUrl mail(QStringLiteral("mailto:") + QString(text).remove(QStringLiteral("mailto:")));
        QUrlQuery query;
        query.addQueryItem(QStringLiteral("subject"), MailSubject);
        mail.setQuery(query);
        app.openURL(mail);
    } else {
        auto* alert = AlertController::alertControllerWithTitle(QStringLiteral("Uyarı"),
                                                                QStringLiteral("Mail hesabınız telefonunuza kurulu değildir."));
        alert->addAction(QStringLiteral("Tamam"));
        service::hudHost(this)->presentViewController(alert, true);
    }
    return false;
}

} // namespace ekinora::accounts
