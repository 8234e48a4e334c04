#pragma once

#include "Clock.h"
#include "RTCHit.h"
#include "SerialQueue.h"

#include <functional>
#include <memory>

struct sqlite3;

namespace ekinora::analytics {

// The tag hits and the waiting events, in "RTCv5.sql" under a folder of the host's choosing. All
// database work runs on the store's own queue, dbOperationsSerialQueue; callbacks run there too.
class RTCHitStore {
public:
    using HitsCallback = std::function<void(const QList<RTCHit>&)>;
    using EventsCallback = std::function<void(const QList<RTCPendingEvent>&)>;
    using DoneCallback = std::function<void(bool ok)>;

    static constexpr double RetryDelay = 120.0;      // a failed hit rests this long
    static constexpr double PendingEventAge = 86400.0; // waiting events older than this are not replayed
    static constexpr int PendingEventLimit = 100;

    RTCHitStore(const QString& directory, std::shared_ptr<Clock> clock = Clock::system());
    ~RTCHitStore();

    void addHit(const RTCHit& hit, DoneCallback done = {});
    void addHitWithURLString(const QString& url, const QString& uniqueId, DoneCallback done = {});
    void fetchHitsWithLimit(int limit, HitsCallback callback);
    void fetchNotRecentlyAttemptedHitsWithLimit(int limit, HitsCallback callback);
    void deleteHits(const QList<RTCHit>& hits, DoneCallback done = {});
    void updateFailedHits(const QList<RTCHit>& hits, DoneCallback done = {});
    void addPendingEvent(const RTCPendingEvent& event, DoneCallback done = {});
    void fetchPendingEventsToCallback(EventsCallback callback);
    void clearPendingEvents(DoneCallback done = {});

    // Waits for everything queued so far.
    void sync();
    QString databasePath() const { return m_path; }

private:
    bool loadDatabase();
    QList<RTCHit> selectHits(const char* sql, const QList<QVariant>& arguments);
    bool run(const QString& sql, const QList<QVariant>& arguments, const char* failureText);

    QString m_path;
    std::shared_ptr<Clock> m_clock;
    std::unique_ptr<SerialQueue> m_queue;
    sqlite3* m_db = nullptr;
};

} // namespace ekinora::analytics
