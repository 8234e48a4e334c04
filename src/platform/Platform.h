#pragma once

#include "Application.h"
#include "HttpClient.h"
#include "NotificationCenter.h"
#include "PushService.h"
#include "Scheduler.h"
#include "UserDefaults.h"
#include "Window.h"

class QQmlEngine;

namespace ekinora::platform {

// The services a screen reaches as the original reached its platform's shared objects. One platform is
// current per process; tests make their own with a manual clock, a memory store and scripted replies.
class Platform : public QObject {
    Q_OBJECT
public:
    // Takes ownership of the parts. The engine may be null: then no view is ever made.
    Platform(Scheduler* scheduler, UserDefaults* defaults, HttpClient* http, PushService* push,
             QQmlEngine* engine = nullptr, QObject* parent = nullptr);
    ~Platform() override;

    static Platform& current();
    static bool exists();

    Scheduler& scheduler() const { return *m_scheduler; }
    UserDefaults& defaults() const { return *m_defaults; }
    NotificationCenter& notificationCenter() const { return *m_center; }
    HttpClient& http() const { return *m_http; }
    PushService& push() const { return *m_push; }
    Application& application() const { return *m_application; }
    Window& window() const { return *m_window; }
    QQmlEngine* qmlEngine() const { return m_engine; }

private:
    Application* m_application;
    Scheduler* m_scheduler;
    UserDefaults* m_defaults;
    NotificationCenter* m_center;
    HttpClient* m_http;
    PushService* m_push;
    QQmlEngine* m_engine;
    Window* m_window;
};

} // namespace ekinora::platform
