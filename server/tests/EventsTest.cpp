#include <QTest>

#include "TestSupport.h"

using namespace ekinora::server;
using namespace testing;

namespace {

Json byName(const Json& list, const std::string& name) {
    for (const auto& event : list)
        if (event.at("name") == name) return event;
    return nullptr;
}

} // namespace

// Events in three sections by the service's today, and a farmer's answers to them.
class EventsTest : public ServiceTest {
    Q_OBJECT

    Json list(const std::string& token) { return s->get("/api/?do=events", token).json["data"]; }
    Json detail(const std::string& token, std::int64_t id) {
        return s->get("/api/?do=event/detail&id=" + std::to_string(id), token).json["data"]["event"];
    }
    Reply join(const std::string& token, std::int64_t id, const char* status) {
        return s->post("event/join", Json{{"id", id}, {"status", status}}, token);
    }

private slots:

    void sectionsFollowTheDate() {
        Json data = list(Farmer);
        QCOMPARE(int(data["past"].size()), 3);
        QCOMPARE(int(data["ongoing"].size()), 1);
        QCOMPARE(int(data["coming"].size()), 5);
        // Nearest first in the coming ones, the latest first in the past ones.
        QCOMPARE(q(data["coming"][0]["name"]), QStringLiteral("\"Mısır Tarla Günü\""));
        QCOMPARE(q(data["past"][0]["name"]), QStringLiteral("\"Kumluca Domates Hasat Şenliği\""));
        // Every event has the key "image", null for none.
        int withoutPicture = 0;
        for (const char* section : {"past", "ongoing", "coming"})
            for (const auto& event : data[section]) {
                QVERIFY(event.contains("image") && event.contains("isJoin"));
                withoutPicture += event["image"].is_null();
            }
        QCOMPARE(withoutPicture, 2);
        // The demo farmer attends the fair under way; nobody else has answered.
        QVERIFY(data["ongoing"][0]["isJoin"] == Json(true));
        QVERIFY(list(Member)["ongoing"][0]["isJoin"].is_null());

        // Two months on, everything is past.
        *s->now = systemSeconds() + 60 * 86400;
        data = list(Farmer);
        QCOMPARE(int(data["past"].size()), 9);
        QVERIFY(data["ongoing"].empty() && data["coming"].empty());
    }

    void detailReadsAsTheScreenShowsIt() {
        const Json day = byName(list(Farmer)["coming"], "Mısır Tarla Günü");
        const Json event = detail(Farmer, day["id"]);
        QVERIFY(event["dayNumber"] == day["dayNumber"]);
        QVERIFY(event["monthName"] == day["monthName"]);
        QVERIFY(event["dateRange"].get<std::string>().find(day["monthName"].get<std::string>()) != std::string::npos);
        QVERIFY(event["isJoinable"] == Json(true));
        QVERIFY(event["content"].get<std::string>().find("<p>") == 0);
        // Open to all, no answers taken.
        const Json festival = byName(list(Farmer)["coming"], "Trakya Ayçiçeği Hasat Şenliği");
        QVERIFY(detail(Farmer, festival["id"])["isJoinable"] == Json(false));
        QCOMPARE(s->get("/api/?do=event/detail&id=999", Farmer).status(), 400);
    }

    // Joining, a second join, changing one's mind; each farmer's answer his own.
    void joiningIsPerFarmer() {
        const auto id = byName(list(Farmer)["coming"], "Mısır Tarla Günü")["id"].get<std::int64_t>();
        QCOMPARE(join(Farmer, id, "1").status(), 200);
        QVERIFY(detail(Farmer, id)["isJoin"] == Json(true));
        QVERIFY(detail(Member, id)["isJoin"].is_null());

        const Reply again = join(Farmer, id, "1");
        QCOMPARE(again.status(), 400);
        QCOMPARE(q(again.json["errors"]["status"]), QStringLiteral("\"Bu etkinlik için yanıtınız zaten kayıtlı.\""));
        QVERIFY(detail(Farmer, id)["isJoin"] == Json(true));

        QCOMPARE(join(Farmer, id, "0").status(), 200);
        QVERIFY(byName(list(Farmer)["coming"], "Mısır Tarla Günü")["isJoin"] == Json(false));
        QCOMPARE(join(Member, id, "1").status(), 200);
        QVERIFY(detail(Farmer, id)["isJoin"] == Json(false));

        // Past or open-to-all events take no answers; a status must be 0 or 1.
        const auto past = list(Farmer)["past"][0]["id"].get<std::int64_t>();
        QCOMPARE(join(Farmer, past, "1").status(), 400);
        const auto open = byName(list(Farmer)["coming"], "Trakya Ayçiçeği Hasat Şenliği")["id"].get<std::int64_t>();
        QCOMPARE(join(Farmer, open, "1").status(), 400);
        QCOMPARE(join(Farmer, id, "2").status(), 400);
        QCOMPARE(join(Farmer, 999, "1").status(), 400);
    }
};

QTEST_GUILESS_MAIN(EventsTest)
#include "EventsTest.moc"
