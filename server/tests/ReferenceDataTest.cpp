#include "accounts/DemoAccounts.h"
#include "core/Server.h"

#include <QTest>

#include "TestSupport.h"

#include <set>

using namespace ekinora::server;
using testing::Json;
using testing::q;
using testing::Reply;

namespace {

// What the login screen sends before anybody has logged in.
const httplib::Headers NoToken{{"Authorization", "Bearer (null)"}};

std::vector<std::string> keys(const Json& object) {
    std::vector<std::string> out;
    for (auto it = object.begin(); it != object.end(); ++it)
        out.push_back(it.key());
    return out;
}

} // namespace

// The lists and texts the app reads on the login screen: regions, crops, products, pages.
class ReferenceDataTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Server> m_server;
    std::unique_ptr<httplib::Client> m_client;

    Reply get(const std::string& target, const httplib::Headers& headers = NoToken) {
        return Reply::from(m_client->Get(target.c_str(), headers));
    }
    Json data(const std::string& target, const httplib::Headers& headers = NoToken) {
        const auto reply = get(target, headers);
        if (reply.json["status"] != 200) return nullptr;
        return reply.json["data"];
    }

private slots:
    void initTestCase() {
        m_server = std::make_unique<Server>(ServerOptions{});
        m_client = std::make_unique<httplib::Client>("127.0.0.1", m_server->start());
    }

    void cleanupTestCase() {
        m_client.reset();
        m_server.reset();
    }

    void cities() {
        const Json list = data("/api/?do=region/cities")["cities"];
        QCOMPARE(int(list.size()), 81);
        QCOMPARE(q(list.front().dump()), QStringLiteral(R"({"id":1,"name":"Adana"})"));
        QCOMPARE(q(list.back()["name"].get<std::string>()), QStringLiteral("Düzce"));
        std::set<std::string> names;
        for (const auto& city : list) {
            QVERIFY((keys(city) == std::vector<std::string>{"id", "name"}));
            names.insert(city["name"].get<std::string>());
        }
        QCOMPARE(int(names.size()), 81);
        QVERIFY(names.count("İzmir") && names.count("Şanlıurfa") && names.count("Çanakkale"));
        // The same list with a token as without.
        QCOMPARE(q(data("/api/?do=region/cities",
                        {{"Authorization", "Bearer " + accounts::demoAccount("farmer").token}})
                       .dump()),
                 q(Json{{"cities", list}}.dump()));
    }

    void countiesOfACity() {
        const Json list = data("/api/?do=region/counties&cityId=42")["counties"];
        QCOMPARE(int(list.size()), 31);
        bool found = false;
        for (const auto& county : list) {
            QVERIFY((keys(county) == std::vector<std::string>{"id", "name"}));
            found = found || county["name"] == "Çumra";
        }
        QVERIFY(found);
        // The id comes back as the app sent it: a number in a JSON body works too.
        const auto posted = Reply::from(
            m_client->Post("/api/?do=region/counties", NoToken, R"({"cityId":42})", "application/json"));
        QCOMPARE(q(posted.json["data"]["counties"].dump()), q(list.dump()));
        // No city's counties leak into another's.
        QCOMPARE(q(data("/api/?do=region/counties&cityId=35")["counties"].front()["name"].get<std::string>()),
                 QStringLiteral("Aliağa"));
    }

    void badCityIds_data() {
        QTest::addColumn<QString>("query");
        QTest::newRow("absent") << "";
        QTest::newRow("empty") << "&cityId=";
        QTest::newRow("zero") << "&cityId=0";
        QTest::newRow("past the last") << "&cityId=82";
        QTest::newRow("negative") << "&cityId=-1";
        QTest::newRow("text") << "&cityId=Konya";
        QTest::newRow("trailing text") << "&cityId=42abc";
    }

    void badCityIds() {
        QFETCH(QString, query);
        QCOMPARE(q(get("/api/?do=region/counties" + query.toStdString()).body),
                 QStringLiteral(R"({"status":400,"message":"Lütfen il seçiniz.",)"
                                R"("errors":{"cityId":"Lütfen il seçiniz."},"data":null})"));
    }

    void cropKinds() {
        // With or without a token, and with the grant screen's "farmerprio".
        const Json list = data("/api/?do=produces")["produces"];
        QCOMPARE(q(data("/api/?do=produces&farmerprio=1", {})["produces"].dump()), q(list.dump()));
        QVERIFY(list.size() >= 12);

        std::set<std::string> names, images;
        std::set<std::int64_t> ids;
        for (const auto& crop : list) {
            QVERIFY((keys(crop) == std::vector<std::string>{"id", "name", "image"}));
            QVERIFY(crop["id"].is_number_integer());
            ids.insert(crop["id"].get<std::int64_t>());
            names.insert(crop["name"].get<std::string>());
            images.insert(crop["image"].get<std::string>());
        }
        QCOMPARE(ids.size(), list.size());
        QCOMPARE(names.size(), list.size());
        QCOMPARE(images.size(), list.size());
        for (const char* name : {"Buğday", "Mısır", "Ayçiçeği", "Üzüm (Bağ)", "Şeker Pancarı", "Zeytin"})
            QVERIFY2(names.count(name), name);

        // Every picture is an absolute address on this service, and it is there.
        const std::string prefix = m_server->baseUrl() + "/static/media/produces/";
        for (const auto& url : images) {
            QVERIFY2(url.rfind(prefix, 0) == 0, url.c_str());
            const auto picture = get(url.substr(m_server->baseUrl().size()));
            QCOMPARE(picture.http, 200);
            QCOMPARE(q(picture.contentType), QStringLiteral("image/svg+xml"));
            QVERIFY(picture.body.find("<svg") != std::string::npos);
        }
    }

    void agriculturalProducts() {
        const Json list = data("/api/?do=produce/aps")["aps"];
        QVERIFY(list.size() >= 8);
        std::set<std::int64_t> ids;
        int registered = 0;
        for (const auto& product : list) {
            QVERIFY((keys(product) == std::vector<std::string>{"id", "name"}));
            ids.insert(product["id"].get<std::int64_t>());
            if (product["name"].get<std::string>().find("<sup>&reg;</sup>") != std::string::npos)
                ++registered;
        }
        QCOMPARE(ids.size(), list.size());
        QVERIFY(registered > 0 && registered < int(list.size()));

        // The campaign popup's product is one of them, under the same id and name.
        const Json popup =
            data("/api/?do=popup",
                 {{"Authorization", "Bearer " + accounts::demoAccount("farmer").token}})["popup"];
        bool found = false;
        for (const auto& product : list)
            found = found || (product["id"] == popup["pest_id"] && product["name"] == popup["pest_name"]);
        QVERIFY(found);
    }

    void pages_data() {
        QTest::addColumn<QString>("slug");
        QTest::addColumn<QString>("name");
        QTest::newRow("conditions") << "conditions-of-use"
                                    << "Genel Kullanım Şartları";
        QTest::newRow("privacy notice") << "kvkk"
                                        << "Kişisel Verilerin Korunması ve İşlenmesi Aydınlatma Metni";
        QTest::newRow("commercial messages") << "etk"
                                             << "Ticari Elektronik İleti Onay Metni";
        QTest::newRow("contest terms") << "yarisma-kosullar"
                                       << "Yarışma Şart ve Koşullar";
    }

    void pages() {
        QFETCH(QString, slug);
        QFETCH(QString, name);
        const Json page = data("/api/?do=page/detail&slug=" + slug.toStdString())["page"];
        QVERIFY((keys(page) == std::vector<std::string>{"slug", "name", "text"}));
        QCOMPARE(q(page["slug"].get<std::string>()), slug);
        QCOMPARE(q(page["name"].get<std::string>()), name);
        const auto text = page["text"].get<std::string>();
        QVERIFY(text.size() > 300);
        QVERIFY(text.find("<p>") != std::string::npos);
        // A fragment: the app wraps it in its own page.
        QVERIFY(text.find("<html") == std::string::npos && text.find("<body") == std::string::npos);
    }

    void privacyNoticeOffersAMailAddress() {
        const auto text = data("/api/?do=page/detail&slug=kvkk")["page"]["text"].get<std::string>();
        QVERIFY(text.find("href=\"mailto:") != std::string::npos);
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
