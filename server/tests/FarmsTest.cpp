#include "core/Migrations.h"
#include "farms/Pdf.h"

#include <QTest>

#include "TestSupport.h"

#include <set>

using namespace ekinora::server;
using namespace testing;

namespace {

// 15 May 2024, noon in Turkey; 10 January 2024.
constexpr std::int64_t MidMay = 1715763600;
constexpr std::int64_t EarlyJanuary = 1704877200;

std::string str(const Json& value) {
    return value.is_string() ? value.get<std::string>() : value.dump();
}

// The checks a PDF reader makes first: header, trailer, and every cross-reference entry pointing at
// its object.
bool wellFormedPdf(const std::string& pdf, int* pages = nullptr) {
    if (pdf.rfind("%PDF-1.", 0) != 0 || pdf.size() < 6 || pdf.substr(pdf.size() - 6) != "%%EOF\n")
        return false;
    const auto startxref = pdf.rfind("startxref\n");
    if (startxref == std::string::npos) return false;
    const size_t xref = std::stoul(pdf.substr(startxref + 10));
    if (pdf.compare(xref, 7, "xref\n0 ") != 0) return false;
    const int count = std::stoi(pdf.substr(xref + 7));
    const size_t entries = pdf.find('\n', xref + 7) + 1; // then 20 bytes an entry
    for (int i = 1; i < count; ++i) {
        const size_t offset = std::stoul(pdf.substr(entries + size_t(i) * 20, 10));
        const std::string object = std::to_string(i) + " 0 obj";
        if (pdf.compare(offset, object.size(), object) != 0) return false;
    }
    for (size_t at = pdf.find("/Length "); at != std::string::npos; at = pdf.find("/Length ", at + 1)) {
        const size_t length = std::stoul(pdf.substr(at + 8));
        const size_t begin = pdf.find("stream\n", at) + 7;
        if (pdf.compare(begin + length, 9, "endstream") != 0) return false;
    }
    if (pages) *pages = std::stoi(pdf.substr(pdf.find("/Count ") + 7));
    return true;
}

} // namespace

// A farmer's farms, their crops' calendars and the documents of the calendar.
class FarmsTest : public ServiceTest {
    Q_OBJECT

    Reply get(const std::string& target, const std::string& token = {}) {
        return token.empty() ? s->get(target) : s->get(target, token);
    }
    // As the app sends `produce/set`: a POST with the command in the URL and a JSON body.
    Reply set(const std::string& token, const Json& body) { return s->post("produce/set", body, token); }
    Json farms(const std::string& token) {
        return get("/api/?do=farmer/produces", token).json["data"]["farmerProduces"];
    }
    Json periods(const std::string& token, std::int64_t farm) {
        return get("/api/?do=produce/periods&id=" + std::to_string(farm), token).json;
    }
    std::int64_t farmOf(const std::string& token, const std::string& crop) {
        for (const auto& farm : farms(token))
            if (farm["name"] == crop) return farm["id"].get<std::int64_t>();
        return 0;
    }
    // The path of an address of this service, which must answer it with the type.
    bool served(const std::string& url, const std::string& type) {
        const std::string base = s->server->baseUrl();
        if (url.rfind(base, 0) != 0) return false;
        const auto reply = get(url.substr(base.size()));
        return reply.http == 200 && reply.contentType == type && !reply.body.empty();
    }

public:
    FarmsTest() : ServiceTest(MidMay) {}

private slots:

    void demoFarmsAsTheHomeScreenReadsThem() {
        const Json list = farms(Farmer);
        QCOMPARE(int(list.size()), 2);
        for (const auto& farm : list) {
            QVERIFY((testing::keys(farm) == std::vector<std::string>{"id", "name", "range", "aps", "image",
                                                                     "period", "period_pdf", "periodId",
                                                                     "produceId", "produce"}));
            QVERIFY(farm["id"].is_number_integer() && farm["range"].is_number() && farm["aps"].is_array());
            QVERIFY(served(farm["image"].get<std::string>(), "image/svg+xml"));
            QVERIFY(served(farm["produce"]["image"].get<std::string>(), "image/svg+xml"));
            QVERIFY(farm["produce"]["name"] == farm["name"]);
        }
        // Wheat opens the calendar; sugar beet opens its period's document.
        QVERIFY(list[0]["period_pdf"].is_null());
        const Json document = list[1]["period_pdf"];
        QCOMPARE(q(str(document["title"])), QStringLiteral("Şeker Pancarı - Yaprak Gelişimi Dönemi"));
        QVERIFY(served(document["pdf"].get<std::string>(), "application/pdf"));
    }

    void rejectedFarms_data() {
        QTest::addColumn<QString>("body");
        QTest::addColumn<QString>("errors");
        auto row = [](const char* name, const char* body, const char* errors) {
            QTest::newRow(name) << QString::fromUtf8(body) << QString::fromUtf8(errors);
        };
        row("no crop", R"({"range":10})", R"({"produceId":"Ürün seçmediniz."})");
        row("unknown crop", R"({"produceId":999,"range":10})",
            R"({"produceId":"Seçtiğiniz ürün bulunamadı."})");
        // The app turns an empty size field into 0.
        row("size 0", R"({"produceId":1,"range":0})", R"({"range":"Tarla büyüklüğünü girmediniz."})");
        row("no size", R"({"produceId":1})", R"({"range":"Tarla büyüklüğünü girmediniz."})");
        row("size text", R"({"produceId":1,"range":"abc"})", R"({"range":"Tarla büyüklüğünü girmediniz."})");
        row("negative size", R"({"produceId":1,"range":-5})",
            R"({"range":"Tarla büyüklüğü 0 dekardan büyük olmalıdır."})");
        row("over 10000", R"({"produceId":1,"range":10000.5})",
            R"({"range":"Tarla büyüklüğü 10000 dekardan büyük olamaz."})");
        row("unknown product", R"({"produceId":1,"range":5,"aps":[51,999]})",
            R"({"aps":"Seçtiğiniz zirai ürün bulunamadı."})");
        row("four products", R"({"produceId":1,"range":5,"aps":[51,52,53,54]})",
            R"({"aps":"En fazla 3 zirai ürün seçebilirsiniz."})");
        row("all wrong, in field order", R"({"aps":["x"],"range":20000})",
            R"({"produceId":"Ürün seçmediniz.","range":"Tarla büyüklüğü 10000 dekardan büyük olamaz.",)"
            R"("aps":"Seçtiğiniz zirai ürün bulunamadı."})");
    }

    void rejectedFarms() {
        QFETCH(QString, body);
        QFETCH(QString, errors);
        const auto reply = set(Farmer, Json::parse(body.toStdString()));
        QCOMPARE(reply.status(), 400);
        QCOMPARE(q(reply.json["errors"].dump()), errors);
        QVERIFY(reply.json["message"] == reply.json["errors"].begin().value());
        QCOMPARE(int(farms(Farmer).size()), 2);
    }

    void acceptedForms() {
        // Limits themselves pass; a size with a decimal comma, products as text, repeats dropped.
        auto reply = set(Member, {{"produceId", "3"}, {"range", "12,5"}, {"aps", "[54, 54, 52]"}});
        QCOMPARE(reply.status(), 200);
        Json farm = reply.json["data"]["farmerProduce"];
        QCOMPARE(q(farm["range"].dump()), QStringLiteral("12.5"));
        QCOMPARE(q(farm["aps"].dump()),
                 QStringLiteral(R"([{"id":54,"name":"Sorimet<sup>&reg;</sup> 5 EC"},)"
                                R"({"id":52,"name":"Nodrix<sup>&reg;</sup> 480 SC"}])"));
        reply = set(Member, {{"produceId", 1}, {"range", 10000}});
        QCOMPARE(reply.status(), 200);
        QVERIFY(reply.json["data"]["farmerProduce"]["aps"].empty());
        QCOMPARE(int(farms(Member).size()), 3);
    }

    void atMostThreeFarms() {
        QCOMPARE(set(Farmer, {{"produceId", 4}, {"range", 30}}).status(), 200);
        const auto refused = set(Farmer, {{"produceId", 5}, {"range", 30}});
        QCOMPARE(q(refused.body),
                 QStringLiteral(R"({"status":400,"message":"En fazla 3 tarla ekleyebilirsiniz.",)"
                                R"("errors":{"farms":"En fazla 3 tarla ekleyebilirsiniz."},"data":null})"));
        QCOMPARE(int(farms(Farmer).size()), 3);

        // A deleted farm frees its place.
        QCOMPARE(
            get("/api/?do=produce/delete&id=" + std::to_string(farmOf(Farmer, "Ayçiçeği")), Farmer).status(),
            200);
        QCOMPARE(set(Farmer, {{"produceId", 5}, {"range", 30}}).status(), 200);

        // Requests arriving together do not slip past the limit: the member has one farm.
        QCOMPARE(s->acceptedAtOnce(6,
                                   [](httplib::Client& client) {
                                       return client.Post("/api/?do=produce/set", Service::bearer(Member),
                                                          R"({"produceId":9,"range":7})", "application/json");
                                   }),
                 2);
        QCOMPARE(int(farms(Member).size()), 3);
    }

    void updatingAFarm() {
        const auto wheat = farmOf(Farmer, "Buğday");
        auto reply = set(Farmer, {{"id", wheat}, {"produceId", 1}, {"range", 150}, {"aps", {53}}});
        QCOMPARE(reply.status(), 200);
        Json farm = farms(Farmer)[0];
        QCOMPARE(farm["id"].get<std::int64_t>(), wheat);
        QCOMPARE(q(farm["range"].dump() + farm["aps"].dump()),
                 QStringLiteral(R"(150[{"id":53,"name":"Kelvaro<sup>&reg;</sup> 70 WG"}])"));
        // The same crop keeps its period.
        QCOMPARE(farm["periodId"].get<int>(), 103);

        // "aps" left out: the farmer deselected them all.
        QCOMPARE(set(Farmer, {{"id", std::to_string(wheat)}, {"produceId", 1}, {"range", 150}}).status(),
                 200);
        QVERIFY(farms(Farmer)[0]["aps"].empty());

        // A rejected update changes nothing.
        QCOMPARE(set(Farmer, {{"id", wheat}, {"range", 150}}).status(), 400);
        QCOMPARE(q(str(farms(Farmer)[0]["name"])), QStringLiteral("Buğday"));

        // Another crop starts in its own season: maize in May is coming up.
        QCOMPARE(set(Farmer, {{"id", wheat}, {"produceId", 3}, {"range", 150}}).status(), 200);
        farm = farms(Farmer)[0];
        QCOMPARE(q(str(farm["name"]) + " " + str(farm["period"]) + " " + str(farm["periodId"])),
                 QStringLiteral("Mısır Çıkış 302"));
    }

    void nobodyReachesAnothersFarm() {
        const auto vineyard = farmOf(Member, "Üzüm (Bağ)");
        const auto before = farms(Member).dump();
        const QString notFound = QStringLiteral(
            R"({"status":400,"message":"Tarla bulunamadı.","errors":{"id":"Tarla bulunamadı."},"data":null})");
        const std::string id = std::to_string(vineyard);
        QCOMPARE(q(set(Farmer, {{"id", vineyard}, {"produceId", 1}, {"range", 5}}).body), notFound);
        QCOMPARE(q(get("/api/?do=produce/delete&id=" + id, Farmer).body), notFound);
        QCOMPARE(q(get("/api/?do=produce/periods&id=" + id, Farmer).body), notFound);
        QCOMPARE(q(get("/api/?do=produce/set-period&periodId=1304&id=" + id, Farmer).body), notFound);
        // Nor an unknown or missing id.
        for (const char* query : {"&id=9999", "&id=", "", "&id=abc"})
            QCOMPARE(q(get(std::string("/api/?do=produce/delete") + query, Farmer).body), notFound);
        QCOMPARE(q(set(Farmer, {{"id", 9999}, {"produceId", 1}, {"range", 5}}).body), notFound);

        QCOMPARE(q(farms(Member).dump()), q(before));
        QCOMPARE(int(farms(Farmer).size()), 2);
    }

    void periodsOfAFarm() {
        const Json data = periods(Farmer, farmOf(Farmer, "Buğday"))["data"];
        QVERIFY((testing::keys(data) == std::vector<std::string>{"periodId", "periods", "pests"}));
        QCOMPARE(data["periodId"].get<int>(), 103);
        QStringList names;
        for (const auto& period : data["periods"]) {
            QVERIFY((testing::keys(period) == std::vector<std::string>{"id", "name", "image"}));
            names << q(str(period["name"]));
        }
        QCOMPARE(names.join(","),
                 QStringLiteral("Ekim,Çıkış,Kardeşlenme,Sapa Kalkma,Başaklanma,Olgunlaşma,Hasat"));

        QStringList groups;
        for (const auto& group : data["pests"]) {
            QVERIFY((testing::keys(group) == std::vector<std::string>{"name", "data"}));
            groups << q(str(group["name"]));
            for (const auto& pest : group["data"]) {
                QVERIFY(
                    (testing::keys(pest) == std::vector<std::string>{"id", "name", "image", "path", "aps"}));
                for (const auto& product : pest["aps"])
                    QVERIFY(served(product["image"].get<std::string>(), "image/svg+xml"));
            }
        }
        QCOMPARE(groups.join(","), QStringLiteral("Yabancı Otlar,Mantari Hastalıklar"));

        // A disease's document is a page of the product site.
        const Json disease = data["pests"][1]["data"][0];
        const auto page = get("/site" + disease["path"].get<std::string>());
        QCOMPARE(page.http, 200);
        QCOMPARE(q(page.contentType), QStringLiteral("text/html; charset=utf-8"));
        QVERIFY(page.body.find("<h1>Septorya Yaprak Lekesi</h1>") != std::string::npos);
        QVERIFY(page.body.find("Tarvenza<sup>&reg;</sup> 250 EC") != std::string::npos);
        QCOMPARE(get("/site/zirai-sorunlar/yok").http, 404);
    }

    void choosingAPeriod() {
        const auto wheat = farmOf(Farmer, "Buğday");
        const std::string setPeriod =
            "/api/?do=produce/set-period&id=" + std::to_string(wheat) + "&periodId=";
        QCOMPARE(
            q(get(setPeriod + "105", Farmer).body),
            QStringLiteral(
                R"({"status":200,"message":"","errors":{},"data":{"periodId":105,"period":"Başaklanma"}})"));

        // The pests of the new period come with the next reading, and the home screen shows its name.
        const Json data = periods(Farmer, wheat)["data"];
        QCOMPARE(data["periodId"].get<int>(), 105);
        QCOMPARE(q(data["pests"][0]["name"].get<std::string>() + ": " +
                   data["pests"][0]["data"][0]["name"].get<std::string>()),
                 QStringLiteral("Zararlı Canlılar: Süne"));
        QCOMPARE(q(str(farms(Farmer)[0]["period"])), QStringLiteral("Başaklanma"));

        // Only a period of the farm's own crop.
        for (const char* period : {"703", "0", "", "abc"}) {
            const auto reply = get(setPeriod + period, Farmer);
            QCOMPARE(q(reply.json["errors"].dump()),
                     QStringLiteral(R"({"periodId":"Lütfen geçerli bir dönem seçiniz."})"));
        }
        QCOMPARE(periods(Farmer, wheat)["data"]["periodId"].get<int>(), 105);

        // A document crop's period document follows the chosen period.
        const auto beet = farmOf(Farmer, "Şeker Pancarı");
        get("/api/?do=produce/set-period&id=" + std::to_string(beet) + "&periodId=706", Farmer);
        QCOMPARE(q(str(farms(Farmer)[1]["period_pdf"]["pdf"])),
                 q(s->server->baseUrl() + "/documents/periods/706.pdf"));
    }

    void newFarmsStartInTheCropsSeason() {
        // Winter wheat's season runs from October round the year; hazelnut flowers in winter.
        auto made = [&](const Json& body) { return set(Member, body).json["data"]["farmerProduce"]; };
        *s->now = EarlyJanuary;
        QCOMPARE(made({{"produceId", 1}, {"range", 10}})["periodId"].get<int>(), 103);
        QCOMPARE(made({{"produceId", 16}, {"range", 10}})["periodId"].get<int>(), 1601);
        *s->now = MidMay;
        const auto wheat = farmOf(Member, "Buğday");
        QCOMPARE(q(str(made({{"id", wheat}, {"produceId", 16}, {"range", 10}})["period"])),
                 QStringLiteral("Meyve Tutumu"));
    }

    void everyCropHasACalendarWithItsPictures() {
        const Json crops = get("/api/?do=produces").json["data"]["produces"];
        std::set<std::string> seen;
        for (const auto& crop : crops) {
            const auto reply = set(Member, {{"produceId", crop["id"]}, {"range", 1}});
            QCOMPARE(reply.status(), 200);
            const Json farm = reply.json["data"]["farmerProduce"];
            const auto farmId = farm["id"].get<std::int64_t>();
            QVERIFY2(farm["image"].is_string() && !farm["period"].is_null(), str(crop["name"]).c_str());
            std::set<std::string> pictures = {farm["image"].get<std::string>()};

            const Json calendar = periods(Member, farmId)["data"];
            QVERIFY2(calendar["periods"].size() >= 5, str(crop["name"]).c_str());
            int pests = 0;
            for (const auto& period : calendar["periods"]) {
                pictures.insert(period["image"].get<std::string>());
                get("/api/?do=produce/set-period&id=" + std::to_string(farmId) +
                        "&periodId=" + str(period["id"]),
                    Member);
                const Json groups = periods(Member, farmId)["data"]["pests"];
                for (const auto& group : groups)
                    for (const auto& pest : group["data"]) {
                        ++pests;
                        pictures.insert(pest["image"].get<std::string>());
                        // A card clears the pictures tagged 0 to 99, a product's picture carrying its id.
                        for (const auto& product : pest["aps"])
                            QVERIFY2(product["id"].get<std::int64_t>() < 100, product.dump().c_str());
                        QCOMPARE(get("/site" + pest["path"].get<std::string>()).http, 200);
                    }
            }
            QVERIFY2(pests > 0, str(crop["name"]).c_str());
            for (const auto& url : pictures)
                if (seen.insert(url).second) QVERIFY2(served(url, "image/svg+xml"), url.c_str());
            QCOMPARE(get("/api/?do=produce/delete&id=" + std::to_string(farmId), Member).status(), 200);
        }
    }

    // A database seeded when products were numbered from 101: the migration brings them and every
    // reference to them under 100, so the farms, the cards and the campaign keep their products.
    void productsNumberedFrom101ComeUnder100() {
        const QString farmsBefore = q(farms(Farmer).dump());
        const auto wheat = farmOf(Farmer, "Buğday");
        const QString cardsBefore = q(periods(Farmer, wheat)["data"]["pests"].dump());
        s->db->exec("DELETE FROM schema_migrations WHERE version = 110;"
                    "BEGIN; PRAGMA defer_foreign_keys = ON;"
                    "UPDATE aps SET id = id + 50; UPDATE pest_aps SET ap_id = ap_id + 50;"
                    "UPDATE farm_aps SET ap_id = ap_id + 50; UPDATE popups SET pest_id = pest_id + 50;"
                    "COMMIT;");
        QCOMPARE(s->db->scalar("SELECT MIN(id) FROM aps"), std::int64_t(101));

        QCOMPARE(s->db->migrate(migrations()), 1);
        QCOMPARE(s->db->scalar("SELECT MAX(id) FROM aps"), std::int64_t(62));
        QCOMPARE(s->db->scalar("SELECT COUNT(*) FROM popups WHERE pest_id = 51"), std::int64_t(1));
        QCOMPARE(q(farms(Farmer).dump()), farmsBefore);
        QCOMPARE(q(periods(Farmer, wheat)["data"]["pests"].dump()), cardsBefore);
        QVERIFY(s->db->query("PRAGMA foreign_key_check").empty());
    }

    void periodDocuments() {
        const auto reply = get("/documents/periods/703.pdf");
        QCOMPARE(reply.http, 200);
        QVERIFY(wellFormedPdf(reply.body));
        // Turkish letters beyond Latin-1 go through the fonts' own encoding, never as UTF-8 bytes.
        QVERIFY(reply.body.find("(Sirken) Tj") != std::string::npos);
        QVERIFY(reply.body.find("\xC5\x9F") == std::string::npos);
        for (const char* path :
             {"/documents/periods/9999.pdf", "/documents/periods/703", "/documents/periods/x.pdf"})
            QCOMPARE(get(path).http, 404);

        // A long text goes on to further pages, and brackets in it stay text.
        std::vector<pdf::Paragraph> text(120, pdf::Paragraph{"Satır (ayraçlı) \\ metin", 10, false, 4});
        int pages = 0;
        QVERIFY(wellFormedPdf(pdf::textDocument("Başlık", text), &pages));
        QVERIFY(pages >= 3);
    }

    void seedingRunsOnce() {
        QCOMPARE(
            get("/api/?do=produce/delete&id=" + std::to_string(farmOf(Farmer, "Buğday")), Farmer).status(),
            200);
        // Addresses carry the port, which changes with each start.
        auto calendar = [&] {
            return q(periods(Farmer, farmOf(Farmer, "Şeker Pancarı")).dump()).remove(q(s->server->baseUrl()));
        };
        const QString before = calendar();
        s->start();
        QCOMPARE(int(farms(Farmer).size()), 1);
        QCOMPARE(calendar(), before);
    }
};

QTEST_GUILESS_MAIN(FarmsTest)
#include "FarmsTest.moc"
