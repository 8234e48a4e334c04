#pragma once

#include "Clock.h"
#include "RAIDataStore.h"
#include "RAIHit.h"
#include "RAIRequestBuilder.h"

#include <QObject>
#include <QThread>
#include <QUrl>

#include <functional>
#include <memory>

class QNetworkAccessManager;
class QNetworkReply;

namespace ekinora::analytics {

// The collection endpoints: single hits and batches, each over a secure and a plain scheme.
struct RAIEndpoints {
    QUrl secureSingle, plainSingle, secureBatch, plainBatch;

    // From the collector's root: "<root>/collect" for single hits and "<root>/batch" for batches; the
    // secure pair is the same under https.
    static RAIEndpoints forRoot(const QUrl& root);
};

// The name under which the dispatcher announces a dispatch before its first request.
inline constexpr const char* RAIWillDispatchNotification = "RAIWillDispatchNotification";

enum class RAIDispatchResult { NoData, Good, Error };
using RAIDispatchHandler = std::function<void(RAIDispatchResult result, const QString& error)>;

// Persists hits and sends them in batches, on a thread of its own. Every call may come from any
// thread: it is carried over to the dispatcher's thread (rescheduleIfNeeded).
class RAIBatchingDispatcher : public QObject {
    Q_OBJECT
public:
    RAIBatchingDispatcher(const QString& storePath, const RAIEndpoints& endpoints,
                          std::shared_ptr<Clock> clock = Clock::system());
    ~RAIBatchingDispatcher() override;

    // Settings (the defaults are the collector's contract).
    double dispatchInterval() const;
    void setDispatchInterval(double seconds); // 0 or below: no automatic dispatch
    unsigned maxHitsPerDispatch() const;
    void setMaxHitsPerDispatch(unsigned count);
    double maxHitAge() const;
    void setMaxHitAge(double seconds);
    int maxBodySize() const;
    void setMaxBodySize(int bytes);
    int maxHitSize() const;
    void setMaxHitSize(int bytes);
    unsigned batchingStrategy() const;
    void setBatchingStrategy(unsigned strategy);
    unsigned compressionStrategy() const;
    void setCompressionStrategy(unsigned strategy);
    bool serverBatchingDisabled() const;
    double batchFailedTime() const;
    double batchRetryInterval() const;
    void setBatchRetryInterval(double seconds);
    bool hostReachable() const;
    void setHostReachable(bool reachable);
    bool hasHits() const;
    bool canDispatch() const;
    bool optOut() const;
    void setOptOut(bool optOut);
    qint64 maxHitCount() const;
    void setMaxHitCount(qint64 count);
    void setUserAgent(const QByteArray& userAgent);

    // Samples, numbers, stamps and persists one hit. With wait, returns once it is saved.
    void queueDispatch(const Parameters& hit, bool wait = false);
    // Sends what is pending, batch after batch, until nothing is left or a send fails. The handler
    // runs on the dispatcher's thread once the dispatch ends.
    void dispatchWithCompletionHandler(RAIDispatchHandler handler = {});
    qint64 pendingHitCount();

    // Runs a block on the dispatcher's thread, waiting for it when asked.
    void rescheduleIfNeeded(const std::function<void()>& block, bool wait);

    static quint32 raHash(const QString& text);

signals:
    // Posted before the first request of a dispatch (RAIWillDispatchNotification).
    void willDispatch();
    // One request answered: how many hits it carried, its status (0: no response) and its body size.
    void hitsSent(int hits, int status, qint64 bodyBytes);

private:
    void persist(const Parameters& hit, double hitTime);
    double determineHitTime(const Parameters& hit) const;
    QList<RAIHit> nextPendingHits();
    QList<RAIHit> hitsForDispatch();
    int batchByTimeGap(const QList<RAIHit>& hits, int maxHits) const;
    int batchBySessionSplit(const QList<RAIHit>& hits, int maxHits) const;
    QByteArray buildPayload(const QList<RAIHit>& hits) const;
    void deleteHits(const QList<RAIHit>& hits);
    void dispatchPass();
    void send(const QList<RAIHit>& hits, const RAIRequest& request);
    void didSendHits(const QList<RAIHit>& hits, QNetworkReply* reply);
    void complete(RAIDispatchResult result, const QString& error = {});
    void armTimer();
    void setHasHits(bool hasHits);
    static bool isSecure(const RAIHit& hit);
    QUrl singleUrl(bool secure) const;
    QUrl batchUrl(bool secure) const;

    template <class T> T read(const T& field) const {
        T value{};
        const_cast<RAIBatchingDispatcher*>(this)->rescheduleIfNeeded([&] { value = field; }, true);
        return value;
    }
    template <class T> void write(T& field, T value) {
        rescheduleIfNeeded([&field, value] { field = value; }, true);
    }

    QThread m_thread;
    std::shared_ptr<Clock> m_clock;
    std::unique_ptr<RAIDataStore> m_store;
    RAIRequestBuilder m_builder;
    RAIEndpoints m_endpoints;
    QNetworkAccessManager* m_network = nullptr;

    double m_dispatchInterval = 120.0;
    unsigned m_maxHitsPerDispatch = 20;
    double m_maxHitAge = 2592000.0;
    int m_maxBodySize = 8192;
    int m_maxHitSize = 8192;
    unsigned m_batchingStrategy = 2;
    unsigned m_compressionStrategy = RAICompressionGzip;
    bool m_serverBatchingDisabled = false;
    double m_batchFailedTime = 0;
    double m_batchRetryInterval = 3600.0;
    bool m_hostReachable = true;
    bool m_hasHits = true;
    bool m_optOut = false;

    bool m_dispatching = false;
    bool m_firstPass = true;
    bool m_sentAny = false;
    bool m_intervalSaved = false;
    double m_savedInterval = 0;
    QList<RAIDispatchHandler> m_handlers;
    quint64 m_timer = 0;
};

} // namespace ekinora::analytics
