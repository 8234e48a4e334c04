#include "AppDelegate.h"

#include "LocalStore.h"
#include "UpdateCheck.h"
#include "WSRequest.h"
#include "platform/AlertController.h"
#include "platform/Platform.h"
#include "platform/Seams.h"
#include "platform/Storyboard.h"
#include "platform/ViewController.h"

#include <QTimer>

namespace ekinora::service {

using namespace platform;

namespace {
Platform& P() { return Platform::current(); }
ViewController* rootViewController() { return P().window().rootViewController(); }
} // namespace

AppDelegate::AppDelegate(QObject* parent) : QObject(parent) {
    PushService& push = P().push();
    connect(&push, &PushService::didRegisterUserNotificationSettings, this, &AppDelegate::didRegisterUserNotificationSettings);
    connect(&push, &PushService::didRegisterForRemoteNotificationsWithDeviceToken, this,
            &AppDelegate::didRegisterForRemoteNotificationsWithDeviceToken);
    connect(&push, &PushService::didFailToRegisterForRemoteNotificationsWithError, this,
            &AppDelegate::didFailToRegisterForRemoteNotificationsWithError);
    connect(&push, &PushService::didReceiveRemoteNotification, this, &AppDelegate::didReceiveRemoteNotification);
    P().application().setOrientationSource([this] { return supportedInterfaceOrientationsForWindow(); });
}

bool AppDelegate::didFinishLaunching() {
    UserDefaults& store = P().defaults();
    // 1. The window shows the root controller, whose first screen sends its own first requests.
    P().window().makeKeyAndVisible();
    // 2. The update prompt: forced for minor and major versions, optional for a patch.
    UpdateCheck& harpy = UpdateCheck::sharedInstance();
    harpy.setPresentingViewController(rootViewController());
    harpy.setMinorUpdateAlertType(UpdateCheck::Force);
    harpy.setMajorUpdateAlertType(UpdateCheck::Force);
    harpy.setPatchUpdateAlertType(UpdateCheck::Option);
    harpy.setDebugEnabled(false);
    harpy.setDelegate(this);
    // 3.
    MeasurementApp::configure();
    // 4.
    restrictRotation = true;
    // 5.
    KeyboardManager::sharedManager().setEnable(true);
    // 6. Flat bars with a grey medium title; the device turned to portrait.
    NavigationBarAppearance& bar = NavigationBarAppearance::shared();
    bar.plainBackground = true;
    bar.deviceOrientation = 1;
    bar.titleColor = QColor::fromRgbF(0.2f, 0.2f, 0.2f);
    bar.titleFontFamily = QStringLiteral("AvenirNext-Medium");
    bar.titleFontSize = 18;
    bar.tintColor = QColor::fromRgbF(0.2f, 0.2f, 0.2f);
    bar.apply();
    // 7.
    store.removeObjectForKey(StoreKey::IsLogout);
    // 8.
    if (!store.contains(StoreKey::WeatherKeys)) store.setJson(StoreKey::WeatherKeys, LocalStore::defaultWeatherKeys());
    // 9.
    store.synchronize();
    // 10.
    P().scheduler().after(1000, [this] { callRegisterPush(); });
    // 11.
    P().application().setApplicationIconBadgeNumber(0);
    // 12. The popup poll runs for the life of the process.
    timerPopup = P().scheduler().every(10000, [this] { showPopup(); });
    // 13.
    P().scheduler().after(2000, [this] { checkMaintenanceStatus(); });
    // 14.
    stampVersion();
    // 15.
    checkLightBox();
    // 16.
    checkMaintenance();
    // 17.
    return true;
}

void AppDelegate::stampVersion() {
    UserDefaults& store = P().defaults();
    const QString version = P().application().bundleShortVersion();
    const QString stored = store.stringForKey(StoreKey::AppVersion);
    if (stored.isNull()) {
        store.setString(StoreKey::MenuItemCounter, formatDate(P().scheduler().now(), QStringLiteral("yyyy-MM-dd HH:mm:ss")));
        store.setString(StoreKey::AppVersion, version);
        store.synchronize();
    } else if (stored != version) {
        store.setString(StoreKey::AppVersion, version);
        store.synchronize();
    }
}

int AppDelegate::supportedInterfaceOrientationsForWindow() const {
    return restrictRotation ? Application::OrientationMaskPortrait : Application::OrientationMaskAll;
}

void AppDelegate::checkLightBox() { LocalStore::stepLibStatAtStart(); }

void AppDelegate::showMaintenanceAlert(const QString& message, int exitCode) {
    auto* alert = AlertController::alertControllerWithTitle(QStringLiteral("Bilgilendirme"), message);
    alert->addAction(QStringLiteral("Tamam"), AlertController::Default, [exitCode] {
        P().application().terminate(exitCode, QStringLiteral("maintenance"));
    });
    if (ViewController* root = rootViewController()) root->presentViewController(alert, true);
}

void AppDelegate::checkMaintenance() {
    MaintenanceRequest request;
    request.doParam = QStringLiteral("maintenance");
    request.checkMaintenance(
        [this](const Json& response) {
            if (intValue(member(response, QStringLiteral("status"))) == 200 &&
                boolValue(path(response, {QStringLiteral("data"), QStringLiteral("maintenance")})))
                showMaintenanceAlert(stringOrNull(path(response, {QStringLiteral("message"), QStringLiteral("text")})), 0);
        },
        [](const Json&) {});
}

void AppDelegate::checkMaintenanceStatus() {
    UpdateCheck::sharedInstance().checkVersion();
    MaintenanceModeRequest request;
    request.checkMaintenance(
        [this](const Json& response) {
            if (!boolValue(member(response, QStringLiteral("status"))))
                showMaintenanceAlert(stringOrNull(member(response, QStringLiteral("message"))), 2);
        },
        [](const Json&) {});
}

void AppDelegate::showPopup() {
    if (LocalStore::userInfo().isUndefined()) return;
    WSRequest request;
    request.doParam = QStringLiteral("popup");
    request.requestData(
        [](const Json& response) {
            const Json data = member(response, QStringLiteral("data"));
            if (data.isNull()) return;
            const Json popup = member(data, QStringLiteral("popup"));
            if (popup.isNull()) return;
            ViewController* controller = Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("PopupViewController"));
            if (!controller) return;
            controller->modalPresentationStyle = 5;
            controller->modalTransitionStyle = 2;
            controller->setProperty("dictPopup", QVariant::fromValue(popup));
            if (ViewController* root = rootViewController()) root->presentViewController(controller, true);
        },
        [](const Json&) {});
}

void AppDelegate::callRegisterPush() {
    PushService& push = P().push();
    if (push.supportsUserNotificationSettings()) push.registerUserNotificationSettings(7);
}

void AppDelegate::didRegisterUserNotificationSettings(int) { P().push().registerForRemoteNotifications(); }

QString AppDelegate::tokenText(const QByteArray& deviceToken) {
    QByteArray bytes = deviceToken.left(32);
    bytes.append(QByteArray(32 - bytes.size(), '\0'));
    QString text;
    for (int word = 0; word < 8; ++word) {
        quint32 value = 0;
        for (int i = 0; i < 4; ++i) value = (value << 8) | quint8(bytes[word * 4 + i]);
        text += stringWithFormat(QStringLiteral("%08x"), {qint64(value)});
    }
    return text;
}

void AppDelegate::didRegisterForRemoteNotificationsWithDeviceToken(const QByteArray& deviceToken) {
    const QString token = tokenText(deviceToken);
    P().application().log(stringWithFormat(QStringLiteral("notificationToken %@"), {token}));
    P().defaults().setString(StoreKey::NotifToken, token);
    P().defaults().synchronize();
}

void AppDelegate::didFailToRegisterForRemoteNotificationsWithError(const QString& error) {
    P().application().log(stringWithFormat(QStringLiteral("Fail remote notification err :%@"), {error}));
}

void AppDelegate::didReceiveRemoteNotification(const QJsonObject& payload) {
    P().application().log(stringWithFormat(QStringLiteral("yesssss %@"), {Json(payload)}));
    P().application().setApplicationIconBadgeNumber(0);
    NotificationCenter& center = P().notificationCenter();
    center.postNotificationName(QStringLiteral("checkUnreadMessages"), this);
    center.postNotificationName(QStringLiteral("refreshMessages"), this);
    center.postNotificationName(QStringLiteral("checkNotifBadge"), this);
}

void AppDelegate::applicationWillEnterForeground() { UpdateCheck::sharedInstance().checkVersion(); }

void AppDelegate::applicationDidBecomeActive() {
    P().notificationCenter().postNotificationName(QStringLiteral("checkUnreadMessages"), this);
    P().notificationCenter().postNotificationName(QStringLiteral("refreshMessages"), this);
}

void AppDelegate::containerAvailable(QObject* c) {
    QPointer<QObject> target(c);
    QTimer::singleShot(0, this, [this, target] { container = target; });
}

} // namespace ekinora::service
