#include "contests/Contests.h"

#include <QTest>

#include "TestSupport.h"

using namespace ekinora::server;
using namespace testing;

namespace {

// A JPEG's first bytes are all the service looks at.
const std::string Jpeg = std::string("\xFF\xD8\xFF\xE0", 4) + std::string(600, 'x') + "\xFF\xD9";

Json byId(const Json& list, std::int64_t id) {
    for (const auto& e : list)
        if (e["id"] == id) return e;
    return nullptr;
}

} // namespace

// Contests: their states, the questions a farmer still has, answers kept once, the scoring, the draw
// and the photographs.
class ContestsTest : public ServiceTest {
    Q_OBJECT

    Reply submit(std::int64_t question, const Json& body, const std::string& token = Farmer) {
        return Reply::from(s->client->Post(("/api/?do=surveys/submit&question_id=" + std::to_string(question)).c_str(),
                                           s->bearer(token), body.dump(), "application/json; charset=UTF-8"));
    }
    Reply photo(std::int64_t question, const std::string& bytes, const std::string& token = Farmer,
                const std::string& command = "surveys/submit") {
        httplib::MultipartFormDataItems items = {{"do", command, "", ""},
                                                 {"question_id", std::to_string(question), "", ""},
                                                 {"bearer", token, "", ""},
                                                 {"upload[0]", bytes, "photo.jpg", "image/jpeg"}};
        return Reply::from(s->client->Post("/omr/upload/", s->bearer(token), items));
    }
    Json detail(std::int64_t id, const std::string& token = Farmer) {
        return s->get("/api/?do=surveys/detail&id=" + std::to_string(id), token).json["data"]["surveyItem"];
    }

private slots:

    void listShowsEachSeededContestInItsState() {
        const Json surveys = s->get("/api/?do=surveys", Farmer).json["data"]["surveys"];
        QCOMPARE(int(surveys.size()), 3);
        JCOMPARE(surveys[0]["status"], Json("active"));
        JCOMPARE(surveys[0]["already_completed"], Json(false));
        JCOMPARE(byId(surveys, 3)["status"], Json("pending"));
        JCOMPARE(byId(surveys, 1)["status"], Json("ended"));
        JCOMPARE(byId(surveys, 1)["already_completed"], Json(true));
        // One page holds them all.
        QCOMPARE(int(s->get("/api/?do=surveys&ptoken=1", Farmer).json["data"]["surveys"].size()), 0);

        // The finished contest's winners, the demo farmer among them.
        const Json finished = detail(1);
        QCOMPARE(int(finished["winners"].size()), 3);
        JCOMPARE(finished["winners"][1]["fullname"], Json(accounts::demoAccount("farmer").fullname));
        JCOMPARE(finished["current_user"]["result"], Json("won"));
        JCOMPARE(finished["current_user"]["farmer_id"], finished["winners"][1]["farmer_id"]);
        // A club member who did not take part reads that, not a loss.
        JCOMPARE(detail(1, Member)["current_user"]["result"], Json("absent"));
        // The one to come shows no questions yet, and takes no answers.
        QCOMPARE(int(detail(3)["questions"].size()), 0);
        JCOMPARE(submit(302, {{"answer_ids", {3021}}}).json["errors"]["question_id"], "Bu yarışma henüz başlamamıştır.");
    }

    void answersAreKeptOnceAndChoicesScored() {
        Json questions = detail(2)["questions"];
        QCOMPARE(int(questions.size()), 4);

        // A wrong choice, then a written answer: scored 0 of 1.
        Reply r = submit(201, {{"answer_ids", {2011, 2012}}});
        QCOMPARE(r.status(), 200);
        JCOMPARE(r.json["data"]["contestant"]["score"], Json(0));
        JCOMPARE(r.json["data"]["contestant"]["total"], Json(1));
        JCOMPARE(submit(201, {{"answer_ids", {2012}}}).json["errors"]["question_id"],
                 Json("Bu soruyu daha önce cevapladınız."));
        JCOMPARE(submit(202, {{"textarea", "   "}}).json["errors"]["textarea"], Json("Lütfen cevabınızı yazınız."));
        QCOMPARE(submit(202, {{"textarea", "Süne zararı"}}).status(), 200);
        // The text choice without its text is refused; its text alone is taken, unscored.
        JCOMPARE(submit(203, {{"answer_ids", {2034}}}).json["errors"]["textarea"], Json("Lütfen cevabınızı yazınız."));
        JCOMPARE(submit(203, {{"answer_ids", {2011}}}).json["errors"]["answer_ids"], Json("Geçersiz seçenek."));
        r = submit(203, {{"textarea", "Dört yıl önce"}});
        JCOMPARE(r.json["data"]["contestant"]["total"], Json(1));
        // Another farmer's answers are his own.
        JCOMPARE(submit(201, {{"answer_ids", {2012}}}, Member).json["data"]["contestant"]["score"], Json(1));

        const Json left = detail(2)["questions"];
        QCOMPARE(int(left.size()), 1);
        JCOMPARE(left[0]["typed"], Json("image"));
        QCOMPARE(s->db->scalar("SELECT COUNT(*) FROM survey_responses WHERE survey_id = 2 AND user_id = "
                               "(SELECT id FROM users WHERE phone = ?)",
                               {accounts::demoAccount("farmer").phone}),
                 std::int64_t(3));
    }

    void photographsComeThroughTheUploadAndAreServedBack() {
        // Not a picture, a command that takes none, no picture: refused, nothing kept.
        JCOMPARE(photo(204, "GIF89a not a jpeg").json["errors"]["upload"],
                 Json("Yalnızca JPEG ya da PNG fotoğraf gönderilebilir."));
        QCOMPARE(photo(204, Jpeg, Farmer, "farmer/update-profile").status(), 400);
        JCOMPARE(submit(204, {{"upload", "0123456789abcdef0123456789abcdef.jpg"}}).json["errors"]["upload"],
                 Json("Lütfen bir fotoğraf ekleyiniz."));
        // Without a valid token the command refuses as /api does.
        QCOMPARE(photo(204, Jpeg, "nobody").status(), 401);
        QCOMPARE(s->db->scalar("SELECT COUNT(*) FROM media_uploads"), std::int64_t(0));

        Reply r = photo(204, Jpeg);
        QCOMPARE(r.status(), 200);
        const std::string url = r.json["data"]["contestant"]["photo"];
        const std::string path = url.substr(url.find("/omr/uploads/"));
        const auto served = s->client->Get(path.c_str());
        QVERIFY(served && served->status == 200);
        QCOMPARE(served->body.size(), Jpeg.size());
        QCOMPARE(q(served->get_header_value("Content-Type")), QStringLiteral("image/jpeg"));
        // A second photograph for the same question is refused and not kept.
        JCOMPARE(photo(204, Jpeg).json["errors"]["question_id"], Json("Bu soruyu daha önce cevapladınız."));
        QCOMPARE(s->db->scalar("SELECT COUNT(*) FROM media_uploads"), std::int64_t(1));
        QCOMPARE(s->get("/omr/uploads/../service.db").http, 404);
    }

    void theDrawPicksEntrantsOnceTheContestEnds() {
        // The farmer answers all four, the member only one.
        submit(201, {{"answer_ids", {2012}}});
        submit(202, {{"textarea", "Kımıl"}});
        submit(203, {{"answer_ids", {2031}}});
        photo(204, Jpeg);
        submit(201, {{"answer_ids", {2012}}}, Member);
        JCOMPARE(byId(s->get("/api/?do=surveys", Farmer).json["data"]["surveys"], 2)["already_completed"], Json(true));
        JCOMPARE(detail(2)["current_user"]["result"], Json("waiting"));

        // An early draw of a running contest closes it.
        Reply r = s->get("/api/?do=surveys/draw&id=2", Staff);
        QCOMPARE(r.status(), 200);
        QCOMPARE(int(r.json["data"]["winners"].size()), 1); // the only entrant
        JCOMPARE(s->get("/api/?do=surveys/draw&id=2", Staff).json["errors"]["id"],
                 Json("Bu yarışmanın çekilişi daha önce yapıldı."));
        JCOMPARE(s->get("/api/?do=surveys/draw&id=3", Staff).json["errors"]["id"],
                 Json("Bu yarışma henüz başlamamıştır."));
        JCOMPARE(detail(2)["current_user"]["result"], Json("won"));
        JCOMPARE(detail(2, Member)["current_user"]["result"], Json("absent"));
        JCOMPARE(submit(201, {{"answer_ids", {2012}}}, testing::tokenOf("loyalty")).json["errors"]["question_id"],
                 Json("Bu yarışma sona ermiştir."));

        // The contest to come is drawn by itself once its end has passed, with nobody to choose.
        s->now->store(systemSeconds() + 60 * 24 * 3600);
        const Json later = detail(3);
        JCOMPARE(later["status"], Json("ended"));
        QCOMPARE(int(later["winners"].size()), 0);
        QCOMPARE(s->db->scalar("SELECT COUNT(*) FROM surveys WHERE drawn_at IS NULL"), std::int64_t(0));
    }

    void theDrawPrefersFaultlessEntrants() {
        // Survey 1 is already drawn: build a fresh one with two places and three entrants.
        s->db->execute("INSERT INTO surveys (id, name, winner_count, starts_at, ends_at) VALUES (9, 'Deneme', 2, 0, 10)");
        s->db->execute("INSERT INTO survey_questions (id, survey_id, position, content, typed) VALUES (901, 9, 1, 'S', 'single')");
        s->db->execute("INSERT INTO survey_questions (id, survey_id, position, content, typed) VALUES (902, 9, 2, 'Y', 'textarea')");
        const auto ids = s->db->query("SELECT id FROM users WHERE type = 'farmer' ORDER BY id LIMIT 4");
        for (int i = 0; i < 4; ++i) {
            const std::int64_t user = ids[size_t(i)]["id"];
            s->db->execute("INSERT INTO survey_responses (survey_id, question_id, user_id, scored, correct, created_at)"
                           " VALUES (9, 901, ?, 1, ?, 0)",
                           {user, std::int64_t(i == 1 || i == 3)});
            // The fourth did not finish.
            if (i < 3)
                s->db->execute("INSERT INTO survey_responses (survey_id, question_id, user_id, created_at) VALUES (9, 902, ?, 0)",
                               {user});
        }
        for (int round = 0; round < 5; ++round) {
            s->db->execute("DELETE FROM survey_winners WHERE survey_id = 9");
            s->db->execute("UPDATE surveys SET drawn_at = NULL WHERE id = 9");
            QCOMPARE(contests::draw(*s->db, 9, 100), 2);
            const auto first = s->db->scalar("SELECT user_id FROM survey_winners WHERE survey_id = 9 AND position = 1");
            QCOMPARE(first, ids[1]["id"].get<std::int64_t>());
            QVERIFY(!s->db->scalar("SELECT COUNT(*) FROM survey_winners WHERE survey_id = 9 AND user_id = ?", {ids[3]["id"].get<std::int64_t>()}));
        }
    }
};

QTEST_GUILESS_MAIN(ContestsTest)
#include "ContestsTest.moc"
