#include "RAIDataStore.h"

#include "Log.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <sqlite3.h>

namespace ekinora::analytics {

namespace {

QByteArray encodeParameters(const Parameters& parameters) {
    QJsonObject object;
    for (auto it = parameters.begin(); it != parameters.end(); ++it) object.insert(it.key(), it.value());
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

Parameters decodeParameters(const QByteArray& text) {
    Parameters parameters;
    const QJsonObject object = QJsonDocument::fromJson(text).object();
    for (auto it = object.begin(); it != object.end(); ++it) parameters.insert(it.key(), it.value().toString());
    return parameters;
}

QString idList(const QList<qint64>& ids) {
    QStringList parts;
    parts.reserve(ids.size());
    for (qint64 id : ids) parts << QString::number(id);
    return parts.join(QLatin1Char(','));
}

} // namespace

RAIDataStore::RAIDataStore(const QString& path) : m_path(path) {
    if (sqlite3_open_v2(path.toUtf8().constData(), &m_db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_FULLMUTEX,
                        nullptr) != SQLITE_OK) {
        log(QStringLiteral("Hit store cannot be opened: %1").arg(QString::fromUtf8(sqlite3_errmsg(m_db))));
        sqlite3_close(m_db);
        m_db = nullptr;
        return;
    }
    sqlite3_busy_timeout(m_db, 5000);
    // A committed hit survives the process being killed; a power cut may lose the last commits.
    QString error;
    const bool ready = exec("PRAGMA journal_mode=WAL", &error) && exec("PRAGMA synchronous=NORMAL", &error) &&
                       exec("CREATE TABLE IF NOT EXISTS hits ("
                            " id INTEGER PRIMARY KEY AUTOINCREMENT,"
                            " parameters TEXT NOT NULL,"
                            " hit_time REAL NOT NULL)",
                            &error) &&
                       exec("CREATE INDEX IF NOT EXISTS hits_by_time ON hits (hit_time, id)", &error) &&
                       exec("CREATE TABLE IF NOT EXISTS hit_numbers ("
                            " tracking_id TEXT NOT NULL,"
                            " client_id TEXT NOT NULL,"
                            " number INTEGER NOT NULL,"
                            " PRIMARY KEY (tracking_id, client_id))",
                            &error);
    if (!ready ||
        sqlite3_prepare_v2(m_db, "INSERT INTO hits (parameters, hit_time) VALUES (?1, ?2)", -1, &m_insert, nullptr) !=
            SQLITE_OK ||
        sqlite3_prepare_v2(m_db, "SELECT id, parameters, hit_time FROM hits ORDER BY hit_time ASC, id ASC LIMIT ?1", -1,
                           &m_fetch, nullptr) != SQLITE_OK) {
        log(QStringLiteral("Hit store cannot be prepared: %1").arg(error.isEmpty() ? QString::fromUtf8(sqlite3_errmsg(m_db)) : error));
        sqlite3_finalize(m_insert);
        sqlite3_finalize(m_fetch);
        m_insert = m_fetch = nullptr;
        sqlite3_close(m_db);
        m_db = nullptr;
    }
}

RAIDataStore::~RAIDataStore() {
    if (!m_db) return;
    if (m_inTransaction) save();
    sqlite3_finalize(m_insert);
    sqlite3_finalize(m_fetch);
    sqlite3_close(m_db);
}

bool RAIDataStore::fail(QString* error, const char* what) {
    if (error) *error = QStringLiteral("%1: %2").arg(QLatin1String(what), m_db ? QString::fromUtf8(sqlite3_errmsg(m_db)) : QStringLiteral("no database"));
    return false;
}

bool RAIDataStore::exec(const char* sql, QString* error) {
    char* message = nullptr;
    if (sqlite3_exec(m_db, sql, nullptr, nullptr, &message) == SQLITE_OK) return true;
    if (error) *error = QString::fromUtf8(message ? message : "");
    sqlite3_free(message);
    return false;
}

bool RAIDataStore::begin(QString* error) {
    if (m_inTransaction) return true;
    if (!exec("BEGIN", error)) return false;
    m_inTransaction = true;
    return true;
}

bool RAIDataStore::addHit(const Parameters& parameters, double timestamp, QString* error) {
    std::lock_guard guard(m_mutex);
    if (!m_db) return fail(error, "add hit");
    if (!begin(error)) return false;
    const QByteArray text = encodeParameters(parameters);
    sqlite3_bind_text(m_insert, 1, text.constData(), int(text.size()), SQLITE_TRANSIENT);
    sqlite3_bind_double(m_insert, 2, timestamp);
    const int rc = sqlite3_step(m_insert);
    sqlite3_reset(m_insert);
    if (rc != SQLITE_DONE) return fail(error, "add hit");
    if (m_count >= 0) ++m_count;
    return true;
}

bool RAIDataStore::save(QString* error) {
    std::lock_guard guard(m_mutex);
    if (!m_db) return fail(error, "save");
    if (!m_inTransaction) return true;
    m_inTransaction = false;
    if (exec("COMMIT", error)) return true;
    exec("ROLLBACK", nullptr);
    m_count = -1;
    return false;
}

QList<RAIHit> RAIDataStore::fetchHitsWithLimit(int limit, QString* error) {
    std::lock_guard guard(m_mutex);
    QList<RAIHit> hits;
    if (!m_db) {
        fail(error, "fetch hits");
        return hits;
    }
    sqlite3_bind_int64(m_fetch, 1, limit);
    int rc;
    while ((rc = sqlite3_step(m_fetch)) == SQLITE_ROW) {
        RAIHit hit;
        hit.hitId = sqlite3_column_int64(m_fetch, 0);
        hit.parameters = decodeParameters(QByteArray(reinterpret_cast<const char*>(sqlite3_column_text(m_fetch, 1)),
                                                     sqlite3_column_bytes(m_fetch, 1)));
        hit.timestamp = sqlite3_column_double(m_fetch, 2);
        hits.append(std::move(hit));
    }
    sqlite3_reset(m_fetch);
    if (rc != SQLITE_DONE) fail(error, "fetch hits");
    return hits;
}

bool RAIDataStore::deleteHitsWithIds(const QList<qint64>& ids, QString* error) {
    std::lock_guard guard(m_mutex);
    if (!m_db) return fail(error, "delete hits");
    if (ids.isEmpty()) return true;
    // Ids are integers of our own, so they are written into the statement.
    const QByteArray sql = QStringLiteral("DELETE FROM hits WHERE id IN (%1)").arg(idList(ids)).toUtf8();
    if (!exec(sql.constData(), error)) return false;
    if (m_count >= 0) m_count = std::max<qint64>(0, m_count - sqlite3_changes(m_db));
    return true;
}

bool RAIDataStore::deleteAllHits(QString* error) {
    std::lock_guard guard(m_mutex);
    if (!m_db) return fail(error, "delete all hits");
    if (!exec("DELETE FROM hits", error)) return false;
    m_count = 0;
    return true;
}

qint64 RAIDataStore::hitCount(QString* error) {
    std::lock_guard guard(m_mutex);
    if (!m_db) return fail(error, "count hits"), 0;
    if (m_count >= 0) return m_count;
    sqlite3_stmt* stmt = nullptr;
    sqlite3_prepare_v2(m_db, "SELECT COUNT(*) FROM hits", -1, &stmt, nullptr);
    qint64 count = 0;
    if (stmt && sqlite3_step(stmt) == SQLITE_ROW) count = sqlite3_column_int64(stmt, 0);
    else fail(error, "count hits");
    sqlite3_finalize(stmt);
    m_count = count;
    return count;
}

bool RAIDataStore::deleteExcessHits(QString* error) {
    std::lock_guard guard(m_mutex);
    if (m_maxHitCount <= 0) return true;
    const qint64 count = hitCount(error);
    if (count <= m_maxHitCount) return true;
    log(QStringLiteral("Deleting excess hits."));
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v2(m_db,
                           "DELETE FROM hits WHERE id IN (SELECT id FROM hits ORDER BY hit_time ASC, id ASC LIMIT ?1)",
                           -1, &stmt, nullptr) != SQLITE_OK)
        return fail(error, "delete excess hits");
    sqlite3_bind_int64(stmt, 1, count - m_maxHitCount);
    const int rc = sqlite3_step(stmt);
    sqlite3_finalize(stmt);
    if (rc != SQLITE_DONE) return fail(error, "delete excess hits");
    m_count = -1;
    return true;
}

qint64 RAIDataStore::nextHitNumber(const QString& trackingId, const QString& clientId, QString* error) {
    std::lock_guard guard(m_mutex);
    if (!m_db || !begin(error)) return fail(error, "hit number"), 0;
    sqlite3_stmt* stmt = nullptr;
    qint64 number = 0;
    if (sqlite3_prepare_v2(m_db,
                           "INSERT INTO hit_numbers (tracking_id, client_id, number) VALUES (?1, ?2, 1)"
                           " ON CONFLICT (tracking_id, client_id) DO UPDATE SET number = number + 1"
                           " RETURNING number",
                           -1, &stmt, nullptr) == SQLITE_OK) {
        const QByteArray tid = trackingId.toUtf8(), cid = clientId.toUtf8();
        sqlite3_bind_text(stmt, 1, tid.constData(), int(tid.size()), SQLITE_TRANSIENT);
        sqlite3_bind_text(stmt, 2, cid.constData(), int(cid.size()), SQLITE_TRANSIENT);
        if (sqlite3_step(stmt) == SQLITE_ROW) number = sqlite3_column_int64(stmt, 0);
        else fail(error, "hit number");
    } else {
        fail(error, "hit number");
    }
    sqlite3_finalize(stmt);
    return number;
}

} // namespace ekinora::analytics
