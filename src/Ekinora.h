#pragma once

#include <QObject>
#include <QString>

namespace ekinora::platform {
class Platform;
class HttpClient;
class Scheduler;
class PushService;
} // namespace ekinora::platform

namespace ekinora::service {
class AppDelegate;
}

namespace ekinora {

struct StartOptions {
    QString serviceBase;  // empty: the default roots
    QString settingsDir;  // where store.ini lives
    bool withWindow = true;
    // Replacements for tests; null means the real ones.
    platform::HttpClient* http = nullptr;
    platform::Scheduler* scheduler = nullptr;
    platform::PushService* push = nullptr;
};

// The application as a library: builds the platform, registers the screens, makes the root controller
// from the storyboard and runs the application delegate's start. A QGuiApplication must exist.
class Ekinora : public QObject {
    Q_OBJECT
public:
    explicit Ekinora(const StartOptions& options, QObject* parent = nullptr);
    ~Ekinora() override;

    bool start();
    platform::Platform& platform() const { return *m_platform; }
    service::AppDelegate& delegate() const { return *m_delegate; }

    static void registerScreens();
    static QString version();

private:
    void watchApplicationState();
    platform::Platform* m_platform = nullptr;
    service::AppDelegate* m_delegate = nullptr;
    int m_lastState = -1;
};

} // namespace ekinora
