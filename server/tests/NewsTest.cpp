#include "info/SiteInfo.h"
#include "news/News.h"
#include "videos/Videos.h"

#include <QTest>

#include "TestSupport.h"

using namespace ekinora::server;
using namespace testing;

namespace {

std::vector<std::int64_t> ids(const Json& list) {
    std::vector<std::int64_t> out;
    for (const auto& item : list) out.push_back(item.at("id").get<std::int64_t>());
    return out;
}

} // namespace

// The news and video feeds, paged by a bare "more" flag, and the stand-in video service.
class NewsTest : public ServiceTest {
    Q_OBJECT

    Json news(const std::string& token, bool more) {
        const Reply r = s->get(std::string("/api/?do=agricultural-news") + (more ? "&ptoken=1" : ""), token);
        return r.json["data"]["news"];
    }

private slots:

    // Each reader has his own place; the first page starts him over; past the end the pages are empty.
    void eachReaderPagesThroughTheNewsOnItsOwn() {
        const Json first = news(Farmer, false);
        QCOMPARE(int(first.size()), news::NewsPageSize);
        const Json item = first.at(0);
        QVERIFY(item.at("header").is_string());
        QVERIFY(item.at("newsDate").is_number_integer());
        QVERIFY(item.at("thumbnailUrl").get<std::string>().find("/static/news/thumbs/") != std::string::npos);
        QVERIFY(first.at(0).at("newsDate") >= first.at(1).at("newsDate")); // newest first

        // Another reader's first page doesn't move this one's place.
        QVERIFY(ids(news(Member, false)) == ids(first));
        const Json second = news(Farmer, true);
        QCOMPARE(int(second.size()), news::NewsPageSize);
        QVERIFY(second.at(0).at("newsDate") <= first.back().at("newsDate"));
        QVERIFY(ids(second) != ids(first));
        const Json third = news(Farmer, true);
        QCOMPARE(int(third.size()), 14 - 2 * news::NewsPageSize);
        QVERIFY(news(Farmer, true).empty());
        QVERIFY(news(Farmer, true).empty());
        // The member is still on his first page; a fresh start goes back to the top.
        QVERIFY(ids(news(Member, true)) == ids(second));
        QVERIFY(ids(news(Farmer, false)) == ids(first));

        // The place is the service's, not the connection's: it outlives a restart.
        s->start();
        QVERIFY(ids(news(Farmer, true)) == ids(second));

        QCOMPARE(s->get("/api/?do=agricultural-news&ptoken=abc", Farmer).status(), 400);
    }

    void detailOfOneItem() {
        const auto id = news(Farmer, false).at(2).at("id").get<std::int64_t>();
        const Reply r = s->get("/api/?do=agricultural-news/detail&id=" + std::to_string(id), Farmer);
        QCOMPARE(r.status(), 200);
        const Json item = r.json["data"]["newsItem"];
        QVERIFY(!item.at("longDescription").get<std::string>().empty());
        QVERIFY(item.at("imageUrl").get<std::string>().find("/static/news/") != std::string::npos);
        // Its picture is there.
        const std::string image = item.at("imageUrl");
        QCOMPARE(s->get(image.substr(image.find("/static/"))).contentType, std::string("image/jpeg"));

        const Reply missing = s->get("/api/?do=agricultural-news/detail&id=9999", Farmer);
        QCOMPARE(missing.status(), 400);
        QCOMPARE(q(missing.json["errors"]["id"]), QStringLiteral("\"Aradığınız haber bulunamadı.\""));
    }

    void videosPageAndPlayFromTheStandIn() {
        const Json first = s->get("/api/?do=videos", Farmer).json["data"]["videos"];
        QCOMPARE(int(first.size()), videos::VideoPageSize);
        const Json rest = s->get("/api/?do=videos&ptoken=1", Farmer).json["data"]["videos"];
        QCOMPARE(int(rest.size()), 1);
        QVERIFY(s->get("/api/?do=videos&ptoken=1", Farmer).json["data"]["videos"].empty());

        const std::string hash = first.at(0).at("youtubeVideoHash");
        const Reply lookup = s->get(videos::VideoServicePrefix + "/get_video_info?video_id=" + hash);
        QCOMPARE(lookup.http, 200);
        const Json streams = lookup.json["streamURLs"];
        QVERIFY(streams.contains("18") && streams.contains("36"));
        for (const auto& [quality, url] : streams.items()) {
            const std::string address = url;
            const Reply file = s->get(address.substr(address.find("/static/")));
            QCOMPARE(file.http, 200);
            QCOMPARE(file.contentType, std::string("video/mp4"));
        }
        QCOMPARE(s->get("/static/videos/vi/" + hash + "/0.jpg").contentType, std::string("image/jpeg"));

        const Reply unknown = s->get(videos::VideoServicePrefix + "/get_video_info?video_id=yok");
        QCOMPARE(unknown.http, 404);
        QVERIFY(unknown.json.contains("error"));
    }

    // The guide is a bare array whose blocks 0 and 12 are the main headings, every value one the app knows.
    void theSiteGuideHasItsFixedShape() {
        const Reply r = s->get("/site/scripts/components/static/page_182.php");
        QCOMPARE(r.http, 200);
        QVERIFY(r.json.is_array() && r.json.size() > 13);
        for (size_t i = 0; i < r.json.size(); ++i) {
            const Json& block = r.json[i];
            QVERIFY(block.at("item") == "headline" || block.at("item") == "paragraph");
            const std::string type = block.at("type");
            QVERIFY(type == "main" || type == "standard" || type == "subtitle");
            QCOMPARE(type == "main", i == 0 || i == 12);
            QVERIFY(!block.at("content").get<std::string>().empty());
        }
    }
};

QTEST_GUILESS_MAIN(NewsTest)
#include "NewsTest.moc"
