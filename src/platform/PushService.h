#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QObject>

namespace ekinora::platform {

// Remote notifications. The phone platforms deliver a device token and pushes; the desktop has none, so
// its registration fails, which the application tolerates. Tests emit the signals themselves.
class PushService : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    virtual bool supportsUserNotificationSettings() const { return true; }
    virtual void registerUserNotificationSettings(int types);
    virtual void registerForRemoteNotifications();

signals:
    void didRegisterUserNotificationSettings(int types);
    void didRegisterForRemoteNotificationsWithDeviceToken(const QByteArray& token);
    void didFailToRegisterForRemoteNotificationsWithError(const QString& error);
    void didReceiveRemoteNotification(const QJsonObject& payload);
};

} // namespace ekinora::platform
