#pragma once

#include <QObject>
#include <QPointer>

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <mutex>

namespace ekinora::analytics {

// Time and delayed calls of the analytics code. The rate limiter, the dispatch interval, the batching
// retry and the scheduler's delay all read it, so tests drive them with a ManualClock.
class Clock {
public:
    virtual ~Clock() = default;
    // Seconds since 1970.
    virtual double now() const = 0;
    // Runs fn on the context's thread once `seconds` have passed; the id cancels it. Nothing runs
    // once the context is gone.
    virtual quint64 callAfter(QObject* context, double seconds, std::function<void()> fn) = 0;
    virtual void cancel(quint64 id) = 0;

    static std::shared_ptr<Clock> system();
};

class SystemClock : public Clock {
public:
    double now() const override;
    quint64 callAfter(QObject* context, double seconds, std::function<void()> fn) override;
    void cancel(quint64 id) override;

private:
    std::mutex m_mutex;
    quint64 m_next = 0;
    std::map<quint64, std::shared_ptr<std::atomic<bool>>> m_live;
};

// Time stands still until advanced; due calls are then posted to their contexts, earliest first.
class ManualClock : public Clock {
public:
    explicit ManualClock(double start = 1700000000.0) : m_now(start) {}
    double now() const override;
    quint64 callAfter(QObject* context, double seconds, std::function<void()> fn) override;
    void cancel(quint64 id) override;

    void advance(double seconds);
    void set(double now);
    // Calls waiting, for tests that check a delay was armed.
    int pendingCalls() const;

private:
    struct Call {
        double due;
        QPointer<QObject> context;
        std::function<void()> fn;
    };
    void fireDue();

    mutable std::mutex m_mutex;
    double m_now;
    quint64 m_next = 0;
    std::map<quint64, Call> m_calls;
};

} // namespace ekinora::analytics
