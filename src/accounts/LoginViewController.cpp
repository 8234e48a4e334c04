#include "LoginViewController.h"

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

#include <QUrlQuery>

namespace ekinora::accounts {

using namespace platform;
using service::LocalStore;
namespace StoreKey = service::StoreKey;

namespace {

Platform& P() { return Platform::current(); }
void log(const QString& line) { P().application().log(line); }

bool statusIs(const Json& response, int status) { return intValue(member(response, QStringLiteral("status"))) == status; }

const QString MailSubject = QStringLiteral("Ekinora - Kişisel Verilerin Korunması ve İşlenmesi Hakkında");

const QStringList PhoneFields{QStringLiteral("txtLoginPhone"), QStringLiteral("txtLoginPhoneCode"),
                              QStringLiteral("txtRegisterPhone"), QStringLiteral("txtRegisterPhoneCode")};

} // namespace

LoginViewController::LoginViewController(QObject* parent)
    : ViewController(parent), viewLogin(makeControl<View>("viewLogin")), viewLoginPhone(makeControl<View>("viewLoginPhone")),
      viewLoginCode(makeControl<View>("viewLoginCode")), viewLogout(makeControl<View>("viewLogout")),
      viewRegister(makeControl<View>("viewRegister")), viewRegisterPhone(makeControl<View>("viewRegisterPhone")),
      viewRegisterCode(makeControl<View>("viewRegisterCode")), txtLoginPhone(makeControl<TextField>("txtLoginPhone")),
      txtLoginPhoneCode(makeControl<TextField>("txtLoginPhoneCode")), txtLoginCode(makeControl<TextField>("txtLoginCode")),
      txtRegisterPhone(makeControl<TextField>("txtRegisterPhone")),
      txtRegisterPhoneCode(makeControl<TextField>("txtRegisterPhoneCode")),
      txtRegisterCode(makeControl<TextField>("txtRegisterCode")) {
    for (TextField* field : {txtLoginPhone, txtLoginPhoneCode, txtLoginCode, txtRegisterPhone, txtRegisterPhoneCode, txtRegisterCode}) {
        field->setShouldChange([this](TextField* f, int location, int length, const QString& replacement) {
            return textFieldShouldChangeCharacters(f, location, length, replacement);
        });
        field->setShouldReturn([this](TextField* f) { return textFieldShouldReturn(f); });
    }
    for (TextField* phone : {txtLoginPhone, txtLoginPhoneCode, txtRegisterPhone, txtRegisterPhoneCode}) phone->setKeyboardType(5);
    txtLoginCode->setKeyboardType(4);
    txtRegisterCode->setKeyboardType(4);

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

    RegistrationPolicy registration;
    registration.consent = m_consent;
    registration.signIn = [this](const Json& user) { enterApplication(user); };
    registration.backToLogin = [this] { backToLogin(); };
    m_wizard = new RegistrationWizard(std::move(registration), this);
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
    embed(m_wizard, "registrationSlot");
    embed(m_wizard->cropEditor(), "cropEditorSlot");
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
    // 4.
    m_consent->hidePages();
    m_consent->loadWebviewETK();
    // 5.
    for (View* v : {viewLogin, viewRegister, viewRegisterPhone, viewLoginPhone, viewLoginCode}) v->setAlpha(1.0);
    viewLogin->setHidden(false);
    viewRegister->setHidden(true);
    viewRegisterPhone->setHidden(false);
    viewLoginPhone->setHidden(false);
    viewLoginCode->setHidden(true);
    // 3., 6. and 7.: the wizard's lists, the city list first; its role choice shows.
    m_wizard->load();
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
    for (View* v : {m_consent->viewKVKK, viewLogout, viewLogin}) v->setHidden(true);
    viewRegister->setHidden(false);
    txtLoginCode->setText(QString());
    txtLoginPhone->setText(QString());
    txtLoginPhoneCode->setText(QString());
    m_wizard->showActivationPending();
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
            self->m_wizard->viewRegisterActivation->setHidden(true);
            self->m_wizard->viewRegisterInfo->setHidden(false);
        },
        [](const Json& error) { log(QStringLiteral("sms/check: %1").arg(description(error))); });
}

void LoginViewController::loginBack(QObject*) { viewLogout->setHidden(true); }

void LoginViewController::openRegisterView(QObject*) {
    endEditing();
    viewRegister->setHidden(false);
    for (View* v : {viewRegisterCode, viewLogin}) v->setHidden(true);
    m_wizard->open();
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
