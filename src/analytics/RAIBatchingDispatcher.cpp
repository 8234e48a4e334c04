#include "RAIBatchingDispatcher.h"

#include "Log.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

namespace ekinora::analytics {

RAIEndpoints RAIEndpoints::forRoot(const QUrl& root) {
    auto under = [&root](const char* path, bool secure) {
        QUrl url = root;
        if (secure) {
            url.setScheme(QStringLiteral("https"));
            if (url.port() == 80) url.setPort(-1);
        }
        QString base = url.path();
        while (base.endsWith(QLatin1Char('/'))) base.chop(1);
        url.setPath(base + QLatin1String(path));
        return url;
    };
    return {under("/collect", true), under("/collect", false), under("/batch", true), under("/batch", false)};
}

RAIBatchingDispatcher::RAIBatchingDispatcher(const QString& storePath, const RAIEndpoints& endpoints,
                                             std::shared_ptr<Clock> clock)
    : m_clock(std::move(clock)), m_store(std::make_unique<RAIDataStore>(storePath)), m_endpoints(endpoints) {
    m_thread.setObjectName(QStringLiteral("RAIDispatcher"));
    moveToThread(&m_thread);
    m_thread.start();
    rescheduleIfNeeded(
        [this] {
            m_network = new QNetworkAccessManager(this);
            m_network->setRedirectPolicy(QNetworkRequest::ManualRedirectPolicy);
            m_hasHits = m_store->hitCount() > 0;
            armTimer();
        },
        true);
}

RAIBatchingDispatcher::~RAIBatchingDispatcher() {
    rescheduleIfNeeded(
        [this] {
            if (m_timer) m_clock->cancel(m_timer);
            m_timer = 0;
            delete m_network;
            m_network = nullptr;
            m_store->save();
        },
        true);
    m_thread.quit();
    m_thread.wait();
}

void RAIBatchingDispatcher::rescheduleIfNeeded(const std::function<void()>& block, bool wait) {
    if (QThread::currentThread() == &m_thread) return block();
    QMetaObject::invokeMethod(this, block, wait ? Qt::BlockingQueuedConnection : Qt::QueuedConnection);
}

double RAIBatchingDispatcher::dispatchInterval() const { return read(m_dispatchInterval); }
void RAIBatchingDispatcher::setDispatchInterval(double seconds) {
    rescheduleIfNeeded(
        [this, seconds] {
            m_dispatchInterval = seconds;
            if (m_timer) m_clock->cancel(m_timer);
            m_timer = 0;
            armTimer();
        },
        true);
}
unsigned RAIBatchingDispatcher::maxHitsPerDispatch() const { return read(m_maxHitsPerDispatch); }
void RAIBatchingDispatcher::setMaxHitsPerDispatch(unsigned count) { write(m_maxHitsPerDispatch, count); }
double RAIBatchingDispatcher::maxHitAge() const { return read(m_maxHitAge); }
void RAIBatchingDispatcher::setMaxHitAge(double seconds) { write(m_maxHitAge, seconds); }
int RAIBatchingDispatcher::maxBodySize() const { return read(m_maxBodySize); }
void RAIBatchingDispatcher::setMaxBodySize(int bytes) { write(m_maxBodySize, bytes); }
int RAIBatchingDispatcher::maxHitSize() const { return read(m_maxHitSize); }
void RAIBatchingDispatcher::setMaxHitSize(int bytes) { write(m_maxHitSize, bytes); }
unsigned RAIBatchingDispatcher::batchingStrategy() const { return read(m_batchingStrategy); }
void RAIBatchingDispatcher::setBatchingStrategy(unsigned strategy) { write(m_batchingStrategy, strategy); }
unsigned RAIBatchingDispatcher::compressionStrategy() const { return read(m_compressionStrategy); }
void RAIBatchingDispatcher::setCompressionStrategy(unsigned strategy) { write(m_compressionStrategy, strategy); }
bool RAIBatchingDispatcher::serverBatchingDisabled() const { return read(m_serverBatchingDisabled); }
double RAIBatchingDispatcher::batchFailedTime() const { return read(m_batchFailedTime); }
double RAIBatchingDispatcher::batchRetryInterval() const { return read(m_batchRetryInterval); }
void RAIBatchingDispatcher::setBatchRetryInterval(double seconds) { write(m_batchRetryInterval, seconds); }
bool RAIBatchingDispatcher::hostReachable() const { return read(m_hostReachable); }
void RAIBatchingDispatcher::setHostReachable(bool reachable) { write(m_hostReachable, reachable); }
bool RAIBatchingDispatcher::hasHits() const { return read(m_hasHits); }
bool RAIBatchingDispatcher::canDispatch() const {
    bool can = false;
    const_cast<RAIBatchingDispatcher*>(this)->rescheduleIfNeeded([&] { can = m_hostReachable && m_hasHits; }, true);
    return can;
}
bool RAIBatchingDispatcher::optOut() const { return read(m_optOut); }
void RAIBatchingDispatcher::setOptOut(bool optOut) { write(m_optOut, optOut); }
qint64 RAIBatchingDispatcher::maxHitCount() const { return m_store->maxHitCount(); }
void RAIBatchingDispatcher::setMaxHitCount(qint64 count) {
    rescheduleIfNeeded([this, count] { m_store->setMaxHitCount(count); }, true);
}
void RAIBatchingDispatcher::setUserAgent(const QByteArray& userAgent) {
    rescheduleIfNeeded([this, userAgent] { m_builder.userAgent = userAgent; }, true);
}

qint64 RAIBatchingDispatcher::pendingHitCount() {
    qint64 count = 0;
    rescheduleIfNeeded([&] { count = m_store->hitCount(); }, true);
    return count;
}

quint32 RAIBatchingDispatcher::raHash(const QString& text) {
    // FNV-1a over the UTF-8 bytes: stable across runs and platforms, so a client stays in or out
    // of a sample for good.
    quint32 hash = 2166136261u;
    for (const char c : text.toUtf8()) {
        hash ^= quint8(c);
        hash *= 16777619u;
    }
    return hash;
}

void RAIBatchingDispatcher::queueDispatch(const Parameters& hit, bool wait) {
    rescheduleIfNeeded(
        [this, hit] {
            if (m_optOut) return;
            const QString sampleRate = hit.value(QStringLiteral("&sf"));
            if (!sampleRate.isEmpty()) {
                bool wholly = false;
                const double rate = sampleRate.trimmed() == sampleRate ? sampleRate.toDouble(&wholly) : 0;
                if (wholly && raHash(hit.value(QStringLiteral("&cid"))) % 10000 >= rate * 100) return;
            }
            Parameters copy = hit;
            const QString trackingId = copy.value(QStringLiteral("&tid"));
            if (!trackingId.isEmpty())
                copy.insert(QStringLiteral("&_s"),
                            QString::number(m_store->nextHitNumber(trackingId, copy.value(QStringLiteral("&cid")))));
            const double hitTime = determineHitTime(copy);
            copy.remove(QStringLiteral("&ht"));
            persist(copy, hitTime);
        },
        wait);
}

double RAIBatchingDispatcher::determineHitTime(const Parameters& hit) const {
    // A hit made earlier (kept by its sender) may carry its own time, in milliseconds.
    bool ok = false;
    const double ms = hit.value(QStringLiteral("&ht")).toDouble(&ok);
    return ok && ms > 0 ? ms / 1000.0 : m_clock->now();
}

void RAIBatchingDispatcher::persist(const Parameters& hit, double hitTime) {
    QString error;
    if (!m_store->addHit(hit, hitTime, &error) || !m_store->save(&error)) {
        log(QStringLiteral("Hit could not be saved: %1").arg(error));
        return;
    }
    m_store->deleteExcessHits();
    setHasHits(true);
}

void RAIBatchingDispatcher::setHasHits(bool hasHits) {
    m_hasHits = hasHits;
    armTimer();
}

void RAIBatchingDispatcher::armTimer() {
    if (m_timer || m_dispatchInterval <= 0 || !m_hasHits) return;
    m_timer = m_clock->callAfter(this, m_dispatchInterval, [this] {
        m_timer = 0;
        dispatchWithCompletionHandler();
    });
}

bool RAIBatchingDispatcher::isSecure(const RAIHit& hit) {
    const QString value = hit.parameters.value(QStringLiteral("useSecure")).toLower();
    return value == QLatin1String("1") || value == QLatin1String("true") || value == QLatin1String("yes");
}

QUrl RAIBatchingDispatcher::singleUrl(bool secure) const {
    return secure ? m_endpoints.secureSingle : m_endpoints.plainSingle;
}

QUrl RAIBatchingDispatcher::batchUrl(bool secure) const {
    return secure ? m_endpoints.secureBatch : m_endpoints.plainBatch;
}

QList<RAIHit> RAIBatchingDispatcher::nextPendingHits() {
    for (;;) {
        QString error;
        QList<RAIHit> hits = m_store->fetchHitsWithLimit(int(m_maxHitsPerDispatch), &error);
        if (!error.isEmpty()) log(QStringLiteral("Dispatch error: %1").arg(error));
        const double oldest = m_clock->now() - m_maxHitAge;
        QList<qint64> expired;
        for (const RAIHit& hit : hits)
            if (hit.timestamp < oldest) expired << hit.hitId;
        if (expired.isEmpty()) return hits;
        m_store->deleteHitsWithIds(expired);
    }
}

QList<RAIHit> RAIBatchingDispatcher::hitsForDispatch() {
    QList<RAIHit> pending = nextPendingHits();
    if (pending.isEmpty()) {
        log(QStringLiteral("No pending hits."));
        return {};
    }
    if (m_batchingStrategy == 0 || m_serverBatchingDisabled) return {pending.first()};

    // One batch goes over one scheme.
    const bool secure = isSecure(pending.first());
    QList<RAIHit> hits;
    for (const RAIHit& hit : pending)
        if (isSecure(hit) == secure) hits << hit;

    const double now = m_clock->now();
    qint64 total = 0;
    int fit = 0;
    QList<qint64> running;
    for (const RAIHit& hit : hits) {
        total += m_builder.parametersForHit(hit, now).size();
        running << total;
        if (total <= m_maxBodySize) ++fit;
    }
    int count = int(hits.size());
    if (fit < hits.size()) {
        switch (m_batchingStrategy) {
        case 1:
            count = fit;
            break;
        case 2:
            count = batchByTimeGap(hits, fit);
            break;
        case 3:
            if (total < 2 * qint64(m_maxBodySize)) {
                count = 0;
                while (count < running.size() && running[count] * 2 <= total) ++count;
            } else {
                count = fit;
            }
            break;
        case 4:
            count = std::min(int(hits.size()) / 2, fit);
            break;
        case 5:
            count = batchBySessionSplit(hits, fit);
            break;
        default:
            log(QStringLiteral("unexpected batch strategy: %1").arg(m_batchingStrategy));
            count = 1;
        }
    }
    count = std::max(1, count);
    return hits.mid(0, count);
}

int RAIBatchingDispatcher::batchByTimeGap(const QList<RAIHit>& hits, int maxHits) const {
    const int limit = std::min(maxHits, int(hits.size()));
    qint64 largest = -1;
    int cut = limit;
    for (int i = 1; i < limit; ++i) {
        const double before = hits[i - 1].timestamp, after = hits[i].timestamp;
        if (before <= 0 || after <= 0 || after < before) continue;
        const auto gap = qint64((after - before) * 1000.0);
        if (gap >= largest) {
            largest = gap;
            cut = i;
        }
    }
    return cut;
}

int RAIBatchingDispatcher::batchBySessionSplit(const QList<RAIHit>& hits, int maxHits) const {
    // A batch holds one session's hits: it ends before a hit that starts a session, or with one
    // that ends it.
    const int limit = std::min(maxHits, int(hits.size()));
    for (int i = 0; i < limit; ++i) {
        const QString control = hits[i].parameters.value(QStringLiteral("&sc"));
        if (control == QLatin1String("start") && i > 0) return i;
        if (control == QLatin1String("end")) return i + 1;
    }
    return limit;
}

QByteArray RAIBatchingDispatcher::buildPayload(const QList<RAIHit>& hits) const {
    const double now = m_clock->now();
    QList<QByteArray> parts;
    for (const RAIHit& hit : hits) {
        const QByteArray parameters = m_builder.parametersForHit(hit, now);
        if (parameters.isEmpty() || parameters.size() > m_maxHitSize) continue;
        parts << parameters;
    }
    return parts.join("%@\n");
}

void RAIBatchingDispatcher::deleteHits(const QList<RAIHit>& hits) {
    QList<qint64> ids;
    for (const RAIHit& hit : hits) ids << hit.hitId;
    QString error;
    if (!m_store->deleteHitsWithIds(ids, &error)) log(QStringLiteral("Dispatch error: %1").arg(error));
}

void RAIBatchingDispatcher::dispatchWithCompletionHandler(RAIDispatchHandler handler) {
    rescheduleIfNeeded(
        [this, handler] {
            if (handler) {
                if (!m_intervalSaved) {
                    m_savedInterval = m_dispatchInterval;
                    m_intervalSaved = true;
                }
                m_dispatchInterval = -1.0;
                if (m_timer) m_clock->cancel(m_timer);
                m_timer = 0;
            }
            m_handlers << (handler ? handler : RAIDispatchHandler([](RAIDispatchResult, const QString&) {}));
            if (m_dispatching) return; // the running dispatch answers this handler too
            if (!(m_hostReachable && m_hasHits)) return complete(RAIDispatchResult::NoData);
            m_dispatching = true;
            m_firstPass = true;
            m_sentAny = false;
            dispatchPass();
        },
        false);
}

void RAIBatchingDispatcher::dispatchPass() {
    if (m_serverBatchingDisabled && m_clock->now() - m_batchFailedTime > m_batchRetryInterval)
        m_serverBatchingDisabled = false;

    const QList<RAIHit> hits = hitsForDispatch();
    if (hits.isEmpty()) {
        m_hasHits = false;
        return complete(m_sentAny ? RAIDispatchResult::Good : RAIDispatchResult::NoData);
    }
    if (m_firstPass) {
        m_firstPass = false;
        emit willDispatch();
    }

    const QByteArray payload = buildPayload(hits);
    if (payload.isEmpty()) {
        // Nothing in them may go out: too large, or no wire parameters.
        deleteHits(hits);
        return QMetaObject::invokeMethod(this, [this] { dispatchPass(); }, Qt::QueuedConnection), void();
    }
    const bool secure = isSecure(hits.first());
    RAIRequest request;
    if (hits.size() == 1 && payload.size() < 2000) {
        request = m_builder.requestGetUrl(singleUrl(secure), payload);
    } else if (hits.size() > 1) {
        request = m_builder.requestPostUrl(batchUrl(secure), payload, m_compressionStrategy);
    } else {
        request = m_builder.requestPostUrl(singleUrl(secure), payload, RAICompressionNone);
    }
    if (request.method == "POST" && (request.body.isEmpty() || request.body.size() > m_maxBodySize)) {
        log(QStringLiteral("Failed to generate request for hit(s)."));
        deleteHits(hits);
        return complete(RAIDispatchResult::Error, QStringLiteral("Failed to generate request for hit(s)."));
    }
    send(hits, request);
}

void RAIBatchingDispatcher::send(const QList<RAIHit>& hits, const RAIRequest& request) {
    QNetworkRequest qrequest(request.url);
    for (const auto& [name, value] : request.headers) qrequest.setRawHeader(name, value);
    qrequest.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    if (request.noCache) {
        qrequest.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
        qrequest.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    }
    qrequest.setTransferTimeout(60000);
    QNetworkReply* reply = request.method == "GET" ? m_network->get(qrequest) : m_network->post(qrequest, request.body);
    const qint64 bodyBytes = request.method == "GET" ? request.url.query(QUrl::FullyEncoded).size() : request.body.size();
    connect(reply, &QNetworkReply::finished, this, [this, hits, reply, bodyBytes] {
        reply->deleteLater();
        emit hitsSent(int(hits.size()), reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), bodyBytes);
        didSendHits(hits, reply);
    });
}

void RAIBatchingDispatcher::didSendHits(const QList<RAIHit>& hits, QNetworkReply* reply) {
    const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    if (!status.isValid()) {
        const QString error = QStringLiteral("Dispatch error: %1").arg(reply->errorString());
        log(error);
        return complete(RAIDispatchResult::Error, error);
    }
    const int code = status.toInt();
    if (hits.size() > 1 && !m_serverBatchingDisabled && (code == 302 || code == 502 || code == 404)) {
        m_serverBatchingDisabled = true;
        m_batchFailedTime = m_clock->now();
        const QString text = QStringLiteral("Hit(s) not dispatched, falling back to non-batching mode: HTTP status %1").arg(code);
        log(text);
        return complete(RAIDispatchResult::Error, text);
    }
    deleteHits(hits);
    m_sentAny = true;
    dispatchPass();
}

void RAIBatchingDispatcher::complete(RAIDispatchResult result, const QString& error) {
    m_dispatching = false;
    if (m_intervalSaved) {
        m_dispatchInterval = m_savedInterval;
        m_intervalSaved = false;
    }
    const QList<RAIDispatchHandler> handlers = std::exchange(m_handlers, {});
    for (const auto& handler : handlers) handler(result, error);
    armTimer();
}

} // namespace ekinora::analytics
