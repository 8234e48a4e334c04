#include "Platform.h"

#include <QCoreApplication>
#include "Seams.h"

#include <QQmlContext>
#include <QQmlEngine>

namespace ekinora::platform {

namespace {
Platform* g_current = nullptr;
}

Platform::Platform(Scheduler* scheduler, UserDefaults* defaults, HttpClient* http, PushService* push,
                   QQmlEngine* engine, QObject* parent)
    : QObject(parent), m_application(new Application(this)), m_scheduler(scheduler), m_defaults(defaults),
      m_center(new NotificationCenter(this)), m_http(http), m_push(push), m_engine(engine),
      m_window(new Window(this)) {
    for (QObject* part : {static_cast<QObject*>(scheduler), static_cast<QObject*>(defaults),
                          static_cast<QObject*>(http), static_cast<QObject*>(push)})
        part->setParent(this);
    m_application->setKeyWindow(m_window);
    m_application->setBeforeEnding([this] { m_defaults->synchronize(); });
    if (m_engine) m_engine->addImportPath(QStringLiteral("qrc:/qt/qml"));
    g_current = this;
}

Platform::~Platform() {
    // Screens go before the services they use; the engine after the items it made.
    delete m_window;
    m_window = nullptr;
    // A container's screens are released as it goes, so their deletion comes one pass later.
    for (int pass = 0; pass < 8; ++pass) QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    delete m_engine;
    if (g_current == this) g_current = nullptr;
}

Platform& Platform::current() {
    Q_ASSERT(g_current);
    return *g_current;
}

bool Platform::exists() { return g_current != nullptr; }

} // namespace ekinora::platform
