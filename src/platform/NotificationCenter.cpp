#include "NotificationCenter.h"

#include "Foundation.h"

#include <QMetaMethod>

namespace ekinora::platform {

void NotificationCenter::addObserver(QObject* observer, const QString& selector, const QString& name, QObject* object) {
    m_entries.append(Entry{observer, selector, name, object, object != nullptr});
}

void NotificationCenter::removeObserver(QObject* observer) {
    m_entries.removeIf([observer](const Entry& e) { return e.observer == observer; });
}

void NotificationCenter::removeObserver(QObject* observer, const QString& name) {
    m_entries.removeIf([&](const Entry& e) { return e.observer == observer && e.name == name; });
}

int NotificationCenter::observerCount(const QString& name) const {
    int n = 0;
    for (const auto& e : m_entries)
        if (e.name == name && e.observer) ++n;
    return n;
}

void NotificationCenter::postNotificationName(const QString& name, QObject* object) {
    emit posted(name);
    // Observers added while posting are not called for this post.
    const QList<Entry> snapshot = m_entries;
    for (const Entry& e : snapshot) {
        if (e.name != name || !e.observer) continue;
        // A sender that is gone matches nothing any more.
        if (e.filtered && (!e.object || e.object != object)) continue;
        QObject* target = e.observer;
        const QMetaObject* meta = target->metaObject();
        const QByteArray selector = e.selector.toLatin1();
        int withArgument = -1, plain = -1;
        for (int i = 0; i < meta->methodCount(); ++i) {
            const QMetaMethod m = meta->method(i);
            if (m.name() != selector) continue;
            if (m.parameterCount() == 0) plain = i;
            else if (m.parameterCount() == 1 && m.parameterMetaType(0) == QMetaType::fromType<Notification>())
                withArgument = i;
        }
        if (withArgument >= 0) {
            meta->method(withArgument).invoke(target, Qt::DirectConnection, Q_ARG(ekinora::platform::Notification,
                                                                                 (Notification{name, object})));
        } else if (plain >= 0) {
            meta->method(plain).invoke(target, Qt::DirectConnection);
        } else {
            fatal(QStringLiteral("-[%1 %2]: unrecognized selector sent to instance")
                      .arg(QString::fromLatin1(meta->className()), e.selector));
        }
    }
}

} // namespace ekinora::platform
