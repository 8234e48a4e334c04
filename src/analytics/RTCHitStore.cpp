#include "RTCHitStore.h"

#include "Log.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>

#include <sqlite3.h>

namespace ekinora::analytics {

namespace {

const char* const SchemaStatements[] = {
    "CREATE TABLE IF NOT EXISTS HITS ("
    " ID INTEGER PRIMARY KEY ASC,"
    " METHOD TEXT NOT NULL,"
    " HEADERS BLOB NULL,"
    " URL TEXT NOT NULL,"
    " BODY TEXT NULL,"
    " HIT_TIME REAL NOT NULL,"
    " FIRST_DISPATCH_TIME REAL NULL,"
    " LAST_DISPATCH_TIME REAL NULL,"
    " RETRY_COUNT INTEGER NOT NULL DEFAULT 0,"
    " UNIQUE_ID TEXT UNIQUE NULL);",
    "CREATE TABLE IF NOT EXISTS UNIQUE_IDS (UNIQUE_ID TEXT PRIMARY KEY);",
    "CREATE TABLE IF NOT EXISTS DB_VERSION_INFO (VERSION INTEGER NOT NULL, SUBVERSION INTEGER NOT NULL);",
    "INSERT INTO DB_VERSION_INFO (VERSION, SUBVERSION) SELECT 5, 0 WHERE NOT EXISTS (SELECT 1 FROM DB_VERSION_INFO);",
    "CREATE TABLE IF NOT EXISTS PENDING_EVENTS ("
    " ID INTEGER PRIMARY KEY ASC,"
    " NAME TEXT NOT NULL,"
    " ORIGIN TEXT NULL,"
    " PARAMETERS BLOB,"
    " TIMESTAMP REAL NOT NULL,"
    " ALLOW_PASSTHROUGH INTEGER NOT NULL DEFAULT 0);",
    "CREATE INDEX IF NOT EXISTS HITS_BY_HIT_TIME ON HITS (HIT_TIME);",
    "CREATE INDEX IF NOT EXISTS HITS_BY_LAST_DISPATCH_TIME ON HITS (LAST_DISPATCH_TIME);",
    "CREATE INDEX IF NOT EXISTS PENDING_EVENTS_BY_TIMESTAMP ON PENDING_EVENTS (TIMESTAMP);",
    // A hit with a unique id goes out once, also after it has left HITS.
    "CREATE TRIGGER IF NOT EXISTS SAVE_UNIQUE_ON_DELETE AFTER DELETE ON HITS"
    " WHEN OLD.UNIQUE_ID IS NOT NULL"
    " BEGIN INSERT OR IGNORE INTO UNIQUE_IDS (UNIQUE_ID) VALUES (OLD.UNIQUE_ID); END;",
};

const char* const AddHitSql =
    "INSERT OR IGNORE INTO HITS (METHOD, HEADERS, URL, BODY, HIT_TIME, UNIQUE_ID)  SELECT ?1, ?2, ?3, ?4, ?5, ?6  "
    "WHERE ?6 IS NULL    OR  NOT EXISTS (SELECT 1 FROM UNIQUE_IDS WHERE UNIQUE_ID = ?6);";
const char* const OldestHitsSql = "SELECT * FROM HITS ORDER BY HIT_TIME ASC LIMIT ?1;";
const char* const NotRecentlyTriedSql =
    "SELECT * FROM HITS  WHERE LAST_DISPATCH_TIME IS NULL  OR LAST_DISPATCH_TIME <= ?1  ORDER BY HIT_TIME ASC  "
    "LIMIT ?2;";
const char* const FailedHitsSql =
    "UPDATE HITS SET  FIRST_DISPATCH_TIME =  COALESCE(FIRST_DISPATCH_TIME, ?1),  LAST_DISPATCH_TIME = ?1,  "
    "RETRY_COUNT = RETRY_COUNT + 1  WHERE ID IN (%1);";
const char* const DeleteHitsSql = "DELETE FROM HITS WHERE ID IN (%1);";
const char* const AddEventSql = "INSERT INTO PENDING_EVENTS  (NAME, ORIGIN, PARAMETERS, TIMESTAMP, ALLOW_PASSTHROUGH) "
                                "VALUES   ( ?1, ?2, ?3, ?4, ?5);";
const char* const EventsSql = "SELECT * FROM PENDING_EVENTS  WHERE TIMESTAMP >= ?1  ORDER BY TIMESTAMP ASC LIMIT ?2;";
const char* const ClearEventsSql = "DELETE FROM PENDING_EVENTS;";

void bind(sqlite3_stmt* stmt, int index, const QVariant& value) {
    if (!value.isValid() || value.isNull()) {
        sqlite3_bind_null(stmt, index);
        return;
    }
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Bool:
        sqlite3_bind_int64(stmt, index, value.toLongLong());
        break;
    case QMetaType::Double:
        sqlite3_bind_double(stmt, index, value.toDouble());
        break;
    case QMetaType::QByteArray: {
        const QByteArray bytes = value.toByteArray();
        sqlite3_bind_blob(stmt, index, bytes.constData(), int(bytes.size()), SQLITE_TRANSIENT);
        break;
    }
    default: {
        const QByteArray text = value.toString().toUtf8();
        sqlite3_bind_text(stmt, index, text.constData(), int(text.size()), SQLITE_TRANSIENT);
    }
    }
}

QString idList(const QList<RTCHit>& hits) {
    QStringList ids;
    for (const RTCHit& hit : hits) ids << QString::number(hit.ID);
    return ids.join(QStringLiteral(", "));
}

QByteArray jsonBlob(const QVariantMap& map) {
    return QJsonDocument(QJsonObject::fromVariantMap(map)).toJson(QJsonDocument::Compact);
}

QVariantMap mapFromBlob(sqlite3_stmt* stmt, int column) {
    if (sqlite3_column_type(stmt, column) == SQLITE_NULL) return {};
    const QByteArray bytes(static_cast<const char*>(sqlite3_column_blob(stmt, column)), sqlite3_column_bytes(stmt, column));
    return QJsonDocument::fromJson(bytes).object().toVariantMap();
}

QString textColumn(sqlite3_stmt* stmt, int column) {
    if (sqlite3_column_type(stmt, column) == SQLITE_NULL) return {};
    return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt, column)),
                             sqlite3_column_bytes(stmt, column));
}

std::optional<double> realColumn(sqlite3_stmt* stmt, int column) {
    if (sqlite3_column_type(stmt, column) == SQLITE_NULL) return std::nullopt;
    return sqlite3_column_double(stmt, column);
}

} // namespace

RTCHitStore::RTCHitStore(const QString& directory, std::shared_ptr<Clock> clock)
    : m_path(QDir(directory).filePath(QStringLiteral("RTCv5.sql"))), m_clock(std::move(clock)),
      m_queue(std::make_unique<SerialQueue>(QStringLiteral("dbOperationsSerialQueue"))) {
    QDir().mkpath(directory);
    m_queue->async([this] { loadDatabase(); });
}

RTCHitStore::~RTCHitStore() {
    m_queue->sync([this] {
        sqlite3_close(m_db);
        m_db = nullptr;
    });
}

void RTCHitStore::sync() {
    m_queue->sync([] {});
}

bool RTCHitStore::loadDatabase() {
    if (m_db) return true;
    if (sqlite3_open(m_path.toUtf8().constData(), &m_db) != SQLITE_OK) {
        log(QStringLiteral("Failed to open tag storage: %1").arg(QString::fromUtf8(sqlite3_errmsg(m_db))));
        sqlite3_close(m_db);
        m_db = nullptr;
        return false;
    }
    sqlite3_busy_timeout(m_db, 5000);
    sqlite3_exec(m_db, "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL;", nullptr, nullptr, nullptr);
    for (const char* sql : SchemaStatements) {
        char* message = nullptr;
        if (sqlite3_exec(m_db, sql, nullptr, nullptr, &message) != SQLITE_OK) {
            log(QStringLiteral("Invalid sql statement: %1\nmessage: %2").arg(QString::fromUtf8(sql), QString::fromUtf8(message)));
            sqlite3_free(message);
            return false;
        }
    }
    return true;
}

bool RTCHitStore::run(const QString& sql, const QList<QVariant>& arguments, const char* failureText) {
    if (!loadDatabase()) return false;
    sqlite3_stmt* stmt = nullptr;
    const QByteArray text = sql.toUtf8();
    if (sqlite3_prepare_v2(m_db, text.constData(), -1, &stmt, nullptr) != SQLITE_OK) {
        log(QStringLiteral("Invalid sql statement: %1\nmessage: %2").arg(sql, QString::fromUtf8(sqlite3_errmsg(m_db))));
        return false;
    }
    for (int i = 0; i < arguments.size(); ++i) bind(stmt, i + 1, arguments[i]);
    const bool ok = sqlite3_step(stmt) == SQLITE_DONE;
    if (!ok && failureText) log(QString::fromUtf8(failureText).arg(QString::fromUtf8(sqlite3_errmsg(m_db))));
    sqlite3_finalize(stmt);
    return ok;
}

QList<RTCHit> RTCHitStore::selectHits(const char* sql, const QList<QVariant>& arguments) {
    QList<RTCHit> hits;
    if (!loadDatabase()) return hits;
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v2(m_db, sql, -1, &stmt, nullptr) != SQLITE_OK) {
        log(QStringLiteral("Invalid sql statement: %1\nmessage: %2")
                .arg(QString::fromUtf8(sql), QString::fromUtf8(sqlite3_errmsg(m_db))));
        return hits;
    }
    for (int i = 0; i < arguments.size(); ++i) bind(stmt, i + 1, arguments[i]);
    while (sqlite3_step(stmt) == SQLITE_ROW) {
        // Columns in the table's order: SELECT * names them.
        RTCHit hit;
        hit.ID = sqlite3_column_int64(stmt, 0);
        hit.method = textColumn(stmt, 1);
        hit.headers = mapFromBlob(stmt, 2);
        hit.URL = textColumn(stmt, 3);
        hit.body = textColumn(stmt, 4);
        hit.hitTime = sqlite3_column_double(stmt, 5);
        hit.firstDispatchTime = realColumn(stmt, 6);
        hit.lastDispatchTime = realColumn(stmt, 7);
        hit.retryCount = sqlite3_column_int(stmt, 8);
        hit.uniqueId = textColumn(stmt, 9);
        hits << hit;
    }
    sqlite3_finalize(stmt);
    return hits;
}

void RTCHitStore::addHit(const RTCHit& hit, DoneCallback done) {
    m_queue->async([this, hit, done] {
        const double hitTime = hit.hitTime > 0 ? hit.hitTime : m_clock->now();
        const bool ok = run(QString::fromUtf8(AddHitSql),
                            {hit.method, hit.headers.isEmpty() ? QVariant() : QVariant(jsonBlob(hit.headers)), hit.URL,
                             hit.body.isNull() ? QVariant() : QVariant(hit.body), hitTime,
                             hit.uniqueId.isEmpty() ? QVariant() : QVariant(hit.uniqueId)},
                            "Failed while saving tag to tag storage: %1");
        // An ignored hit (its unique id went out already) is not saved.
        if (ok && sqlite3_changes(m_db) > 0) log(QStringLiteral("Saved tag for URL %1").arg(hit.URL));
        if (done) done(ok);
    });
}

void RTCHitStore::addHitWithURLString(const QString& url, const QString& uniqueId, DoneCallback done) {
    RTCHit hit;
    hit.URL = url;
    hit.uniqueId = uniqueId;
    addHit(hit, std::move(done));
}

void RTCHitStore::fetchHitsWithLimit(int limit, HitsCallback callback) {
    m_queue->async([this, limit, callback] { callback(selectHits(OldestHitsSql, {limit})); });
}

void RTCHitStore::fetchNotRecentlyAttemptedHitsWithLimit(int limit, HitsCallback callback) {
    m_queue->async([this, limit, callback] {
        callback(selectHits(NotRecentlyTriedSql, {m_clock->now() - RetryDelay, limit}));
    });
}

void RTCHitStore::deleteHits(const QList<RTCHit>& hits, DoneCallback done) {
    m_queue->async([this, hits, done] {
        const bool ok = hits.isEmpty() || run(QString::fromUtf8(DeleteHitsSql).arg(idList(hits)), {}, nullptr);
        if (done) done(ok);
    });
}

void RTCHitStore::updateFailedHits(const QList<RTCHit>& hits, DoneCallback done) {
    m_queue->async([this, hits, done] {
        const bool ok =
            hits.isEmpty() || run(QString::fromUtf8(FailedHitsSql).arg(idList(hits)), {m_clock->now()}, nullptr);
        if (done) done(ok);
    });
}

void RTCHitStore::addPendingEvent(const RTCPendingEvent& event, DoneCallback done) {
    m_queue->async([this, event, done] {
        const bool ok = run(QString::fromUtf8(AddEventSql),
                            {event.name, event.origin.isEmpty() ? QVariant() : QVariant(event.origin),
                             QVariant(jsonBlob(event.parameters)), event.timestamp > 0 ? event.timestamp : m_clock->now(),
                             event.allowPassthrough ? 1 : 0},
                            "Failed to save pending event to storage: %1");
        if (done) done(ok);
    });
}

void RTCHitStore::fetchPendingEventsToCallback(EventsCallback callback) {
    m_queue->async([this, callback] {
        QList<RTCPendingEvent> events;
        sqlite3_stmt* stmt = nullptr;
        if (loadDatabase() && sqlite3_prepare_v2(m_db, EventsSql, -1, &stmt, nullptr) == SQLITE_OK) {
            sqlite3_bind_double(stmt, 1, m_clock->now() - PendingEventAge);
            sqlite3_bind_int(stmt, 2, PendingEventLimit);
            while (sqlite3_step(stmt) == SQLITE_ROW) {
                RTCPendingEvent event;
                event.ID = sqlite3_column_int64(stmt, 0);
                event.name = textColumn(stmt, 1);
                event.origin = textColumn(stmt, 2);
                event.parameters = mapFromBlob(stmt, 3);
                event.timestamp = sqlite3_column_double(stmt, 4);
                event.allowPassthrough = sqlite3_column_int(stmt, 5) != 0;
                events << event;
            }
        } else if (m_db) {
            log(QStringLiteral("Invalid sql statement: %1\nmessage: %2")
                    .arg(QString::fromUtf8(EventsSql), QString::fromUtf8(sqlite3_errmsg(m_db))));
        }
        sqlite3_finalize(stmt);
        callback(events);
    });
}

void RTCHitStore::clearPendingEvents(DoneCallback done) {
    m_queue->async([this, done] {
        const bool ok = run(QString::fromUtf8(ClearEventsSql), {}, nullptr);
        if (done) done(ok);
    });
}

} // namespace ekinora::analytics
