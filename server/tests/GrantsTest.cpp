#include "grants/Grants.h"

#include <QTest>

#include "TestSupport.h"

using namespace ekinora::server;
using namespace testing;

namespace {

// 15 May 2024, noon in Turkey.
constexpr std::int64_t MidMay = 1715763600;

} // namespace

// Support programmes by county and crop, and their application documents as PDFs.
class GrantsTest : public ServiceTest {
    Q_OBJECT

    Json idNamed(const std::string& target, const char* list, const std::string& name) {
        const Json records = s->get(target).json["data"][list];
        for (const auto& record : records)
            if (record["name"] == name) return record["id"];
        return nullptr;
    }
    Json cityId(const std::string& name) { return idNamed("/api/?do=region/cities", "cities", name); }
    Json countyId(const std::string& city, const std::string& name) {
        return idNamed("/api/?do=region/counties&cityId=" + cityId(city).dump(), "counties", name);
    }
    Json cropId(const std::string& name) { return idNamed("/api/?do=produces&farmerprio=1", "produces", name); }
    testing::Reply search(const std::string& city, const std::string& county, const std::string& crop,
                          const std::string& token = Farmer) {
        return s->get("/api/?do=agrivo/grants&city=" + cityId(city).dump() + "&county=" + countyId(city, county).dump() +
                          "&produce=" + cropId(crop).dump(),
                      token);
    }
    static std::vector<std::string> names(const Json& grants) {
        std::vector<std::string> out;
        for (const auto& grant : grants) out.push_back(grant["GrantSupportName"]);
        return out;
    }
    static bool has(const Json& grants, const std::string& fragment) {
        for (const auto& name : names(grants))
            if (name.find(fragment) != std::string::npos) return true;
        return false;
    }

public:
    GrantsTest() : ServiceTest(MidMay) {}

private slots:

    void wheatInCumraFindsProgrammesWithTheirDocuments() {
        const auto reply = search("Konya", "Çumra", "Buğday");
        QCOMPARE(reply.status(), 200);
        const Json grants = reply.json["data"]["grants"];
        QVERIFY(grants.size() >= 4);
        QVERIFY(has(grants, "Basınçlı Sulama") && has(grants, "Konya Ovası") && has(grants, "Genç Çiftçi"));
        // Livestock fodder covers barley and maize, not wheat.
        QVERIFY(!has(grants, "Yem Bitkisi"));
        int withoutDocuments = 0;
        for (const auto& grant : grants) {
            QVERIFY((testing::keys(grant) == std::vector<std::string>{"GrantSupportId", "GrantSupportName", "TypeName",
                                                                      "EndDateStr", "SMSTemplateName", "FileList"}));
            QVERIFY(grant["SMSTemplateName"].get<std::string>().rfind("<p>", 0) == 0);
            // Each date is the coming one: in May 2024 every programme closes in 2024.
            QVERIFY(grant["EndDateStr"].get<std::string>().size() == 10 && grant["EndDateStr"].get<std::string>().substr(6) == "2024");
            if (grant["FileList"].empty()) ++withoutDocuments;
            for (const auto& file : grant["FileList"]) {
                const std::string url = file["AppendixA"];
                const std::string base = s->server->baseUrl();
                QVERIFY(url.rfind(base + "/documents/grants/", 0) == 0);
                const auto pdf = s->get(url.substr(base.size()));
                QCOMPARE(pdf.http, 200);
                QCOMPARE(q(pdf.contentType), QStringLiteral("application/pdf"));
                QVERIFY(pdf.body.rfind("%PDF-1.", 0) == 0 && pdf.body.find("%%EOF") != std::string::npos);
                QVERIFY(!file["ConstantValue"].get<std::string>().empty());
            }
        }
        // Certified seed is applied for with the dealer's invoice: no forms.
        QCOMPARE(withoutDocuments, 1);
        // Dealers search too.
        QCOMPARE(search("Konya", "Çumra", "Buğday", Dealer).json["data"]["grants"].size(), grants.size());
    }

    void placesAndCropsNarrowTheSearch() {
        // The drought programme is bound to two counties of Konya only.
        QVERIFY(!has(search("Konya", "Selçuklu", "Buğday").json["data"]["grants"], "Konya Ovası"));
        QVERIFY(has(search("Konya", "Karapınar", "Buğday").json["data"]["grants"], "Konya Ovası"));
        // Irrigation is for the plateau's field crops: not for tomatoes, not in İzmir.
        QVERIFY(!has(search("Konya", "Çumra", "Domates").json["data"]["grants"], "Basınçlı Sulama"));
        QVERIFY(!has(search("İzmir", "Ödemiş", "Buğday").json["data"]["grants"], "Basınçlı Sulama"));
        QVERIFY(has(search("İzmir", "Ödemiş", "Zeytin").json["data"]["grants"], "Organik"));
        // Nothing for hazelnuts on the Black Sea coast: the list itself is null.
        const auto none = search("Giresun", "Bulancak", "Fındık");
        QCOMPARE(none.status(), 200);
        QVERIFY(none.json["data"].is_object() && none.json["data"]["grants"].is_null());
    }

    void aMissingOrWrongChoiceIsRefusedWithNullData() {
        const auto noCrop = s->get("/api/?do=agrivo/grants&city=" + cityId("Konya").dump() + "&county=" +
                                       countyId("Konya", "Çumra").dump(),
                                   Farmer);
        QCOMPARE(noCrop.status(), 400);
        QVERIFY(noCrop.json["data"].is_null());
        QCOMPARE(q(noCrop.json["errors"]["produce"].get<std::string>()), QStringLiteral("Hibe desteği sorgulamak için ürün seçmelisiniz."));
        // A county of another province.
        const auto mixed = s->get("/api/?do=agrivo/grants&city=" + cityId("İzmir").dump() + "&county=" +
                                      countyId("Konya", "Çumra").dump() + "&produce=1",
                                  Farmer);
        QCOMPARE(mixed.status(), 400);
        QVERIFY(mixed.json["errors"].contains("county"));
        QCOMPARE(s->get("/api/?do=agrivo/grants&city=x&county=1&produce=1", Farmer).status(), 400);
    }

    void unknownDocumentsAreNotFound() {
        for (const char* name : {"999.pdf", "1x.pdf", ".pdf"})
            QCOMPARE(s->get(std::string("/documents/grants/") + name).http, 404);
    }

    void theLastDateRollsOverOnceItHasPassed() {
        // 31 October, asked on 31 October at 23:30 in Turkey (20:30 UTC) and on 1 November at 00:30.
        QCOMPARE(q(grants::endDateText(10, 31, 1730406600)), QStringLiteral("31.10.2024"));
        QCOMPARE(q(grants::endDateText(10, 31, 1730410200)), QStringLiteral("31.10.2025"));
    }
};

QTEST_GUILESS_MAIN(GrantsTest)
#include "GrantsTest.moc"
