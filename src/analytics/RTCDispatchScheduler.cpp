#include "RTCDispatchScheduler.h"

#include "Log.h"
#include "RTCHitSender.h"
#include "RTCHitStore.h"

namespace ekinora::analytics {

RTCDispatchScheduler::RTCDispatchScheduler(SerialQueue& queue, RTCHitStore& hitStore, std::shared_ptr<Clock> clock,
                                           RTCBackgroundTasks backgroundTasks, bool exitsOnSuspend)
    : m_queue(queue), m_hitStore(hitStore), m_clock(std::move(clock)), m_backgroundTasks(std::move(backgroundTasks)),
      m_useBackgroundTasks(!exitsOnSuspend), m_alive(std::make_shared<std::atomic<bool>>(true)) {}

RTCDispatchScheduler::~RTCDispatchScheduler() {
    *m_alive = false;
    m_queue.sync([this] {
        m_pendingDelayedDispatchFlags.clear();
        m_reachability.reset();
        m_sender.reset();
    });
}

void RTCDispatchScheduler::start() {
    m_queue.async([this] {
        if (m_state == NotStarted) {
            m_state = Started;
            if (m_useBackgroundTasks) m_observing = true;
            beginCycle();
        } else if (m_state == WaitingForDelayedDispatch) {
            beginCycle();
        } else {
            log(QStringLiteral("RTCDispatchScheduler ignored start call. dispatch cycle in progress."));
        }
    });
}

void RTCDispatchScheduler::beginCycle() {
    m_pendingDelayedDispatchFlags.clear();
    if (m_appInBackground) {
        log(QStringLiteral("RTCDispatchScheduler ignored beginCycle. App is not in foreground."));
        m_state = WaitingForDelayedDispatch;
        return;
    }
    switch (m_state) {
    case NotStarted:
        log(QStringLiteral("RTCDispatchScheduler beginCycle called before start"));
        break;
    case Started:
    case WaitingForDelayedDispatch:
        checkHitStore();
        break;
    case Dispatching:
        queueDelayedDispatch();
        break;
    }
}

void RTCDispatchScheduler::queueDelayedDispatch() {
    if (m_state == WaitingForDelayedDispatch) {
        log(QStringLiteral("RTCDispatchScheduler unexpected call to queueDelayedDispatch while in delayed dispatch"));
        return;
    }
    m_state = WaitingForDelayedDispatch;
    const quint64 token = ++m_nextFlag;
    m_pendingDelayedDispatchFlags = {token};
    m_clock->callAfter(m_queue.context(), DispatchDelay, [this, token, alive = m_alive] {
        if (!*alive || !m_pendingDelayedDispatchFlags.count(token)) return;
        m_pendingDelayedDispatchFlags.erase(token);
        beginCycle();
    });
}

void RTCDispatchScheduler::checkHitStore() {
    if (m_state == Dispatching) {
        log(QStringLiteral("RTCDispatchScheduler checkHitStore method called when already running"));
        return;
    }
    m_state = Dispatching;
    markDispatchStart();
    m_hitStore.fetchNotRecentlyAttemptedHitsWithLimit(FetchLimit, [this, alive = m_alive](const QList<RTCHit>& hits) {
        if (!*alive) return;
        m_queue.async([this, hits, alive] {
            if (*alive) handleHitStoreResults(hits);
        });
    });
}

void RTCDispatchScheduler::handleHitStoreResults(const QList<RTCHit>& hits) {
    if (m_state != Dispatching) {
        log(QStringLiteral("RTCDispatcherScheduler unexpected state during hit store fetch: %1").arg(int(m_state)));
        return;
    }
    if (hits.isEmpty()) {
        markDispatchEnd();
        beginCycle();
        return;
    }
    m_reachability = std::make_unique<RTCNetReachability>(m_queue.context());
    m_reachability->start([this, hits](int status) {
        if (m_state != Dispatching) {
            log(QStringLiteral("RTCDispatchScheduler unexpected state during reachability fetch: %1").arg(int(m_state)));
        } else if (RTCNetReachability::isReachable(status)) {
            sendHits(hits);
        } else {
            markDispatchEnd();
            beginCycle();
        }
        m_reachability.reset();
    });
}

void RTCDispatchScheduler::sendHits(const QList<RTCHit>& hits) {
    if (m_state != Dispatching) {
        log(QStringLiteral("RTCDispatchScheduler unexpected state during sendHits: %1").arg(int(m_state)));
        return;
    }
    m_sender = std::make_unique<RTCHitSender>(
        hits, [this, alive = m_alive](const QList<RTCHit>& successful, const QList<RTCHit>& failed) {
            if (!*alive) return;
            // The sender calls back from its replies; the rest of the cycle runs on the queue.
            m_queue.async([this, successful, failed, alive] {
                if (!*alive) return;
                if (!successful.isEmpty()) m_hitStore.deleteHits(successful);
                if (!failed.isEmpty()) m_hitStore.updateFailedHits(failed);
                m_sender.reset();
                if (onHitsSent) onHitsSent(int(successful.size()), int(failed.size()));
                markDispatchEnd();
                beginCycle();
            });
        });
    m_sender->send();
}

void RTCDispatchScheduler::markDispatchStart() {
    if (!m_useBackgroundTasks || !m_backgroundTasks.begin || m_backgroundTaskIdentifier) return;
    m_backgroundTaskIdentifier = m_backgroundTasks.begin([this, alive = m_alive] {
        if (!*alive) return;
        m_queue.async([this, alive] {
            if (*alive) markDispatchEnd();
        });
    });
}

void RTCDispatchScheduler::markDispatchEnd() {
    if (!m_useBackgroundTasks || !m_backgroundTaskIdentifier) return;
    if (m_backgroundTasks.end) m_backgroundTasks.end(m_backgroundTaskIdentifier);
    m_backgroundTaskIdentifier = 0;
}

void RTCDispatchScheduler::applicationWillResignActive() {
    m_queue.async([this] {
        if (!m_observing) return;
        if (m_state == WaitingForDelayedDispatch) beginCycle();
        m_appInBackground = true;
    });
}

void RTCDispatchScheduler::applicationWillEnterForeground() {
    m_queue.async([this] {
        if (!m_observing) return;
        m_appInBackground = false;
        m_state = Started;
        beginCycle();
    });
}

} // namespace ekinora::analytics
