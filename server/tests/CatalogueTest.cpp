#include "catalogue/Catalogue.h"

#include <QTest>

#include "TestSupport.h"

#include <set>

using namespace ekinora::server;
using namespace testing;

namespace {

const std::string Products = "/api/?do=productCatalog/products&catalog=product-catalog";
const std::string Filters = "/api/?do=productCatalog/filters&catalog=product-catalog";

std::set<std::int64_t> idsOf(const Json& list) {
    std::set<std::int64_t> out;
    for (const auto& e : list) out.insert(e["id"].get<std::int64_t>());
    return out;
}

} // namespace

class CatalogueTest : public ServiceTest {
    Q_OBJECT
private slots:

    void wholeListCarriesEveryProductWithServedPictures() {
        const auto r = s->get(Products, Farmer);
        QCOMPARE(r.status(), 200);
        // "message" and "errors" stay texts, as the list records read them.
        QVERIFY(r.json["message"].is_string() && r.json["errors"].is_string());
        const Json& list = r.json["data"];
        QVERIFY(list.size() >= 80);
        std::set<std::string> groups;
        bool dottedCapital = false, dotless = false, plainCapitalI = false;
        for (const auto& p : list) {
            QCOMPARE(testing::keys(p), (std::vector<std::string>{"id", "title", "group", "image"}));
            groups.insert(p["group"].get<std::string>());
            const std::string title = p["title"];
            dottedCapital |= title.find("İ") != std::string::npos;
            dotless |= title.find("ı") != std::string::npos;
            plainCapitalI |= title.rfind("I", 0) == 0;
        }
        QVERIFY(dottedCapital && dotless && plainCapitalI);
        for (const char* g : {"Herbisit", "Fungisit", "İnsektisit", "Akarisit", "Nematisit", "Tohum İlacı"})
            QVERIFY2(groups.count(g), g);
        const std::string image = list[0]["image"];
        QVERIFY(image.rfind("http://", 0) == 0);
        const auto picture = s->get(image.substr(image.find("/static/")));
        QCOMPARE(picture.http, 200);
        QVERIFY(picture.body.find("<svg") != std::string::npos);
    }

    void choicesCombineOnOneUse() {
        // Tomatoes against downy mildew: only fungicides, fewer than for tomatoes alone.
        const auto tomato = s->get(Products + "&plant=9", Farmer).json["data"];
        const auto mildew = s->get(Products + "&plant=9&illness=12", Farmer).json["data"];
        QVERIFY(!mildew.empty() && mildew.size() < tomato.size());
        for (const auto& p : mildew) QCOMPARE(p["group"].get<std::string>(), std::string("Fungisit"));
        // A plant and an illness that no product joins give an empty list, not a refusal.
        const auto none = s->get(Products + "&plant=9&illness=1", Farmer);
        QCOMPARE(none.status(), 200);
        QVERIFY(none.json["data"].empty());
        // Something that is no id is refused in the same shape.
        const auto bad = s->get(Products + "&plant=abc", Farmer);
        QCOMPARE(bad.status(), 400);
        QVERIFY(bad.json["data"].is_array() && bad.json["errors"].is_string());
    }

    void filtersShrinkAroundTheChoiceAndKeepTheirShape() {
        const auto all = s->get(Filters, Farmer).json;
        QVERIFY(all["message"].is_object());
        QCOMPARE(all["data"]["plants"].size(), size_t(20));
        QCOMPARE(all["data"]["pgroups"].size(), size_t(8));
        QVERIFY(all["data"]["illness"].size() >= 40);

        const auto tomato = s->get(Filters.substr(0, Filters.find("&catalog")) + "&plant=9&catalog=product-catalog", Farmer).json;
        QCOMPARE(idsOf(tomato["data"]["plants"]), std::set<std::int64_t>{9});
        const auto illnesses = idsOf(tomato["data"]["illness"]);
        QVERIFY(illnesses.count(12) && !illnesses.count(1)); // mildew, not wild oats
        QVERIFY(tomato["data"]["pgroups"].size() < all["data"]["pgroups"].size());

        const auto bad = s->get(Filters + "&illness=-3", Farmer).json;
        QCOMPARE(bad["status"].get<int>(), 400);
        QVERIFY(bad["message"].is_object());
        for (const char* list : {"plants", "illness", "pgroups"}) QVERIFY(bad["data"][list].empty());
    }

    void detailAndRefusals() {
        const auto detail = s->get("/api/?do=productCatalog/product-detail&catalog=product-catalog&id=1001", Farmer).json["data"];
        QCOMPARE(detail["id"].get<int>(), 1001);
        QVERIFY(detail.contains("fileId"));
        QVERIFY(!detail["specialities"]["activeSubstance"].get<std::string>().empty());

        QCOMPARE(s->get("/api/?do=productCatalog/product-detail&catalog=product-catalog&id=99", Farmer).status(), 400);
        QCOMPARE(s->get("/api/?do=productCatalog/products&catalog=pesticide", Farmer).status(), 400);
    }

    void seedRunsAgainWithoutDoubling() {
        const auto before = s->db->scalar("SELECT COUNT(*) FROM catalogue_uses");
        s->db->exec(catalogue::seedSql());
        QCOMPARE(s->db->scalar("SELECT COUNT(*) FROM catalogue_uses"), before);
    }
};

QTEST_GUILESS_MAIN(CatalogueTest)
#include "CatalogueTest.moc"
