#include "system/Settings.h"

namespace ekinora::server::sys {

namespace {

const char* MaintenanceOn = "maintenance";
const char* MaintenanceText = "maintenance_text";
const char* ProbeDown = "probe_down";
const char* ProbeMessage = "probe_message";
const char* PublishedVersion = "published_version";
const char* VersionNotes = "version_notes";

const char* DefaultNotes =
    "Hava durumu ekranı yenilendi, ürün kataloğunda arama hızlandı ve küçük hatalar giderildi.";

} // namespace

void Settings::seed() {
    const std::pair<const char*, std::string> defaults[] = {
        {MaintenanceOn, "0"},
        {MaintenanceText, DefaultMaintenanceText},
        {ProbeDown, "0"},
        {ProbeMessage, DefaultProbeMessage},
        {PublishedVersion, DefaultPublishedVersion},
        {VersionNotes, DefaultNotes},
    };
    for (const auto& [key, value] : defaults)
        m_db.execute("INSERT OR IGNORE INTO settings (key, value) VALUES (?, ?)", {std::string(key), value});
}

std::string Settings::get(const std::string& key, const std::string& fallback) const {
    auto row = m_db.queryRow("SELECT value FROM settings WHERE key = ?", {key});
    return row ? row->at("value").get<std::string>() : fallback;
}

void Settings::set(const std::string& key, const std::string& value) {
    m_db.execute("INSERT INTO settings (key, value) VALUES (?, ?)"
                 " ON CONFLICT(key) DO UPDATE SET value = excluded.value",
                 {key, value});
}

Maintenance Settings::maintenance() const {
    return {get(MaintenanceOn) == "1", get(MaintenanceText, DefaultMaintenanceText)};
}

void Settings::setMaintenance(bool on, const std::string& text) {
    auto guard = m_db.lock();
    set(MaintenanceOn, on ? "1" : "0");
    set(MaintenanceText, text.empty() ? DefaultMaintenanceText : text);
}

Probe Settings::probe() const {
    return {get(ProbeDown) == "1", get(ProbeMessage, DefaultProbeMessage)};
}

void Settings::setProbeDown(bool down, const std::string& message) {
    auto guard = m_db.lock();
    set(ProbeDown, down ? "1" : "0");
    set(ProbeMessage, message.empty() ? DefaultProbeMessage : message);
}

std::string Settings::publishedVersion() const {
    return get(PublishedVersion, DefaultPublishedVersion);
}

void Settings::setPublishedVersion(const std::string& version) {
    set(PublishedVersion, version);
}

std::string Settings::versionNotes() const {
    return get(VersionNotes);
}

} // namespace ekinora::server::sys
