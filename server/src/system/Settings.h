#pragma once

#include "core/Database.h"

#include <string>

namespace ekinora::server::sys {

inline const std::string DefaultMaintenanceText =
    "Sistemimizde bakım çalışması yapılmaktadır. Lütfen daha sonra tekrar deneyiniz.";
inline const std::string DefaultProbeMessage =
    "Sistem şu anda hizmet veremiyor. Lütfen daha sonra tekrar deneyiniz.";
inline const std::string DefaultPublishedVersion = "1.4.0";

struct Maintenance {
    bool on = false;
    std::string text;
};

struct Probe {
    bool down = false;
    std::string message;
};

// The service-wide switches, kept in the settings table so that every request thread and a
// restarted service see the same values.
class Settings {
public:
    explicit Settings(Database& db) : m_db(db) {}

    // Writes the defaults of keys that are missing.
    void seed();

    std::string get(const std::string& key, const std::string& fallback = {}) const;
    void set(const std::string& key, const std::string& value);

    Maintenance maintenance() const;
    void setMaintenance(bool on, const std::string& text); // empty text: the default text
    Probe probe() const;
    void setProbeDown(bool down, const std::string& message); // empty message: the default one
    std::string publishedVersion() const;
    void setPublishedVersion(const std::string& version);
    std::string versionNotes() const;

private:
    Database& m_db;
};

} // namespace ekinora::server::sys
