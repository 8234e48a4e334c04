#include "Clock.h"

#include <QDateTime>
#include <QThread>
#include <QTimer>

#include <vector>

namespace ekinora::analytics {

std::shared_ptr<Clock> Clock::system() {
    static const auto clock = std::make_shared<SystemClock>();
    return clock;
}

double SystemClock::now() const {
    return double(QDateTime::currentMSecsSinceEpoch()) / 1000.0;
}

quint64 SystemClock::callAfter(QObject* context, double seconds, std::function<void()> fn) {
    auto live = std::make_shared<std::atomic<bool>>(true);
    quint64 id;
    {
        std::lock_guard guard(m_mutex);
        id = ++m_next;
        m_live[id] = live;
    }
    const int ms = seconds <= 0 ? 0 : int(std::min(seconds * 1000.0, 2147483647.0));
    auto arm = [this, context, ms, id, live, fn = std::move(fn)]() mutable {
        QTimer::singleShot(ms, context, [this, id, live, fn = std::move(fn)] {
            {
                std::lock_guard guard(m_mutex);
                m_live.erase(id);
            }
            if (live->exchange(false)) fn();
        });
    };
    // The timer belongs to the context's thread.
    if (QThread::currentThread() == context->thread())
        arm();
    else
        QMetaObject::invokeMethod(context, std::move(arm), Qt::QueuedConnection);
    return id;
}

void SystemClock::cancel(quint64 id) {
    std::lock_guard guard(m_mutex);
    auto it = m_live.find(id);
    if (it == m_live.end()) return;
    *it->second = false;
    m_live.erase(it);
}

double ManualClock::now() const {
    std::lock_guard guard(m_mutex);
    return m_now;
}

quint64 ManualClock::callAfter(QObject* context, double seconds, std::function<void()> fn) {
    quint64 id;
    {
        std::lock_guard guard(m_mutex);
        id = ++m_next;
        m_calls[id] = Call{m_now + std::max(0.0, seconds), context, std::move(fn)};
    }
    if (seconds <= 0) fireDue();
    return id;
}

void ManualClock::cancel(quint64 id) {
    std::lock_guard guard(m_mutex);
    m_calls.erase(id);
}

void ManualClock::advance(double seconds) {
    {
        std::lock_guard guard(m_mutex);
        m_now += seconds;
    }
    fireDue();
}

void ManualClock::set(double now) {
    {
        std::lock_guard guard(m_mutex);
        m_now = now;
    }
    fireDue();
}

int ManualClock::pendingCalls() const {
    std::lock_guard guard(m_mutex);
    return int(m_calls.size());
}

void ManualClock::fireDue() {
    std::vector<Call> due;
    {
        std::lock_guard guard(m_mutex);
        std::vector<std::pair<double, quint64>> order;
        for (const auto& [id, call] : m_calls)
            if (call.due <= m_now) order.emplace_back(call.due, id);
        std::sort(order.begin(), order.end());
        for (const auto& [when, id] : order) {
            due.push_back(std::move(m_calls[id]));
            m_calls.erase(id);
        }
    }
    // Posted, never run inline: a call may take locks its caller holds.
    for (auto& call : due)
        if (call.context) QMetaObject::invokeMethod(call.context.data(), std::move(call.fn), Qt::QueuedConnection);
}

} // namespace ekinora::analytics
