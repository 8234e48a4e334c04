#include "RAITrackerImpl.h"

#include "Log.h"
#include "RAIBatchingDispatcher.h"

namespace ekinora::analytics {

void RAIModel::set(const QString& key, const QString& value) {
    m_standing.insert(key, value);
}

void RAIModel::setOnce(const QString& key, const QString& value) {
    m_once.insert(key, value);
}

QString RAIModel::get(const QString& key) const {
    return m_once.contains(key) ? m_once.value(key) : m_standing.value(key);
}

void RAIModel::remove(const QString& key) {
    m_standing.remove(key);
    m_once.remove(key);
}

Parameters RAIModel::takeParametersMergedWith(const Parameters& parameters) {
    Parameters merged = m_standing;
    for (auto it = m_once.begin(); it != m_once.end(); ++it) merged.insert(it.key(), it.value());
    for (auto it = parameters.begin(); it != parameters.end(); ++it) merged.insert(it.key(), it.value());
    m_once.clear();
    return merged;
}

void RAIModel::willSendScreenView(const Parameters& parameters) {
    const QString screen = parameters.value(QStringLiteral("&cd"));
    if (!screen.isEmpty()) m_standing.insert(QStringLiteral("&cd"), screen);
}

RAITrackerImpl::RAITrackerImpl(const QString& trackingId, const QString& clientId, RAIBatchingDispatcher* dispatcher,
                               std::shared_ptr<Clock> clock)
    : m_dispatcher(dispatcher), m_clock(std::move(clock)) {
    m_model.set(QStringLiteral("&tid"), trackingId);
    m_model.set(QStringLiteral("&cid"), clientId);
    m_model.set(QStringLiteral("&v"), QStringLiteral("1"));
}

void RAITrackerImpl::set(const QString& key, const QString& value) {
    std::lock_guard guard(m_mutex);
    noteUsage(UsageSet);
    m_model.set(key, value);
}

QString RAITrackerImpl::get(const QString& key) {
    std::lock_guard guard(m_mutex);
    noteUsage(UsageGet);
    return m_model.get(key);
}

void RAITrackerImpl::setAllowIDFACollection(bool allow) {
    std::lock_guard guard(m_mutex);
    noteUsage(UsageSetIdfa);
    m_allowIdfa = allow;
}

bool RAITrackerImpl::allowIDFACollection() const {
    std::lock_guard guard(m_mutex);
    return m_allowIdfa;
}

void RAITrackerImpl::setAdvertisingIdentifier(const QString& identifier) {
    std::lock_guard guard(m_mutex);
    m_advertisingId = identifier;
}

bool RAITrackerImpl::shouldRateLimit() {
    const double now = m_clock->now();
    if (lastTrackTime_ != 0.0 && trackingCredits_ < 60.0 && now > lastTrackTime_)
        trackingCredits_ = std::min(60.0, trackingCredits_ + (now - lastTrackTime_) * 0.5);
    lastTrackTime_ = now;
    if (trackingCredits_ < 1.0) {
        log(QStringLiteral("Excessive tracking detected and throttled."));
        return true;
    }
    trackingCredits_ -= 1.0;
    return false;
}

QString RAITrackerImpl::usageSequence() const {
    // Which calls the tracker saw since the last hit, six to a character.
    static const char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
    QString out;
    unsigned bits = m_usage;
    do {
        out.prepend(QLatin1Char(alphabet[bits & 63u]));
        bits >>= 6;
    } while (bits);
    return out;
}

bool RAITrackerImpl::send(const Parameters& parameters) {
    std::lock_guard guard(m_mutex);
    noteUsage(UsageSend);
    const QString type = parameters.contains(QStringLiteral("&t")) ? parameters.value(QStringLiteral("&t"))
                                                                   : m_model.get(QStringLiteral("&t"));
    if (type.isEmpty()) {
        log(QStringLiteral("Bad or missing hit type."));
        return false;
    }
    if (type != QLatin1String("transaction") && type != QLatin1String("item") && shouldRateLimit()) return false;
    if (type == QLatin1String("screenview")) m_model.willSendScreenView(parameters);
    Parameters hit = m_model.takeParametersMergedWith(parameters);
    hit.insert(QStringLiteral("&_u"), usageSequence());
    m_usage = 0;
    if (m_allowIdfa && !m_advertisingId.isEmpty()) {
        hit.insert(QStringLiteral("&idfa"), m_advertisingId);
        hit.insert(QStringLiteral("&ate"), QStringLiteral("1"));
    }
    queueModel(hit);
    return true;
}

void RAITrackerImpl::queueModel(const Parameters& parameters) {
    m_dispatcher->queueDispatch(parameters);
}

} // namespace ekinora::analytics
