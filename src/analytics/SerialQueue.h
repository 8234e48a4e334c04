#pragma once

#include <QObject>
#include <QString>
#include <QThread>

#include <functional>

namespace ekinora::analytics {

// A named serial queue: one thread with an event loop. Blocks run in the order they were queued;
// objects that live on the queue (network managers, timers) get their events there too.
class SerialQueue {
public:
    explicit SerialQueue(const QString& name);
    ~SerialQueue(); // runs what was queued, then stops the thread

    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;

    void async(std::function<void()> block);
    // Runs the block on the queue and waits for it; runs it in place when already on the queue.
    void sync(const std::function<void()>& block);
    bool isCurrent() const;

    // The object that stands for the queue: a context for timers and queued calls.
    QObject* context() const { return m_context; }
    QThread* thread() const { return m_thread; }

private:
    QThread* m_thread;
    QObject* m_context;
};

} // namespace ekinora::analytics
