#include "RTCNetReachability.h"

#include <QCoreApplication>
#include <QNetworkInformation>

#include <QThread>

#include <atomic>
#include <mutex>

namespace ekinora::analytics {

namespace {

std::mutex g_mutex;
RTCNetReachability::Source g_source;

int platformStatus() {
    // The platform's backend belongs to the application's thread (it talks over D-Bus there); asked
    // first from a queue, it is loaded there in passing and the network counts as reachable meanwhile.
    static std::atomic<bool> requested{false};
    QCoreApplication* app = QCoreApplication::instance();
    if (app && !requested.exchange(true)) {
        auto load = [] { QNetworkInformation::loadDefaultBackend(); };
        if (QThread::currentThread() == app->thread()) load();
        else QMetaObject::invokeMethod(app, load, Qt::QueuedConnection);
    }
    const QNetworkInformation* info = QNetworkInformation::instance();
    if (!info) return RTCNetReachability::ReachableViaWiFi;
    switch (info->reachability()) {
    case QNetworkInformation::Reachability::Disconnected:
        return RTCNetReachability::NotReachable;
    case QNetworkInformation::Reachability::Local:
        return RTCNetReachability::LocalOnly;
    case QNetworkInformation::Reachability::Site:
    case QNetworkInformation::Reachability::Online:
    case QNetworkInformation::Reachability::Unknown:
        break;
    }
    return info->transportMedium() == QNetworkInformation::TransportMedium::Cellular
               ? RTCNetReachability::ReachableViaWWAN
               : RTCNetReachability::ReachableViaWiFi;
}

} // namespace

void RTCNetReachability::setSource(Source source) {
    std::lock_guard guard(g_mutex);
    g_source = std::move(source);
}

int RTCNetReachability::currentStatus() {
    Source source;
    {
        std::lock_guard guard(g_mutex);
        source = g_source;
    }
    return source ? source() : platformStatus();
}

RTCNetReachability::RTCNetReachability(QObject* context)
    : m_context(context), m_live(std::make_shared<std::atomic<bool>>(false)) {}

RTCNetReachability::~RTCNetReachability() {
    stop();
}

void RTCNetReachability::start(std::function<void(int)> callback) {
    stop();
    m_live = std::make_shared<std::atomic<bool>>(true);
    QMetaObject::invokeMethod(
        m_context,
        [live = m_live, callback = std::move(callback)] {
            const int status = currentStatus();
            if (live->exchange(false)) callback(status);
        },
        Qt::QueuedConnection);
}

void RTCNetReachability::stop() {
    *m_live = false;
}

} // namespace ekinora::analytics
