#include "LoginViewController.h"

#include "SmsRequest.h"
#include "farms/FarmerProductRequest.h"
#include "platform/AlertController.h"
#include "platform/NavigationController.h"
#include "platform/Overlays.h"
#include "platform/Platform.h"
#include "platform/SideMenuViewController.h"
#include "platform/Storyboard.h"
#include "service/LocalStore.h"
#include "service/TextHelpers.h"
#include "service/WSRequest.h"

namespace ekinora::accounts {

using namespace platform;
using service::LocalStore;
namespace StoreKey = service::StoreKey;

namespace {

Platform& P() { return Platform::current(); }
void log(const QString& line) { P().application().log(line); }

bool statusIs(const Json& response, int status) { return intValue(member(response, QStringLiteral("status"))) == status; }

// addObjectsFromArray: every element of a list, nothing for nil.
void appendAll(QJsonArray& list, const Json& values) {
    for (int i = 0, n = count(values); i < n; ++i) list.append(element(values, i));
}

// The first value of the reply's "errors" dictionary, as an alert shows it.
QString firstError(const Json& response) {
    const Json errors = member(response, QStringLiteral("errors"));
    if (errors.isUndefined()) return QString();
    if (!errors.isObject())
        fatal(QStringLiteral("-[%1 allValues]: unrecognized selector sent to instance").arg(errors.isNull() ? "NSNull" : "__NSCFObject"));
    const QJsonObject o = errors.toObject();
    if (o.isEmpty()) return QString();
    const Json first = o.begin().value();
    return first.isString() ? first.toString() : description(first);
}

// The wrap a page text goes into, with no style and no base address.
QString wrapped(const Json& fragment) {
    return stringWithFormat(QStringLiteral("<html><head></head><body>%@</body></html>"), {fragment});
}

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
      viewRegisterFinal(makeControl<View>("viewRegisterFinal")), viewKVKK(makeControl<View>("viewKVKK")),
      viewETK(makeControl<View>("viewETK")), viewETKWeb(makeControl<View>("viewETKWeb")),
      viewNewProduce(makeControl<View>("viewNewProduce")), viewPlant(makeControl<View>("viewPlant")),
      viewProduct(makeControl<View>("viewProduct")), txtLoginPhone(makeControl<TextField>("txtLoginPhone")),
      txtLoginPhoneCode(makeControl<TextField>("txtLoginPhoneCode")), txtLoginCode(makeControl<TextField>("txtLoginCode")),
      txtRegisterPhone(makeControl<TextField>("txtRegisterPhone")),
      txtRegisterPhoneCode(makeControl<TextField>("txtRegisterPhoneCode")),
      txtRegisterCode(makeControl<TextField>("txtRegisterCode")), farmerButton(makeControl<Button>("farmerButton")),
      dealerButton(makeControl<Button>("dealerButton")), devamButton(makeControl<Button>("devamButton")),
      completeRegistrationButton(makeControl<Button>("completeRegistrationButton")),
      btn1Enb(makeControl<Button>("btn1Enb")), btn2Enb(makeControl<Button>("btn2Enb")), btn3Enb(makeControl<Button>("btn3Enb")),
      activationLabel(makeControl<Label>("activationLabel")), webKVKK(makeControl<WebView>("webKVKK")),
      webviewETK(makeControl<WebView>("webviewETK")) {
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
}

QUrl LoginViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/ekinora/accounts/LoginView.qml")); }

ViewController* LoginViewController::hudHost() {
    if (NavigationController* nav = navigationController()) return nav;
    return this;
}

void LoginViewController::showAlert(const QString& title, const QString& message, int style) {
    auto* alert = AlertController::alertControllerWithTitle(title, message);
    alert->addAction(QStringLiteral("Tamam"), AlertController::ActionStyle(style));
    presentViewController(alert, true);
}

void LoginViewController::viewDidLoad() {
    // 1. The one-time-code content type was handed to the wrong setter of the wrong field; it changes
    //    nothing for the user, so nothing is set here.
    // 2.
    webKVKK->setDidFinishNavigation([](WebView* web) {
        // The conditions are as wide as the view: no sideways scrolling.
        web->evaluateJavaScript(QStringLiteral("document.body.style.overflowX = 'hidden';"));
    });
    webviewETK->setDidFinishNavigation([](WebView*) {});
    btn1Enb->setEnabled(false);
    btn2Enb->setEnabled(false);
    btn3Enb->setEnabled(false);
    if (NavigationController* nav = navigationController()) nav->setNavigationBarHidden(true);
    // 3.
    arrCities = QJsonArray();
    arrCounties = QJsonArray();
    // 4.
    viewKVKK->setHidden(true);
    viewETK->setHidden(true);
    viewETKWeb->setHidden(true);
    loadWebviewETK();
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
    // 7.
    arrFarms = QJsonArray();
    arrPlants = QJsonArray();
    arrProducts = QJsonArray();
    arrSelectedProducts.clear();
    selectedPlantIndex = -1;
    getPlants();
    getProducts();
    viewNewProduce->setHidden(true);
    viewPlant->setHidden(true);
    viewProduct->setHidden(true);
    // 8.
    getInfo();
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
            self->arrCities = QJsonArray();
            appendAll(self->arrCities, path(response, {QStringLiteral("data"), QStringLiteral("cities")}));
        },
        [](const Json& error) { log(QStringLiteral("getCities: %1").arg(description(error))); });
}

void LoginViewController::getPlants() {
    farms::FarmerProductRequest request;
    request.doParam = QStringLiteral("produces");
    auto self = strong(this);
    request.requestData(
        [self](const Json& response) {
            self->arrPlants = QJsonArray();
            appendAll(self->arrPlants, path(response, {QStringLiteral("data"), QStringLiteral("produces")}));
        },
        [](const Json& error) { log(QStringLiteral("getPlants: %1").arg(description(error))); });
}

void LoginViewController::getProducts() {
    farms::FarmerProductRequest request;
    request.doParam = QStringLiteral("produce/aps");
    auto self = strong(this);
    request.requestData(
        [self](const Json& response) {
            const Json aps = path(response, {QStringLiteral("data"), QStringLiteral("aps")});
            QJsonArray products;
            for (int i = 0, n = count(aps); i < n; ++i) {
                QJsonObject product = element(aps, i).toObject();
                product.insert(QStringLiteral("name"),
                               service::plainProductName(stringOrNull(product.value(QStringLiteral("name")))));
                products.append(product);
            }
            self->arrProducts = products;
        },
        [](const Json& error) { log(QStringLiteral("getProducts: %1").arg(description(error))); });
}

void LoginViewController::getInfo() {
    QPointer<ProgressHUD> hud = ProgressHUD::showHUDAddedTo(hudHost(), true);
    service::WSRequest request;
    request.doParam = QStringLiteral("page/detail");
    request.slugName = QStringLiteral("conditions-of-use");
    auto self = strong(this);
    request.requestData(
        [self, hud](const Json& response) {
            self->webKVKK->loadHTMLString(wrapped(path(response, {QStringLiteral("data"), QStringLiteral("page"), QStringLiteral("text")})));
            if (hud) hud->hideAnimated(true, 1.0);
        },
        [hud](const Json& error) {
            log(QStringLiteral("getInfo: %1").arg(description(error)));
            if (hud) hud->hideAnimated(true);
        });
}

void LoginViewController::loadWebviewETK() {
    service::WSRequest request;
    request.doParam = QStringLiteral("page/detail");
    request.slugName = QStringLiteral("kvkk");
    auto self = strong(this);
    request.requestData(
        [self](const Json& response) {
            self->webviewETK->loadHTMLString(wrapped(path(response, {QStringLiteral("data"), QStringLiteral("page"), QStringLiteral("text")})));
        },
        [](const Json& error) { log(QStringLiteral("loadWebviewETK: %1").arg(description(error))); });
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
    QPointer<ProgressHUD> hud = ProgressHUD::showHUDAddedTo(hudHost(), true);
    SmsRequest request;
    request.doParam = QStringLiteral("sms/get");
    request.phoneNumber = txtLoginPhone->text();
    auto self = strong(this);
    request.getSmsCode(
        [self, hud](const Json& response) {
            if (hud) hud->hideAnimated(true);
            if (!statusIs(response, 200)) {
                self->showAlert(QStringLiteral("Uyarı"), firstError(response));
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
        },
        [hud](const Json& error) {
            log(QStringLiteral("sms/get: %1").arg(description(error)));
            if (hud) hud->hideAnimated(true);
        });
}

void LoginViewController::validateSmsCodeForLogin(QObject* sender) {
    if (txtLoginCode->text().isEmpty()) {
        showAlert(QStringLiteral("Hata"), QStringLiteral("Sms kodunu giriniz"));
        return;
    }
    QPointer<ProgressHUD> hud = ProgressHUD::showHUDAddedTo(hudHost(), true);
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
        [self, hud, from](const Json& response) {
            if (hud) hud->hideAnimated(true);
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
        },
        [hud](const Json& error) {
            log(QStringLiteral("validateSmsCode: %1").arg(description(error)));
            if (hud) hud->hideAnimated(true);
        });
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
    for (View* v : {viewKVKK, viewLogout, viewLogin, viewRegisterFarm, viewRegisterInfo, viewRegisterActivation, memberShipView})
        v->setHidden(true);
    viewRegister->setHidden(false);
    viewRegisterFinal->setHidden(false);
    txtLoginCode->setText(QString());
    txtLoginPhone->setText(QString());
    txtLoginPhoneCode->setText(QString());
    completeRegistrationButton->setTitle(QStringLiteral("Geriye Dön"));
    activationLabel->setText(QStringLiteral("Kayıt işleminiz başarıyla gerçekleştirildi. Hesabınız aktif edildiğinde sisteme giriş yapabilirsiniz"));
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

} // namespace ekinora::accounts
