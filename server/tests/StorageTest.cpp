#include "accounts/Accounts.h"
#include "accounts/DemoAccounts.h"
#include "core/Database.h"
#include "core/Migrations.h"
#include "core/Server.h"
#include "regions/Regions.h"

#include <QTest>

#include "TestSupport.h"

#include <atomic>
#include <fstream>
#include <thread>

using namespace ekinora::server;
using namespace testing;

namespace {

std::unique_ptr<Database> seededDatabase(const std::string& path = ":memory:") {
    auto db = std::make_unique<Database>(path);
    db->migrate(migrations());
    regions::seed(*db, EKINORA_SERVER_DATA_DIR);
    accounts::seedDemoAccounts(*db);
    accounts::setDemoTokens(*db, true);
    return db;
}

} // namespace

class StorageTest : public QObject {
    Q_OBJECT

private slots:
    void migrationsRunOnceInOrder() {
        Database db(":memory:");
        QCOMPARE(db.migrate(migrations()), int(migrations().size()));
        QCOMPARE(db.migrate(migrations()), 0);
        std::vector<int> expected;
        for (const auto& m : migrations())
            expected.push_back(m.version);
        QVERIFY(db.appliedMigrations() == expected);

        // A later migration is picked up by a database that already has the earlier ones.
        auto extended = migrations();
        extended.push_back(
            {extended.back().version + 1, "extra", "CREATE TABLE extra (id INTEGER PRIMARY KEY);"});
        QCOMPARE(db.migrate(extended), 1);
        QCOMPARE(db.scalar("SELECT COUNT(*) FROM extra"), std::int64_t(0));
    }

    void failedMigrationLeavesNoTrace() {
        Database db(":memory:");
        db.migrate(migrations());
        auto broken = migrations();
        const int version = broken.back().version + 1;
        broken.push_back(
            {version, "broken", "CREATE TABLE half (id INTEGER); INSERT INTO nowhere VALUES (1);"});
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, db.migrate(broken));
        QCOMPARE(db.scalar("SELECT COUNT(*) FROM sqlite_master WHERE name = 'half'"), std::int64_t(0));
        QCOMPARE(
            db.scalar("SELECT COUNT(*) FROM schema_migrations WHERE version = ?", {std::int64_t(version)}),
            std::int64_t(0));

        auto unordered = migrations();
        std::swap(unordered.front(), unordered.back());
        Database fresh(":memory:");
        QVERIFY_THROWS_EXCEPTION(std::logic_error, fresh.migrate(unordered));
    }

    void regionsFollowTheDataFile() {
        auto db = seededDatabase();
        // County ids run 1..973 in the file's order.
        QCOMPARE(db->scalar("SELECT COUNT(*) FROM counties"), std::int64_t(973));
        QCOMPARE(db->scalar("SELECT COUNT(*) FROM counties WHERE id BETWEEN 1 AND 973"), std::int64_t(973));
        QCOMPARE(q(db->queryRow("SELECT c.name || '/' || k.name AS place FROM counties k"
                                " JOIN cities c ON c.id = k.city_id WHERE k.id = 1")
                       ->at("place")
                       .get<std::string>()),
                 QStringLiteral("Adana/Aladağ"));

        // Seeding again adds nothing.
        regions::seed(*db, EKINORA_SERVER_DATA_DIR);
        accounts::seedDemoAccounts(*db);
        QCOMPARE(db->scalar("SELECT COUNT(*) FROM counties"), std::int64_t(973));
        QCOMPARE(db->scalar("SELECT COUNT(*) FROM users"), std::int64_t(accounts::demoAccounts().size()));

        // A missing file is an error, and leaves nothing half done.
        Database empty(":memory:");
        empty.migrate(migrations());
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, regions::seed(empty, "/nonexistent"));
        QCOMPARE(empty.scalar("SELECT COUNT(*) FROM cities"), std::int64_t(0));
    }

    void tokensOfInactiveAccountsAreRefused() {
        auto db = seededDatabase();
        const auto& farmer = accounts::demoAccount("farmer");
        const auto id = accounts::userForToken(*db, farmer.token)->id;

        const std::string fresh = accounts::issueToken(*db, id);
        QCOMPARE(accounts::userForToken(*db, fresh)->id, id);
        QVERIFY(accounts::issueToken(*db, id) != fresh);

        db->execute("UPDATE users SET active = 0 WHERE id = ?", {id});
        QVERIFY(!accounts::userForToken(*db, farmer.token));
        QVERIFY(!accounts::userForToken(*db, fresh));
        QVERIFY(!accounts::userForToken(*db, ""));
        QVERIFY(!accounts::userForToken(*db, "no-such-token"));
    }

    void fileDatabaseKeepsStateAcrossRestarts() {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const std::string path = dir.filePath("service.db").toStdString();
        ServerOptions options;
        options.dbPath = path;

        {
            Server server(options);
            server.start();
            server.setMaintenance(true, "Bakımdayız");
            server.setPublishedVersion("2.1.0");
        }
        std::int64_t users = 0;
        {
            Database db(path);
            users = db.scalar("SELECT COUNT(*) FROM users");
            QCOMPARE(q(db.queryRow("PRAGMA journal_mode")->at("journal_mode").get<std::string>()),
                     QStringLiteral("wal"));
            QCOMPARE(db.scalar("PRAGMA foreign_keys"), std::int64_t(1));
            db.execute("INSERT INTO users (phone, fullname, type, menu) VALUES ('05009998877', 'Yeni "
                       "Kullanıcı', 'farmer', '[0]')");
            // Foreign keys are enforced.
            QVERIFY_THROWS_EXCEPTION(std::runtime_error,
                                     db.execute("INSERT INTO tokens (token, user_id) VALUES ('t', 123456)"));
        }
        {
            Server server(options);
            server.start();
            httplib::Client client("127.0.0.1", server.port());
            auto reply = testing::Reply::from(client.Get("/api/?do=maintenance"));
            QCOMPARE(q(reply.json["message"]["text"].get<std::string>()), QStringLiteral("Bakımdayız"));
            reply = testing::Reply::from(client.Get("/api/?do=app/version"));
            QCOMPARE(q(reply.json["data"]["version"].get<std::string>()), QStringLiteral("2.1.0"));
        }
        Database db(path);
        // The added account is kept and the seeds are not run twice.
        QCOMPARE(db.scalar("SELECT COUNT(*) FROM users"), users + 1);
        QCOMPARE(db.scalar("SELECT COUNT(*) FROM popups"), std::int64_t(2));
        QCOMPARE(db.scalar("SELECT COUNT(*) FROM cities"), std::int64_t(81));
        QCOMPARE(db.scalar("SELECT COUNT(*) FROM schema_migrations"), std::int64_t(migrations().size()));
    }

    void databaseSurvivesConcurrentUse() {
        auto db = seededDatabase();
        db->exec("CREATE TABLE counter (t INTEGER, n INTEGER)");
        std::vector<std::thread> threads;
        std::atomic<int> wrongCounts{0};
        for (int t = 0; t < 8; ++t)
            threads.emplace_back([&, t] {
                for (int i = 0; i < 200; ++i) {
                    db->transaction([&] {
                        db->execute("INSERT INTO counter VALUES (?, ?)", {std::int64_t(t), std::int64_t(i)});
                        accounts::userForToken(*db, accounts::demoAccount("dealer").token);
                    });
                    // The same statements serve every thread, each with its own arguments.
                    if (db->scalar("SELECT COUNT(*) FROM counter WHERE t = ?", {std::int64_t(t)}) != i + 1)
                        ++wrongCounts;
                }
            });
        for (auto& t : threads)
            t.join();
        QCOMPARE(db->scalar("SELECT COUNT(*) FROM counter"), std::int64_t(1600));
        QCOMPARE(wrongCounts.load(), 0);
    }

    // Statements are compiled once per text and used again: each use must start as a fresh one would.
    void keptStatementsStartClean() {
        Database db(":memory:");
        db.exec("CREATE TABLE t (id INTEGER PRIMARY KEY, a TEXT, b INTEGER UNIQUE)");
        const std::string insert = "INSERT INTO t (a, b) VALUES (?, ?)";
        db.execute(insert, {std::string("bir"), std::int64_t(1)});
        // A parameter the next use leaves out is NULL, not the previous use's value.
        db.execute(insert, {std::string("iki")});
        QVERIFY(db.queryRow("SELECT b FROM t WHERE a = 'iki'")->at("b").is_null());
        // A use that fails leaves the statement usable.
        QVERIFY_THROWS_EXCEPTION(std::runtime_error,
                                 db.execute(insert, {std::string("üç"), std::int64_t(1)}));
        db.execute(insert, {std::string("üç"), std::int64_t(3)});
        QCOMPARE(db.scalar("SELECT COUNT(*) FROM t"), std::int64_t(3));

        // A kept statement follows a change of the schema.
        const std::string byB = "SELECT * FROM t WHERE b = ?";
        QCOMPARE(db.queryRow(byB, {std::int64_t(3)})->size(), size_t(3));
        db.exec("ALTER TABLE t ADD COLUMN c TEXT DEFAULT 'yeni'");
        QCOMPARE(q(db.queryRow(byB, {std::int64_t(3)})->at("c").get<std::string>()), QStringLiteral("yeni"));

        // More texts than are kept still run, and the kept ones still work.
        for (int i = 0; i < 300; ++i)
            QCOMPARE(db.scalar("SELECT " + std::to_string(i) + " + ?", {std::int64_t(1)}),
                     std::int64_t(i + 1));
        db.execute(insert, {std::string("dört"), std::int64_t(4)});
        QCOMPARE(db.scalar("SELECT COUNT(*) FROM t"), std::int64_t(4));
        // Bad SQL and a text without a statement fail as errors, also when asked for again.
        for (int i = 0; i < 2; ++i) {
            QVERIFY_THROWS_EXCEPTION(std::runtime_error, db.scalar("SELEC 1"));
            QVERIFY_THROWS_EXCEPTION(std::runtime_error, db.scalar("-- yalnızca yorum"));
        }
    }
};

QTEST_GUILESS_MAIN(StorageTest)
#include "StorageTest.moc"
