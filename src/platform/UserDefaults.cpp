#include "UserDefaults.h"

#include <QSettings>

namespace ekinora::platform {

UserDefaults::UserDefaults(QObject* parent) : QObject(parent) {}

UserDefaults::UserDefaults(const QString& iniPath, QObject* parent)
    : QObject(parent), m_settings(std::make_unique<QSettings>(iniPath, QSettings::IniFormat)) {}

UserDefaults::~UserDefaults() {
    if (m_settings) m_settings->sync();
}

QVariant UserDefaults::raw(const QString& key) const {
    return m_settings ? m_settings->value(key) : m_memory.value(key);
}

void UserDefaults::write(const QString& key, const QVariant& value) {
    if (m_settings) {
        if (value.isValid()) m_settings->setValue(key, value);
        else m_settings->remove(key);
    } else {
        if (value.isValid()) m_memory.insert(key, value);
        else m_memory.remove(key);
    }
    emit changed(key);
}

bool UserDefaults::contains(const QString& key) const {
    return m_settings ? m_settings->contains(key) : m_memory.contains(key);
}

QString UserDefaults::stringForKey(const QString& key) const {
    const QVariant v = raw(key);
    if (!v.isValid()) return {};
    // A text holding a comma comes back from an INI file as a list when it was not written by us.
    if (v.metaType().id() == QMetaType::QStringList) return v.toStringList().join(QLatin1Char(','));
    return v.toString();
}

void UserDefaults::setString(const QString& key, const QString& value) {
    write(key, value.isNull() ? QVariant() : QVariant(value));
}

Json UserDefaults::jsonForKey(const QString& key) const {
    if (!contains(key)) return nil();
    return decodeJson(stringForKey(key).toUtf8());
}

void UserDefaults::setJson(const QString& key, const Json& value) {
    if (value.isUndefined()) {
        removeObjectForKey(key);
        return;
    }
    write(key, QString::fromUtf8(encodeJson(value)));
}

void UserDefaults::removeObjectForKey(const QString& key) { write(key, QVariant()); }

void UserDefaults::synchronize() {
    if (m_settings) m_settings->sync();
}

QStringList UserDefaults::keys() const { return m_settings ? m_settings->allKeys() : m_memory.keys(); }

QString UserDefaults::filePath() const { return m_settings ? m_settings->fileName() : QString(); }

} // namespace ekinora::platform
