#pragma once

#include "RAIHit.h"

#include <QString>

#include <mutex>

struct sqlite3;
struct sqlite3_stmt;

namespace ekinora::analytics {

// The persistent hit queue: one SQLite file. Added hits form a pending change that save() commits,
// so a hit counts as persisted once save() has answered. Every call is serialised on the store's
// own lock, so the store may be used from any thread.
class RAIDataStore {
public:
    // Opens or creates the file; on failure isOpen() is false and every call fails.
    explicit RAIDataStore(const QString& path);
    ~RAIDataStore();
    RAIDataStore(const RAIDataStore&) = delete;
    RAIDataStore& operator=(const RAIDataStore&) = delete;

    bool isOpen() const { return m_db != nullptr; }
    QString path() const { return m_path; }

    bool addHit(const Parameters& parameters, double timestamp, QString* error = nullptr);
    // Oldest first.
    QList<RAIHit> fetchHitsWithLimit(int limit, QString* error = nullptr);
    bool deleteHitsWithIds(const QList<qint64>& ids, QString* error = nullptr);
    bool deleteAllHits(QString* error = nullptr);
    qint64 hitCount(QString* error = nullptr);
    // With maxHitCount set (above 0) and exceeded, deletes the oldest surplus.
    bool deleteExcessHits(QString* error = nullptr);
    bool save(QString* error = nullptr);

    qint64 maxHitCount() const { return m_maxHitCount; }
    void setMaxHitCount(qint64 count) { m_maxHitCount = count; }

    // The next number of the hits of one tracking id and client id, 1 for the first; kept in the file.
    qint64 nextHitNumber(const QString& trackingId, const QString& clientId, QString* error = nullptr);

private:
    bool exec(const char* sql, QString* error);
    bool begin(QString* error);
    bool fail(QString* error, const char* what);

    QString m_path;
    sqlite3* m_db = nullptr;
    sqlite3_stmt* m_insert = nullptr;
    sqlite3_stmt* m_fetch = nullptr;
    std::recursive_mutex m_mutex;
    bool m_inTransaction = false;
    qint64 m_count = -1; // cached; -1 until read
    qint64 m_maxHitCount = 0;
};

} // namespace ekinora::analytics
