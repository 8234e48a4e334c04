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
using testing::q;

namespace {

std::unique_ptr<Database> seededDatabase(const std::string& path = ":memory:") {
    auto db = std::make_unique<Database>(path);
    db->migrate(migrations());
    regions::seed(*db, EKINORA_SERVER_DATA_DIR);
    accounts::seedDemoAccounts(*db);
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
        QCOMPARE(db->scalar("SELECT COUNT(*) FROM cities"), std::int64_t(81));
        QCOMPARE(db->scalar("SELECT COUNT(*) FROM counties"), std::int64_t(973));
        // County ids run 1..973 in the file's order; city ids are the file's.
        QCOMPARE(db->scalar("SELECT MIN(id) FROM counties"), std::int64_t(1));
        QCOMPARE(db->scalar("SELECT MAX(id) FROM counties"), std::int64_t(973));
        auto first = db->queryRow("SELECT k.name AS county, c.name AS city FROM counties k"
                                  " JOIN cities c ON c.id = k.city_id WHERE k.id = 1");
        QCOMPARE(q(first->at("city").get<std::string>()), QStringLiteral("Adana"));
        QCOMPARE(q(first->at("county").get<std::string>()), QStringLiteral("Aladağ"));
        QCOMPARE(q(db->queryRow("SELECT name FROM cities WHERE id = 35")->at("name").get<std::string>()),
                 QStringLiteral("İzmir"));
        QCOMPARE(db->scalar("SELECT COUNT(*) FROM counties WHERE city_id = 42"), std::int64_t(31));

        // Seeding again adds nothing.
        regions::seed(*db, EKINORA_SERVER_DATA_DIR);
        accounts::seedDemoAccounts(*db);
        QCOMPARE(db->scalar("SELECT COUNT(*) FROM counties"), std::int64_t(973));
        QCOMPARE(db->scalar("SELECT COUNT(*) FROM users"), std::int64_t(accounts::demoAccounts().size()));
    }

    void missingRegionFileIsAnError() {
        Database db(":memory:");
        db.migrate(migrations());
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, regions::seed(db, "/nonexistent"));
        QCOMPARE(db.scalar("SELECT COUNT(*) FROM cities"), std::int64_t(0));
    }

    void userRecordHasTheLoginShape() {
        auto db = seededDatabase();
        const auto& farmer = accounts::demoAccount("farmer");
        auto id = accounts::userForToken(*db, farmer.token);
        QVERIFY(id);
        auto record = accounts::userRecord(*db, *id, farmer.token);
        QVERIFY(record);

        std::vector<std::string> keys;
        for (auto it = record->begin(); it != record->end(); ++it)
            keys.push_back(it.key());
        QVERIFY((keys == std::vector<std::string>{"id", "fullname", "email", "phone", "type", "menu", "token",
                                                  "location"}));
        QCOMPARE(q(record->at("type").get<std::string>()), QStringLiteral("farmer"));
        QCOMPARE(q(record->at("phone").get<std::string>()), q(farmer.phone));
        QCOMPARE(q(record->at("token").get<std::string>()), q(farmer.token));
        QVERIFY(record->at("menu").is_array());
        QCOMPARE(record->at("menu").at(0).get<int>(), 0);

        const Json& location = record->at("location");
        QCOMPARE(q(location.at("city").at("name").get<std::string>()), QStringLiteral("Konya"));
        QCOMPARE(location.at("city").at("id").get<int>(), 42);
        const Json& county = location.at("county");
        QCOMPARE(q(county.at("name").get<std::string>()), QStringLiteral("Çumra"));
        QVERIFY(county.at("latitude").is_number() && county.at("longitude").is_number());
        QVERIFY(county.at("latitude").get<double>() > 36 && county.at("latitude").get<double>() < 39);
        QCOMPARE(q(location.at("region").at("fullname").get<std::string>()), q(farmer.regionFullname));
        QCOMPARE(q(location.at("region").at("phonenumber").get<std::string>()), q(farmer.regionPhonenumber));

        // No e-mail on record is JSON null, not an empty text.
        const auto& member = accounts::demoAccount("loyalty");
        auto loyalty = accounts::userRecord(*db, *accounts::userForToken(*db, member.token), member.token);
        QVERIFY(loyalty->at("email").is_null());

        QVERIFY(!accounts::userRecord(*db, 9999, "x"));
    }

    void demoAccountsCoverEveryRole() {
        auto db = seededDatabase();
        for (const auto& a : accounts::demoAccounts()) {
            QCOMPARE(a.phone.size(), size_t(11));
            QVERIFY(a.phone.rfind("05", 0) == 0);
            auto row = db->queryRow("SELECT type, active, menu FROM users WHERE phone = ?", {a.phone});
            QVERIFY(row);
            QCOMPARE(q(row->at("type").get<std::string>()), q(a.type));
            QCOMPARE(row->at("active").get<int>() == 1, a.active);
            QVERIFY(Json::parse(row->at("menu").get<std::string>()).size() > 3);
            if (a.active) QVERIFY(accounts::userForToken(*db, a.token));
            QVERIFY(a.active != a.token.empty());
        }
        const auto& dealer = accounts::demoAccount("dealer", false);
        QCOMPARE(
            db->scalar("SELECT COUNT(*) FROM tokens t JOIN users u ON u.id = t.user_id WHERE u.phone = ?",
                       {dealer.phone}),
            std::int64_t(0));
        // The staff side sees messages first; only the club member gets the club item.
        QCOMPARE(accounts::defaultMenu("adminUser").front(), 5);
        QCOMPARE(accounts::defaultMenu("dealer").front(), 5);
        auto hasClub = [](const std::string& type) {
            auto menu = accounts::defaultMenu(type);
            return std::find(menu.begin(), menu.end(), 18) != menu.end();
        };
        QVERIFY(hasClub("loyalty") && !hasClub("farmer") && !hasClub("dealer"));
        QVERIFY(!accounts::demoAccountsText().empty());
    }

    void tokensOfInactiveAccountsAreRefused() {
        auto db = seededDatabase();
        const auto& farmer = accounts::demoAccount("farmer");
        const auto id = *accounts::userForToken(*db, farmer.token);

        const std::string fresh = accounts::issueToken(*db, id);
        QCOMPARE(fresh.size(), size_t(64));
        QVERIFY(fresh.find_first_not_of("0123456789abcdef") == std::string::npos);
        QCOMPARE(accounts::userForToken(*db, fresh), std::optional<std::int64_t>(id));
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
        {
            Database db(path);
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
        QCOMPARE(db.scalar("SELECT COUNT(*) FROM users"), std::int64_t(accounts::demoAccounts().size() + 1));
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
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, db.execute(insert, {std::string("üç"), std::int64_t(1)}));
        db.execute(insert, {std::string("üç"), std::int64_t(3)});
        QCOMPARE(db.scalar("SELECT COUNT(*) FROM t"), std::int64_t(3));

        // A kept statement follows a change of the schema.
        const std::string byB = "SELECT * FROM t WHERE b = ?";
        QCOMPARE(db.queryRow(byB, {std::int64_t(3)})->size(), size_t(3));
        db.exec("ALTER TABLE t ADD COLUMN c TEXT DEFAULT 'yeni'");
        QCOMPARE(q(db.queryRow(byB, {std::int64_t(3)})->at("c").get<std::string>()), QStringLiteral("yeni"));

        // More texts than are kept still run, and the kept ones still work.
        for (int i = 0; i < 300; ++i)
            QCOMPARE(db.scalar("SELECT " + std::to_string(i) + " + ?", {std::int64_t(1)}), std::int64_t(i + 1));
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
