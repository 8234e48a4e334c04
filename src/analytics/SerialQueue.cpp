#include "SerialQueue.h"

namespace ekinora::analytics {

SerialQueue::SerialQueue(const QString& name) : m_thread(new QThread), m_context(new QObject) {
    m_thread->setObjectName(name);
    m_context->moveToThread(m_thread);
    m_thread->start();
}

SerialQueue::~SerialQueue() {
    // The context goes after what was queued before it, and the thread after the context.
    QObject* context = m_context;
    QThread* thread = m_thread;
    QMetaObject::invokeMethod(context, [context, thread] {
        delete context;
        thread->quit();
    }, Qt::QueuedConnection);
    m_thread->wait();
    delete m_thread;
}

void SerialQueue::async(std::function<void()> block) {
    QMetaObject::invokeMethod(m_context, std::move(block), Qt::QueuedConnection);
}

void SerialQueue::sync(const std::function<void()>& block) {
    if (isCurrent()) return block();
    QMetaObject::invokeMethod(m_context, block, Qt::BlockingQueuedConnection);
}

bool SerialQueue::isCurrent() const {
    return QThread::currentThread() == m_thread;
}

} // namespace ekinora::analytics
