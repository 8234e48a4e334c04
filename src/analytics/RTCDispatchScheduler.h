#pragma once

#include "Clock.h"
#include "RTCHit.h"
#include "RTCNetReachability.h"
#include "SerialQueue.h"

#include <atomic>
#include <functional>
#include <memory>
#include <set>

namespace ekinora::analytics {

class RTCHitSender;
class RTCHitStore;

// The platform's background tasks, which let a dispatch finish when the app leaves the screen.
// Without them (the desktop) a dispatch simply runs on.
struct RTCBackgroundTasks {
    std::function<qint64(std::function<void()> expiration)> begin; // 0: not granted
    std::function<void(qint64)> end;
};

// Sends the tag hits in cycles: look into the hit store, send what is there, and when nothing is
// left wait 120 seconds before the next look. Every step runs on the scheduler's queue.
class RTCDispatchScheduler {
public:
    enum State { NotStarted = 1, Started = 2, Dispatching = 3, WaitingForDelayedDispatch = 4 };
    static constexpr double DispatchDelay = 120.0;
    static constexpr int FetchLimit = 40;

    RTCDispatchScheduler(SerialQueue& queue, RTCHitStore& hitStore, std::shared_ptr<Clock> clock = Clock::system(),
                         RTCBackgroundTasks backgroundTasks = {}, bool exitsOnSuspend = false);
    ~RTCDispatchScheduler();

    void start();
    int state() const { return m_state; }
    bool appInBackground() const { return m_appInBackground; }

    // The application's events, forwarded by the host.
    void applicationWillResignActive();
    void applicationWillEnterForeground();

    // Called on the queue after each send: how many hits went and failed.
    std::function<void(int successful, int failed)> onHitsSent;

private:
    void beginCycle();
    void queueDelayedDispatch();
    void checkHitStore();
    void handleHitStoreResults(const QList<RTCHit>& hits);
    void sendHits(const QList<RTCHit>& hits);
    void markDispatchStart();
    void markDispatchEnd();

    SerialQueue& m_queue;
    RTCHitStore& m_hitStore;
    std::shared_ptr<Clock> m_clock;
    RTCBackgroundTasks m_backgroundTasks;
    std::atomic<int> m_state{NotStarted};
    std::set<quint64> m_pendingDelayedDispatchFlags;
    quint64 m_nextFlag = 0;
    bool m_useBackgroundTasks;
    std::atomic<bool> m_appInBackground{false};
    bool m_observing = false;
    qint64 m_backgroundTaskIdentifier = 0;
    std::unique_ptr<RTCNetReachability> m_reachability;
    std::unique_ptr<RTCHitSender> m_sender;
    std::shared_ptr<std::atomic<bool>> m_alive;
};

} // namespace ekinora::analytics
