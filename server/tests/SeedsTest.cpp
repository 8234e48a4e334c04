#include "seeds/Seeds.h"

#include <QTest>

#include "TestSupport.h"

#include <set>

using namespace ekinora::server;
using namespace testing;

namespace {

const std::string Api = "/api/?do=productCatalog/";

std::string pathOf(const std::string& url) { return url.substr(url.find("/", url.find("//") + 2)); }

} // namespace

class SeedsTest : public ServiceTest {
    Q_OBJECT
private slots:

    void rangesAndGroupsListTheirHybrids() {
        const auto maize = s->get(Api + "products&catalog=maize-catalog", Farmer);
        QVERIFY(maize.json["message"].is_string() && maize.json["errors"].is_string());
        QCOMPARE(maize.json["data"].size(), size_t(6));
        for (const auto& h : maize.json["data"])
            QCOMPARE(testing::keys(h), (std::vector<std::string>{"id", "title", "group", "image"}));
        const auto grain = s->get(Api + "products&catalog=maize-catalog&pgroup=363", Farmer);
        QCOMPARE(grain.json["data"].size(), size_t(2));
        for (const auto& h : grain.json["data"]) QCOMPARE(h["group"].get<std::string>(), std::string("Danelik Mısır"));
        // Canola has no groups; a bad group is refused.
        QCOMPARE(s->get(Api + "products&catalog=canola-catalog&pgroup=363", Farmer).json["data"].size(), size_t(2));
        QCOMPARE(s->get(Api + "products&catalog=maize-catalog&pgroup=abc", Farmer).status(), 400);
        const std::string image = maize.json["data"][0]["image"];
        QCOMPARE(s->get(pathOf(image)).http, 200);
    }

    void seedTreesFollowTheirRangesConventions() {
        const Json maize = s->get(Api + "product-detail&catalog=maize-catalog&id=5003", Farmer).json["data"];
        QCOMPARE(maize["title"].get<std::string>(), std::string("Altınkoçan 650"));
        std::set<std::string> kinds;
        for (const auto& section : maize["contents"])
            for (const auto& b : section["data"]) kinds.insert(b["type"].get<std::string>());
        QVERIFY(kinds.count("image") && kinds.count("contentBox"));
        // A maize id is not found in the canola range.
        QCOMPARE(s->get(Api + "product-detail&catalog=canola-catalog&id=5003", Farmer).status(), 400);

        const Json canola = s->get(Api + "product-detail&catalog=canola-catalog&id=6001", Farmer).json["data"];
        const Json& sections = canola["contents"];
        QCOMPARE(sections[1]["data"][0]["type"].get<std::string>(), std::string("image"));
        for (size_t i : {size_t(0), size_t(2)}) {
            const Json& blocks = sections[i]["data"];
            QVERIFY(blocks.size() % 2 == 0);
            for (size_t j = 0; j < blocks.size(); j += 2) {
                QCOMPARE(blocks[j]["type"].get<std::string>(), std::string("paragraph"));
                QCOMPARE(blocks[j + 1]["type"].get<std::string>(), std::string("headline"));
            }
        }
        const auto brochure = s->get(pathOf(canola["documents"][0]["path"]));
        QCOMPARE(brochure.contentType, std::string("application/pdf"));
        QVERIFY(brochure.body.rfind("%PDF-1.", 0) == 0);
        QCOMPARE(s->get("/documents/seeds/9999/brosur.pdf").http, 404);
    }

    void everyProductHasItsDocumentsMediaAndBlocks() {
        const Json list = s->get(Api + "products&catalog=product-catalog", Farmer).json["data"];
        for (const auto& p : list) {
            const Json d = s->get(Api + "product-detail&catalog=product-catalog&id=" + std::to_string(p["id"].get<int>()), Farmer)
                               .json["data"];
            std::set<std::string> kinds;
            for (const auto& section : d["contents"])
                for (const auto& b : section["data"]) kinds.insert(b["type"].get<std::string>());
            QCOMPARE(kinds, (std::set<std::string>{"headline", "paragraph", "list", "table", "image", "contentBox"}));
            QCOMPARE(d["documents"].size(), size_t(2));
            QCOMPARE(d["media"][1]["type"].get<std::string>(), std::string("video"));
        }
        const Json d = s->get(Api + "product-detail&catalog=product-catalog&id=1001", Farmer).json["data"];
        // The table's markup comes with its quotes escaped.
        QVERIFY(d["contents"][1]["data"][1]["data"]["table"][0].get<std::string>().find("class=\\\"") != std::string::npos);
        for (const auto& doc : d["documents"]) {
            const auto pdf = s->get(pathOf(doc["path"]));
            QCOMPARE(pdf.contentType, std::string("application/pdf"));
            QVERIFY(pdf.body.rfind("%PDF-1.", 0) == 0);
        }
        QCOMPARE(s->get("/documents/catalogue/1001/baska.pdf").http, 404);
        QCOMPARE(s->get("/documents/catalogue/99999/etiket.pdf").http, 404);
        QCOMPARE(s->get(pathOf(d["media"][1]["path"])).contentType, std::string("video/mp4"));
    }

    void representativeComesFromTheAccountsRegion() {
        const auto r = s->get(Api + "region-attendant&catalog=product-catalog", Farmer);
        QCOMPARE(r.json["message"]["type"].get<std::string>(), std::string("success"));
        QCOMPARE(r.json["data"]["fullname"].get<std::string>(), std::string("Serdar Akın"));
        QCOMPARE(r.json["data"]["phonenumber"].get<std::string>(), std::string("05301110011"));
        s->db->execute("UPDATE users SET region_fullname = '' WHERE phone = '05321000101'");
        QCOMPARE(s->get(Api + "region-attendant", Farmer).json["message"]["type"].get<std::string>(), std::string("warning"));
    }

    void sprayProgrammesAreServedByTheSite() {
        const auto list = s->get("/site/scripts/components/product_groups/page_166.php");
        QVERIFY(list.json.is_array() && list.json.size() >= 5);
        for (const auto& p : list.json) {
            QCOMPARE(testing::keys(p), (std::vector<std::string>{"title", "image", "link"}));
            QCOMPARE(s->get("/site" + p["link"].get<std::string>()).http, 200);
            QCOMPARE(s->get("/site" + p["image"].get<std::string>()).contentType, std::string("image/svg+xml"));
        }
        QCOMPARE(s->get("/site/ilaclama-programlari/yok").http, 404);
    }
};

QTEST_GUILESS_MAIN(SeedsTest)
#include "SeedsTest.moc"
