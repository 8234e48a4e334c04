#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>

namespace ekinora::platform {

struct Notification {
    QString name;
    QObject* object = nullptr;
};

// The default notification centre. Observers are called by selector name through the meta-object
// system: a slot or Q_INVOKABLE with no argument or with one Notification. A post to a selector the
// observer lacks stops the application, as the original platform does. An observer added twice is
// called twice; an observer that is destroyed is dropped.
class NotificationCenter : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    void addObserver(QObject* observer, const QString& selector, const QString& name, QObject* object = nullptr);
    void removeObserver(QObject* observer);
    void removeObserver(QObject* observer, const QString& name);
    void postNotificationName(const QString& name, QObject* object = nullptr);

    int observerCount(const QString& name) const;

signals:
    void posted(const QString& name);

private:
    struct Entry {
        QPointer<QObject> observer;
        QString selector;
        QString name;
        QPointer<QObject> object;
        bool filtered = false;
    };
    QList<Entry> m_entries;
};

} // namespace ekinora::platform

Q_DECLARE_METATYPE(ekinora::platform::Notification)
