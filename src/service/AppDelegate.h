#pragma once

#include "platform/Foundation.h"
#include "platform/Scheduler.h"

#include <QByteArray>
#include <QJsonObject>
#include <QObject>
#include <QPointer>

namespace ekinora::service {

// The application's delegate: the order of things at start, the popup poll, both maintenance checks,
// the update prompt, push registration, and what is announced on activation and on a push.
class AppDelegate : public QObject {
    Q_OBJECT
public:
    explicit AppDelegate(QObject* parent = nullptr);

    // application:didFinishLaunchingWithOptions:
    bool didFinishLaunching();
    // application:supportedInterfaceOrientationsForWindow:
    int supportedInterfaceOrientationsForWindow() const;

    bool restrictRotation = false;
    QPointer<QObject> tagManager;
    QPointer<QObject> container;
    platform::Scheduler::Id timerPopup = 0;

    // The device token as 64 lower-case hexadecimal digits: its first 32 bytes as eight big-endian words.
    static QString tokenText(const QByteArray& deviceToken);

public slots:
    void applicationWillEnterForeground();
    void applicationDidBecomeActive();
    void applicationWillResignActive() {}
    void applicationDidEnterBackground() {}
    void applicationWillTerminate() {}

    void didRegisterUserNotificationSettings(int types);
    void didRegisterForRemoteNotificationsWithDeviceToken(const QByteArray& deviceToken);
    void didFailToRegisterForRemoteNotificationsWithError(const QString& error);
    void didReceiveRemoteNotification(const QJsonObject& payload);

    void callRegisterPush();
    void showPopup();
    void checkMaintenance();
    void checkMaintenanceStatus();
    void checkLightBox();
    void containerAvailable(QObject* container);

private:
    void stampVersion();
    void showMaintenanceAlert(const QString& message, int exitCode);
};

} // namespace ekinora::service
