#pragma once

#include "Foundation.h"

#include <QMap>
#include <QObject>
#include <QVariant>
#include <memory>

class QSettings;

namespace ekinora::platform {

// The flat key-value store of the application. On disk it is an INI file (store.ini) with each key
// under its own name; texts stay texts, records and lists are JSON text. Without a file it keeps the
// values in memory (tests).
class UserDefaults : public QObject {
    Q_OBJECT
public:
    explicit UserDefaults(QObject* parent = nullptr);                    // in memory
    explicit UserDefaults(const QString& iniPath, QObject* parent = nullptr); // on disk
    ~UserDefaults() override;

    bool contains(const QString& key) const;
    // nil when absent; a text otherwise.
    QString stringForKey(const QString& key) const;
    void setString(const QString& key, const QString& value);
    // A record or list stored as JSON text; nil when absent or unreadable.
    Json jsonForKey(const QString& key) const;
    void setJson(const QString& key, const Json& value);
    void removeObjectForKey(const QString& key);
    // Writes what is pending to the file.
    void synchronize();

    QStringList keys() const;
    QString filePath() const;

signals:
    void changed(const QString& key);

private:
    QVariant raw(const QString& key) const;
    void write(const QString& key, const QVariant& value);

    std::unique_ptr<QSettings> m_settings;
    QMap<QString, QVariant> m_memory;
};

} // namespace ekinora::platform
