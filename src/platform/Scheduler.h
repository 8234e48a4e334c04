#pragma once

#include <QDateTime>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <functional>
#include <map>

class QTimer;

namespace ekinora::platform {

// Timers and delayed calls. The system scheduler runs on the event loop; the manual one runs only when
// a test advances its clock, so that a 10-second poll is tested in microseconds.
class Scheduler : public QObject {
    Q_OBJECT
public:
    using Id = quint64;
    using Callback = std::function<void()>;

    using QObject::QObject;
    virtual QDateTime now() const = 0;
    // performSelector:afterDelay: and dispatch_after.
    virtual Id after(int ms, Callback callback) = 0;
    // A repeating NSTimer: first fire after one interval.
    virtual Id every(int ms, Callback callback) = 0;
    virtual void cancel(Id id) = 0;
};

class SystemScheduler final : public Scheduler {
    Q_OBJECT
public:
    using Scheduler::Scheduler;
    QDateTime now() const override { return QDateTime::currentDateTime(); }
    Id after(int ms, Callback callback) override;
    Id every(int ms, Callback callback) override;
    void cancel(Id id) override;

private:
    Id start(int ms, Callback callback, bool repeat);
    Id m_next = 1;
    QHash<Id, QPointer<QTimer>> m_timers;
};

class ManualScheduler final : public Scheduler {
    Q_OBJECT
public:
    explicit ManualScheduler(QDateTime start = QDateTime(QDate(2026, 5, 14), QTime(9, 30)), QObject* parent = nullptr);
    QDateTime now() const override { return m_now; }
    Id after(int ms, Callback callback) override;
    Id every(int ms, Callback callback) override;
    void cancel(Id id) override;

    // Moves the clock forward, firing every timer that falls due, in time order.
    void advance(int ms);
    void setNow(const QDateTime& when) { m_now = when; }
    int pending() const { return int(m_entries.size()); }

private:
    struct Entry {
        Id id;
        qint64 due;
        int interval; // 0: once
        Callback callback;
    };
    qint64 m_elapsed = 0;
    QDateTime m_now;
    Id m_next = 1;
    std::multimap<std::pair<qint64, Id>, Entry> m_entries;
};

} // namespace ekinora::platform
