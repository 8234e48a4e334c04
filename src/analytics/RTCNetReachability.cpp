#include "RTCNetReachability.h"

#include <QCoreApplication>
#include <QNetworkInformation>

#include <mutex>

namespace ekinora::analytics {

namespace {

std::mutex g_mutex;
RTCNetReachability::Source g_source;

int platformStatus() {
    static std::once_flag loaded;
    std::call_once(loaded, [] {
        if (QCoreApplication::instance()) QNetworkInformation::loadDefaultBackend();
    });
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
