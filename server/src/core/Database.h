#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <variant>
#include <vector>

#include <nlohmann/json.hpp>

struct sqlite3;
struct sqlite3_stmt;

namespace ekinora::server {

using Json = nlohmann::ordered_json;

// A value bound to a statement parameter.
using SqlValue = std::variant<std::nullptr_t, std::int64_t, double, std::string>;

struct Migration {
    int version;
    std::string name;
    std::string sql;
};

// One SQLite connection shared by all request threads. Every call takes the connection's
// recursive mutex, so a transaction can run several statements through the same helpers.
// Statements are compiled once per SQL text and kept; each use binds its own arguments afresh.
class Database {
public:
    explicit Database(const std::string& path);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    const std::string& path() const { return m_path; }

    // Applies the migrations whose version is not yet in schema_migrations, each in its own
    // transaction, in ascending order. Returns how many were applied.
    int migrate(const std::vector<Migration>& migrations);
    std::vector<int> appliedMigrations();

    void exec(const std::string& sql);
    // Runs one statement; returns the number of rows changed.
    int execute(std::string_view sql, const std::vector<SqlValue>& args = {});
    // Rows as JSON objects keyed by column name (INTEGER, REAL, TEXT, NULL keep their types).
    Json query(std::string_view sql, const std::vector<SqlValue>& args = {});
    std::optional<Json> queryRow(std::string_view sql, const std::vector<SqlValue>& args = {});
    // First column of the first row, as an integer; fallback when there is no row.
    std::int64_t scalar(std::string_view sql, const std::vector<SqlValue>& args = {},
                        std::int64_t fallback = 0);
    std::int64_t lastInsertId();

    std::unique_lock<std::recursive_mutex> lock() const { return std::unique_lock(m_mutex); }

    // Runs f inside BEGIN IMMEDIATE ... COMMIT; rolls back and rethrows if f throws.
    template <class F> void transaction(F&& f) {
        auto guard = lock();
        exec("BEGIN IMMEDIATE");
        try {
            f();
            exec("COMMIT");
        } catch (...) {
            exec("ROLLBACK");
            throw;
        }
    }

private:
    struct TextHash {
        using is_transparent = void;
        size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };

    struct Prepared {
        sqlite3_stmt* stmt;
        bool kept; // false: not in the cache (it is full), the caller finalizes it
    };
    // The compiled statement for this SQL text, from the cache or newly kept in it. Called with the
    // mutex held; the statement is reset before the mutex is released, so no use overlaps another.
    Prepared statement(std::string_view sql);

    std::string m_path;
    sqlite3* m_db = nullptr;
    mutable std::recursive_mutex m_mutex;
    std::unordered_map<std::string, sqlite3_stmt*, TextHash, std::equal_to<>> m_statements;
};

} // namespace ekinora::server
