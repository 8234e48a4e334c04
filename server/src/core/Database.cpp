#include "core/Database.h"

#include <sqlite3.h>

#include <stdexcept>

namespace ekinora::server {

namespace {

// The more statements a connection keeps, the more memory their programs hold; the service's
// SQL texts are a few dozen, so this bound only guards against texts built from values.
constexpr size_t MaxKeptStatements = 256;

sqlite3_stmt* prepare(sqlite3* db, std::string_view sql, unsigned flags) {
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v3(db, sql.data(), int(sql.size()), flags, &stmt, nullptr) != SQLITE_OK) {
        sqlite3_finalize(stmt);
        throw std::runtime_error("cannot prepare SQL: " + std::string(sqlite3_errmsg(db)) + " [" +
                                 std::string(sql) + "]");
    }
    return stmt;
}

// One use of a statement: bound, stepped, then reset with its bindings cleared, so that the next use
// starts as a freshly prepared one would (parameters it does not bind are NULL), also after an error.
class Statement {
public:
    Statement(sqlite3* db, sqlite3_stmt* stmt, bool kept) : m_db(db), m_stmt(stmt), m_kept(kept) {}
    ~Statement() {
        if (!m_kept) {
            sqlite3_finalize(m_stmt);
            return;
        }
        sqlite3_reset(m_stmt);
        sqlite3_clear_bindings(m_stmt);
    }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    void bind(const std::vector<SqlValue>& args) {
        for (int i = 0; i < int(args.size()); ++i) {
            const int idx = i + 1;
            const SqlValue& v = args[size_t(i)];
            int rc = SQLITE_OK;
            if (std::holds_alternative<std::nullptr_t>(v))
                rc = sqlite3_bind_null(m_stmt, idx);
            else if (auto n = std::get_if<std::int64_t>(&v))
                rc = sqlite3_bind_int64(m_stmt, idx, *n);
            else if (auto d = std::get_if<double>(&v))
                rc = sqlite3_bind_double(m_stmt, idx, *d);
            else {
                const auto& s = std::get<std::string>(v);
                // The arguments outlive the use: the bindings are cleared before the call returns.
                rc = sqlite3_bind_text(m_stmt, idx, s.data(), int(s.size()), SQLITE_STATIC);
            }
            if (rc != SQLITE_OK)
                throw std::runtime_error("cannot bind SQL parameter: " + std::string(sqlite3_errmsg(m_db)));
        }
    }

    bool step() {
        const int rc = sqlite3_step(m_stmt);
        if (rc == SQLITE_ROW) return true;
        if (rc == SQLITE_DONE) return false;
        throw std::runtime_error("SQL error: " + std::string(sqlite3_errmsg(m_db)));
    }

    Json row() const {
        Json out = Json::object();
        const int n = sqlite3_column_count(m_stmt);
        for (int c = 0; c < n; ++c) {
            const char* name = sqlite3_column_name(m_stmt, c);
            switch (sqlite3_column_type(m_stmt, c)) {
            case SQLITE_INTEGER:
                out[name] = sqlite3_column_int64(m_stmt, c);
                break;
            case SQLITE_FLOAT:
                out[name] = sqlite3_column_double(m_stmt, c);
                break;
            case SQLITE_NULL:
                out[name] = nullptr;
                break;
            default: {
                auto text = reinterpret_cast<const char*>(sqlite3_column_text(m_stmt, c));
                out[name] = std::string(text, size_t(sqlite3_column_bytes(m_stmt, c)));
            }
            }
        }
        return out;
    }

    std::int64_t integer(int column) const { return sqlite3_column_int64(m_stmt, column); }

private:
    sqlite3* m_db;
    sqlite3_stmt* m_stmt;
    bool m_kept;
};

} // namespace

Database::Database(const std::string& path) : m_path(path) {
    // The connection is used only under m_mutex, so SQLite's own per-call locking of it is not needed.
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX;
    if (sqlite3_open_v2(path.c_str(), &m_db, flags, nullptr) != SQLITE_OK) {
        std::string why = m_db ? sqlite3_errmsg(m_db) : "out of memory";
        sqlite3_close(m_db);
        m_db = nullptr;
        throw std::runtime_error("cannot open database (" + path + "): " + why);
    }
    sqlite3_busy_timeout(m_db, 5000);
    exec("PRAGMA foreign_keys = ON");
    if (path != ":memory:" && !path.empty()) {
        exec("PRAGMA journal_mode = WAL");
        exec("PRAGMA synchronous = NORMAL");
    }
}

Database::~Database() {
    for (auto& [sql, stmt] : m_statements)
        sqlite3_finalize(stmt);
    sqlite3_close(m_db);
}

Database::Prepared Database::statement(std::string_view sql) {
    if (auto it = m_statements.find(sql); it != m_statements.end()) return {it->second, true};
    const bool room = m_statements.size() < MaxKeptStatements;
    sqlite3_stmt* stmt = prepare(m_db, sql, room ? SQLITE_PREPARE_PERSISTENT : 0);
    // A text without a statement (blank, only a comment) compiles to nothing; it is not kept.
    if (!room || !stmt) return {stmt, false};
    m_statements.emplace(std::string(sql), stmt);
    return {stmt, true};
}

void Database::exec(const std::string& sql) {
    auto guard = lock();
    char* error = nullptr;
    if (sqlite3_exec(m_db, sql.c_str(), nullptr, nullptr, &error) != SQLITE_OK) {
        std::string why = error ? error : "unknown error";
        sqlite3_free(error);
        throw std::runtime_error("SQL error: " + why);
    }
}

int Database::execute(std::string_view sql, const std::vector<SqlValue>& args) {
    auto guard = lock();
    const auto prepared = statement(sql);
    Statement st(m_db, prepared.stmt, prepared.kept);
    st.bind(args);
    while (st.step()) {
    }
    return sqlite3_changes(m_db);
}

Json Database::query(std::string_view sql, const std::vector<SqlValue>& args) {
    auto guard = lock();
    const auto prepared = statement(sql);
    Statement st(m_db, prepared.stmt, prepared.kept);
    st.bind(args);
    Json rows = Json::array();
    while (st.step())
        rows.push_back(st.row());
    return rows;
}

std::optional<Json> Database::queryRow(std::string_view sql, const std::vector<SqlValue>& args) {
    auto guard = lock();
    const auto prepared = statement(sql);
    Statement st(m_db, prepared.stmt, prepared.kept);
    st.bind(args);
    if (!st.step()) return std::nullopt;
    return st.row();
}

std::int64_t Database::scalar(std::string_view sql, const std::vector<SqlValue>& args,
                              std::int64_t fallback) {
    auto guard = lock();
    const auto prepared = statement(sql);
    Statement st(m_db, prepared.stmt, prepared.kept);
    st.bind(args);
    return st.step() ? st.integer(0) : fallback;
}

std::int64_t Database::lastInsertId() {
    auto guard = lock();
    return sqlite3_last_insert_rowid(m_db);
}

std::vector<int> Database::appliedMigrations() {
    std::vector<int> versions;
    for (const auto& row : query("SELECT version FROM schema_migrations ORDER BY version"))
        versions.push_back(row.at("version").get<int>());
    return versions;
}

int Database::migrate(const std::vector<Migration>& migrations) {
    auto guard = lock();
    exec("CREATE TABLE IF NOT EXISTS schema_migrations ("
         " version INTEGER PRIMARY KEY,"
         " name TEXT NOT NULL,"
         " applied_at TEXT NOT NULL DEFAULT (strftime('%Y-%m-%d %H:%M:%S', 'now')))");
    // The whole list is checked before anything runs: a later migration may need an earlier one's
    // tables, so one out of order would otherwise fail on SQL instead of on the order.
    int previous = 0;
    for (const auto& m : migrations) {
        if (m.version <= previous) throw std::logic_error("migration versions must ascend: " + m.name);
        previous = m.version;
    }
    int applied = 0;
    for (const auto& m : migrations) {
        if (scalar("SELECT COUNT(*) FROM schema_migrations WHERE version = ?", {std::int64_t(m.version)}) > 0)
            continue;
        transaction([&] {
            exec(m.sql);
            execute("INSERT INTO schema_migrations (version, name) VALUES (?, ?)",
                    {std::int64_t(m.version), m.name});
        });
        ++applied;
    }
    return applied;
}

} // namespace ekinora::server
