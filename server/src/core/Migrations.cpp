#include "core/Migrations.h"

namespace ekinora::server {

const std::vector<Migration>& migrations() {
    static const std::vector<Migration> list = {
        {1, "regions", R"sql(
CREATE TABLE cities (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    latitude REAL NOT NULL,
    longitude REAL NOT NULL
);
CREATE TABLE counties (
    id INTEGER PRIMARY KEY,
    city_id INTEGER NOT NULL REFERENCES cities(id),
    name TEXT NOT NULL,
    latitude REAL NOT NULL,
    longitude REAL NOT NULL
);
CREATE INDEX counties_city ON counties(city_id);
)sql"},
        {2, "accounts", R"sql(
CREATE TABLE users (
    id INTEGER PRIMARY KEY,
    phone TEXT NOT NULL UNIQUE,
    fullname TEXT NOT NULL,
    email TEXT,
    type TEXT NOT NULL CHECK (type IN ('farmer', 'loyalty', 'dealer', 'adminUser')),
    active INTEGER NOT NULL DEFAULT 1,
    city_id INTEGER REFERENCES cities(id),
    county_id INTEGER REFERENCES counties(id),
    region_fullname TEXT NOT NULL DEFAULT '',
    region_phonenumber TEXT NOT NULL DEFAULT '',
    menu TEXT NOT NULL DEFAULT '[]',
    etk_answered INTEGER NOT NULL DEFAULT 0,
    created_at TEXT NOT NULL DEFAULT (strftime('%Y-%m-%d %H:%M:%S', 'now'))
);
CREATE TABLE tokens (
    token TEXT PRIMARY KEY,
    user_id INTEGER NOT NULL REFERENCES users(id) ON DELETE CASCADE,
    created_at TEXT NOT NULL DEFAULT (strftime('%Y-%m-%d %H:%M:%S', 'now'))
);
CREATE INDEX tokens_user ON tokens(user_id);
)sql"},
        {3, "system", R"sql(
CREATE TABLE settings (
    key TEXT PRIMARY KEY,
    value TEXT NOT NULL
);
CREATE TABLE popups (
    id INTEGER PRIMARY KEY,
    code TEXT NOT NULL UNIQUE,
    header TEXT NOT NULL,
    content TEXT NOT NULL,
    file_path TEXT NOT NULL DEFAULT '',
    pest_id INTEGER,
    pest_file_path TEXT NOT NULL DEFAULT '',
    pest_name TEXT NOT NULL DEFAULT '',
    active INTEGER NOT NULL DEFAULT 0,
    created_at TEXT NOT NULL DEFAULT (strftime('%Y-%m-%d %H:%M:%S', 'now'))
);
)sql"},
    };
    return list;
}

} // namespace ekinora::server
