#include "Scheduler.h"

#include <QTimer>

namespace ekinora::platform {

Scheduler::Id SystemScheduler::start(int ms, Callback callback, bool repeat) {
    const Id id = m_next++;
    auto* timer = new QTimer(this);
    timer->setSingleShot(!repeat);
    timer->setTimerType(Qt::PreciseTimer);
    connect(timer, &QTimer::timeout, this, [this, id, timer, repeat, cb = std::move(callback)]() {
        if (!repeat) {
            m_timers.remove(id);
            timer->deleteLater();
        }
        cb();
    });
    m_timers.insert(id, timer);
    timer->start(qMax(0, ms));
    return id;
}

Scheduler::Id SystemScheduler::after(int ms, Callback callback) { return start(ms, std::move(callback), false); }
Scheduler::Id SystemScheduler::every(int ms, Callback callback) { return start(ms, std::move(callback), true); }

void SystemScheduler::cancel(Id id) {
    if (auto timer = m_timers.take(id)) {
        timer->stop();
        timer->deleteLater();
    }
}

ManualScheduler::ManualScheduler(QDateTime start, QObject* parent) : Scheduler(parent), m_now(std::move(start)) {}

Scheduler::Id ManualScheduler::after(int ms, Callback callback) {
    const Id id = m_next++;
    const qint64 due = m_elapsed + qMax(0, ms);
    m_entries.emplace(std::make_pair(due, id), Entry{id, due, 0, std::move(callback)});
    return id;
}

Scheduler::Id ManualScheduler::every(int ms, Callback callback) {
    const Id id = m_next++;
    const int interval = qMax(1, ms);
    const qint64 due = m_elapsed + interval;
    m_entries.emplace(std::make_pair(due, id), Entry{id, due, interval, std::move(callback)});
    return id;
}

void ManualScheduler::cancel(Id id) {
    for (auto it = m_entries.begin(); it != m_entries.end(); ++it)
        if (it->second.id == id) {
            m_entries.erase(it);
            return;
        }
}

void ManualScheduler::advance(int ms) {
    const qint64 target = m_elapsed + qMax(0, ms);
    while (!m_entries.empty() && m_entries.begin()->first.first <= target) {
        auto node = m_entries.extract(m_entries.begin());
        Entry entry = std::move(node.mapped());
        m_now = m_now.addMSecs(entry.due - m_elapsed);
        m_elapsed = entry.due;
        if (entry.interval > 0) {
            // Re-arm before calling, so that a callback may cancel its own timer.
            Entry again{entry.id, entry.due + entry.interval, entry.interval, entry.callback};
            m_entries.emplace(std::make_pair(again.due, again.id), std::move(again));
        }
        entry.callback();
    }
    m_now = m_now.addMSecs(target - m_elapsed);
    m_elapsed = target;
}

} // namespace ekinora::platform
