#include "Ekinora.h"

#include "accounts/AccountsScreens.h"
#include "catalogue/CatalogueScreens.h"
#include "seeds/SeedScreens.h"
#include "contests/ContestsScreens.h"
#include "conversations/ConversationsScreens.h"
#include "events/EventsScreens.h"
#include "farms/CalendarScreens.h"
#include "farms/FarmsScreens.h"
#include "grants/GrantsScreens.h"
#include "home/HomeScreens.h"
#include "market/MarketScreens.h"
#include "info/InfoScreens.h"
#include "loyalty/LoyaltyScreens.h"
#include "news/NewsScreens.h"
#include "notifications/NotificationsScreens.h"
#include "platform/NetworkAccess.h"
#include "platform/Platform.h"
#include "profile/ProfileScreens.h"
#include "sale/SaleScreens.h"
#include "platform/Storyboard.h"
#include "service/AppDelegate.h"
#include "service/ServiceRoots.h"
#include "shell/PendingViewController.h"
#include "shell/ShellScreens.h"
#include "weather/WeatherScreens.h"
#include "videos/VideosScreens.h"

#include <QDesktopServices>
#include <QDir>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickStyle>
#include <QTimer>

namespace ekinora {

using namespace platform;

QString Ekinora::version() { return QStringLiteral(EKINORA_VERSION); }

void Ekinora::registerScreens() {
    shell::registerScreens();
    accounts::registerScreens();
    home::registerScreens();
    farms::registerScreens();
    farms::registerCalendarScreens();
    notifications::registerScreens();
    catalogue::registerScreens();
    seeds::registerScreens();
    contests::registerScreens();
    conversations::registerScreens();
    grants::registerScreens();
    market::registerScreens();
    weather::registerScreens();
    profile::registerScreens();
    news::registerScreens();
    events::registerScreens();
    videos::registerScreens();
    info::registerScreens();
    loyalty::registerScreens();
    sale::registerScreens();
    // Main screens still to come stand as pages with their menu label.
    shell::registerPendingScreens();
}

Ekinora::Ekinora(const StartOptions& options, QObject* parent) : QObject(parent) {
    if (!options.serviceBase.isEmpty()) service::Roots::configure(options.serviceBase);

    QQmlEngine* engine = nullptr;
    if (options.withWindow) {
        static const bool styled = [] {
            QQuickStyle::setStyle(QStringLiteral("Material"));
            return true;
        }();
        Q_UNUSED(styled);
        for (const char* font : {":/ekinora/fonts/DejaVuSans.ttf", ":/ekinora/fonts/DejaVuSans-Bold.ttf"})
            QFontDatabase::addApplicationFont(QString::fromLatin1(font));
        QFont font(QStringLiteral("DejaVu Sans"));
        font.setPixelSize(15);
        QGuiApplication::setFont(font);
        engine = new QQmlEngine;
        static platform::ViewNetworkAccessFactory viewNetwork;
        engine->setNetworkAccessManagerFactory(&viewNetwork);
    }
    QString dir = options.settingsDir;
    if (dir.isEmpty()) dir = QDir::homePath() + QStringLiteral("/.config/ekinora");
    QDir().mkpath(dir);
    auto* defaults = new UserDefaults(QDir(dir).filePath(QStringLiteral("store.ini")));
    auto* http = options.http ? options.http : new QtHttpClient;
    auto* scheduler = options.scheduler ? options.scheduler : new SystemScheduler;
    auto* push = options.push ? options.push : new PushService;
    m_platform = new Platform(scheduler, defaults, http, push, engine, this);
    m_platform->application().setBundleShortVersion(version());
    m_platform->application().setUrlOpener([](const QUrl& url) { return QDesktopServices::openUrl(url); });
    registerScreens();
    m_delegate = new service::AppDelegate(this);
}

Ekinora::~Ekinora() {
    delete m_delegate;
    delete m_platform;
}

bool Ekinora::start() {
    // The storyboard makes the root before the delegate starts.
    ViewController* root = Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("RootViewController"));
    m_platform->window().setRootViewController(root);
    const bool ok = m_delegate->didFinishLaunching();
    watchApplicationState();
    return ok;
}

void Ekinora::watchApplicationState() {
    // Activation also follows a cold start.
    QTimer::singleShot(0, m_delegate, [this] {
        m_lastState = Qt::ApplicationActive;
        m_delegate->applicationDidBecomeActive();
    });
    if (auto* app = qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
        connect(app, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
            if (m_lastState < 0 || state == m_lastState) return;
            const bool wasAway = m_lastState == Qt::ApplicationHidden || m_lastState == Qt::ApplicationSuspended;
            if (wasAway && state != Qt::ApplicationHidden && state != Qt::ApplicationSuspended)
                m_delegate->applicationWillEnterForeground();
            if (state == Qt::ApplicationActive) m_delegate->applicationDidBecomeActive();
            else if (state == Qt::ApplicationInactive) m_delegate->applicationWillResignActive();
            else m_delegate->applicationDidEnterBackground();
            m_lastState = state;
        });
    }
}

} // namespace ekinora
