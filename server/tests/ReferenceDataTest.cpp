#include <QTest>

#include "TestSupport.h"

#include <set>

using namespace ekinora::server;
using namespace testing;

namespace {

// What the login screen sends before anybody has logged in.
const httplib::Headers NoToken{{"Authorization", "Bearer (null)"}};

} // namespace

// The lists and texts the app reads on the login screen: regions, crops, products, pages.
class ReferenceDataTest : public QObject {
    Q_OBJECT

    std::unique_ptr<testing::Service> s;

    Reply get(const std::string& target, const httplib::Headers& headers = NoToken) {
        return s->get(target, headers);
    }
    Json data(const std::string& target, const httplib::Headers& headers = NoToken) {
        const auto reply = get(target, headers);
        return reply.status() == 200 ? reply.json["data"] : Json();
    }
    // The picture at an absolute address of this service.
    bool picture(const std::string& url, const std::string& folder) {
        const std::string base = s->server->baseUrl();
        if (url.rfind(base + folder, 0) != 0) return false;
        const auto reply = get(url.substr(base.size()));
        return reply.http == 200 && reply.contentType == "image/svg+xml" &&
               reply.body.find("<svg") != std::string::npos;
    }

private slots:
    void initTestCase() { s = std::make_unique<testing::Service>(); }
    void cleanupTestCase() { s.reset(); }

    void citiesAndTheirCounties() {
        const Json cities = data("/api/?do=region/cities")["cities"];
        QCOMPARE(int(cities.size()), 81);
        QCOMPARE(q(cities.front().dump()), QStringLiteral(R"({"id":1,"name":"Adana"})"));

        const Json list = data("/api/?do=region/counties&cityId=42")["counties"];
        QCOMPARE(int(list.size()), 31);
        QVERIFY((keys(list[0]) == std::vector<std::string>{"id", "name"}));
        QVERIFY(list.dump().find("\"name\":\"Çumra\"") != std::string::npos);
        // The id as a number in a JSON body works too.
        const auto posted = Reply::from(
            s->client->Post("/api/?do=region/counties", NoToken, R"({"cityId":42})", "application/json"));
        QCOMPARE(q(posted.json["data"]["counties"].dump()), q(list.dump()));
        // No city's counties leak into another's.
        QCOMPARE(q(data("/api/?do=region/counties&cityId=35")["counties"].front()["name"].get<std::string>()),
                 QStringLiteral("Aliağa"));

        for (const char* query :
             {"", "&cityId=", "&cityId=0", "&cityId=82", "&cityId=-1", "&cityId=Konya", "&cityId=42abc"})
            QCOMPARE(q(get(std::string("/api/?do=region/counties") + query).body),
                     QStringLiteral(R"({"status":400,"message":"Lütfen il seçiniz.",)"
                                    R"("errors":{"cityId":"Lütfen il seçiniz."},"data":null})"));
    }

    void cropKinds() {
        // With or without a token, and with the grant screen's "farmerprio".
        const Json list = data("/api/?do=produces")["produces"];
        QCOMPARE(q(data("/api/?do=produces&farmerprio=1", {})["produces"].dump()), q(list.dump()));
        QVERIFY(list.size() >= 12);
        std::set<std::string> names;
        for (const auto& crop : list) {
            QVERIFY((keys(crop) == std::vector<std::string>{"id", "name", "image"}));
            names.insert(crop["name"].get<std::string>());
            QVERIFY2(picture(crop["image"], "/static/media/produces/"), crop.dump().c_str());
        }
        for (const char* name : {"Buğday", "Mısır", "Ayçiçeği", "Üzüm (Bağ)", "Şeker Pancarı", "Zeytin"})
            QVERIFY2(names.count(name), name);
    }

    void agriculturalProducts() {
        const Json list = data("/api/?do=produce/aps")["aps"];
        QVERIFY(list.size() >= 8);
        QVERIFY((keys(list[0]) == std::vector<std::string>{"id", "name"}));
        // The campaign popup's product is one of them, under the same id and name.
        const Json popup =
            data("/api/?do=popup", {{"Authorization", "Bearer " + testing::tokenOf("farmer")}})["popup"];
        bool found = false;
        for (const auto& product : list)
            found = found || (product["id"] == popup["pest_id"] && product["name"] == popup["pest_name"]);
        QVERIFY(found);
    }

    void pages() {
        const std::pair<const char*, const char*> pages[] = {
            {"conditions-of-use", "Genel Kullanım Şartları"},
            {"kvkk", "Kişisel Verilerin Korunması ve İşlenmesi Aydınlatma Metni"},
            {"etk", "Ticari Elektronik İleti Onay Metni"},
            {"yarisma-kosullar", "Yarışma Şart ve Koşullar"}};
        for (const auto& [slug, name] : pages) {
            const Json page = data(std::string("/api/?do=page/detail&slug=") + slug)["page"];
            QVERIFY((keys(page) == std::vector<std::string>{"slug", "name", "text"}));
            QCOMPARE(q(page["slug"].get<std::string>() + "|" + page["name"].get<std::string>()),
                     q(std::string(slug) + "|" + name));
            const auto text = page["text"].get<std::string>();
            // A fragment: the app wraps it in its own page.
            QVERIFY(text.size() > 300 && text.find("<p>") != std::string::npos);
            QVERIFY(text.find("<html") == std::string::npos && text.find("<body") == std::string::npos);
        }
    }

    void unknownPages() {
        const QString rejected = QStringLiteral(
            R"({"status":400,"message":"Sayfa bulunamadı.","errors":{"slug":"Sayfa bulunamadı."},"data":null})");
        for (const char* query : {"&slug=yok", "&slug=", "", "&slug=KVKK", "&slug=kvkk%27--"})
            QCOMPARE(q(get(std::string("/api/?do=page/detail") + query).body), rejected);
    }
};

QTEST_GUILESS_MAIN(ReferenceDataTest)
#include "ReferenceDataTest.moc"
