#include "contests/Contests.h"

#include "accounts/DemoAccounts.h"
#include "media/Upload.h"
#include "core/Params.h"

#include <algorithm>
#include <random>
#include <set>

namespace ekinora::server::contests {

namespace {

struct Context {
    Database& db;
    Clock now;
};

constexpr size_t MaxWrittenAnswer = 2000;

std::string statusOf(const Json& survey, std::int64_t now) {
    if (now < survey["starts_at"].get<std::int64_t>()) return Pending;
    if (!survey["drawn_at"].is_null() || now >= survey["ends_at"].get<std::int64_t>()) return Ended;
    return Running;
}

std::string date(std::int64_t seconds) {
    // dd.MM.yyyy in Turkey's time (UTC+3 all year).
    const std::time_t t = std::time_t(seconds + 3 * 3600);
    std::tm tm{};
    gmtime_r(&t, &tm);
    char text[16];
    std::strftime(text, sizeof text, "%d.%m.%Y", &tm);
    return text;
}

std::int64_t questionCount(Database& db, std::int64_t surveyId) {
    return db.scalar("SELECT COUNT(*) FROM survey_questions WHERE survey_id = ?", {surveyId});
}

std::int64_t answeredCount(Database& db, std::int64_t surveyId, std::int64_t userId) {
    return db.scalar("SELECT COUNT(*) FROM survey_responses WHERE survey_id = ? AND user_id = ?",
                     {surveyId, userId});
}

bool completed(Database& db, std::int64_t surveyId, std::int64_t userId) {
    const auto questions = questionCount(db, surveyId);
    return questions > 0 && answeredCount(db, surveyId, userId) >= questions;
}

Json surveyRecord(Database& db, const Json& row, std::int64_t userId, std::int64_t now) {
    const std::int64_t id = row["id"];
    return Json{{"id", id},
                {"name", row["name"]},
                {"description", row["description"]},
                {"prize", row["prize"]},
                {"starts_at", row["starts_at"]},
                {"ends_at", row["ends_at"]},
                {"status", statusOf(row, now)},
                {"already_completed", completed(db, id, userId)}};
}

const char* SurveyColumns = "SELECT id, name, description, prize, winner_count, starts_at, ends_at, drawn_at FROM surveys";

std::optional<Json> findSurvey(Database& db, std::int64_t id) {
    return db.queryRow(std::string(SurveyColumns) + " WHERE id = ?", {id});
}

// The questions this farmer has not answered yet, in order, with their choices.
Json openQuestions(Database& db, std::int64_t surveyId, std::int64_t userId) {
    Json questions = Json::array();
    const Json rows = db.query(
        "SELECT q.id, q.content, q.typed FROM survey_questions q WHERE q.survey_id = ? AND NOT EXISTS "
        "(SELECT 1 FROM survey_responses r WHERE r.question_id = q.id AND r.user_id = ?) ORDER BY q.position, q.id",
        {surveyId, userId});
    for (const auto& q : rows) {
        Json answers = Json::array();
        for (const auto& c : db.query("SELECT id, content FROM survey_choices WHERE question_id = ? "
                                      "ORDER BY position, id",
                                      {q["id"].get<std::int64_t>()}))
            answers.push_back(Json{{"id", c["id"]}, {"content", c["content"]}});
        questions.push_back(
            Json{{"question_id", q["id"]}, {"content", q["content"]}, {"typed", q["typed"]}, {"answers", answers}});
    }
    return questions;
}

Json winnersOf(Database& db, std::int64_t surveyId) {
    Json winners = Json::array();
    for (const auto& w : db.query("SELECT w.user_id, u.fullname FROM survey_winners w JOIN users u ON u.id = w.user_id "
                                  "WHERE w.survey_id = ? ORDER BY w.position",
                                  {surveyId}))
        winners.push_back(Json{{"farmer_id", w["user_id"]}, {"fullname", w["fullname"]}, {"result", "won"}});
    return winners;
}

Json currentUser(Database& db, const Json& survey, std::int64_t userId, bool drawn) {
    const std::int64_t surveyId = survey["id"];
    const std::string fullname =
        db.queryRow("SELECT fullname FROM users WHERE id = ?", {userId}).value_or(Json{{"fullname", ""}})["fullname"];
    std::string result, description;
    if (!drawn) {
        result = "waiting";
        description = "Çekiliş " + date(survey["ends_at"]) + " tarihinde yapılacaktır.";
    } else if (db.scalar("SELECT COUNT(*) FROM survey_winners WHERE survey_id = ? AND user_id = ?", {surveyId, userId})) {
        result = "won";
        description = "Çekilişte " + survey["prize"].get<std::string>() +
                      " kazandınız. Bölge temsilcimiz hediyenizin teslimi için sizinle iletişime geçecektir.";
    } else if (completed(db, surveyId, userId)) {
        result = "lost";
        description = "Bu çekilişte kazananlar arasında yer alamadınız. Katılımınız için teşekkür ederiz.";
    } else {
        result = "absent";
        description = "Bu yarışmaya katılmadınız. Yeni yarışmalarımızı kaçırmayın.";
    }
    return Json{{"farmer_id", userId}, {"fullname", fullname}, {"result", result}, {"result_description", description}};
}

Json listSurveys(const Context& c, const ApiCall& call) {
    const std::int64_t now = c.now();
    drawEnded(c.db, now);
    Json surveys = Json::array();
    // One page holds every contest; a request for a further page finds none.
    Params p(call);
    if (!p.has("ptoken")) {
        std::vector<Json> records;
        for (const auto& row : c.db.query(std::string(SurveyColumns) + " ORDER BY ends_at, id"))
            records.push_back(surveyRecord(c.db, row, call.userId, now));
        // Running contests first, then those to come, then the finished ones with the latest first.
        auto rank = [](const Json& s) { return s["status"] == Running ? 0 : s["status"] == Pending ? 1 : 2; };
        std::stable_sort(records.begin(), records.end(), [&](const Json& a, const Json& b) {
            if (rank(a) != rank(b)) return rank(a) < rank(b);
            if (rank(a) == 2) return a["ends_at"].get<std::int64_t>() > b["ends_at"].get<std::int64_t>();
            return false;
        });
        for (auto& r : records) surveys.push_back(std::move(r));
    }
    return envelope::success(Json{{"surveys", surveys}});
}

Json surveyDetail(const Context& c, const ApiCall& call) {
    Params p(call);
    const auto id = p.requiredInteger("id", "Yarışma seçiniz.", "Yarışma bulunamadı.");
    if (!p.ok()) return p.rejection();
    const std::int64_t now = c.now();
    drawEnded(c.db, now);
    const auto row = findSurvey(c.db, *id);
    if (!row) {
        p.fail("id", "Yarışma bulunamadı.");
        return p.rejection();
    }
    Json item = surveyRecord(c.db, *row, call.userId, now);
    const bool drawn = !(*row)["drawn_at"].is_null();
    // The questions stay closed until the start; an entrant who comes back finds only those left.
    item["questions"] = item["status"] == Pending ? Json::array() : openQuestions(c.db, *id, call.userId);
    item["winners"] = drawn ? winnersOf(c.db, *id) : Json::array();
    item["current_user"] = currentUser(c.db, *row, call.userId, drawn);
    return envelope::success(Json{{"surveyItem", item}});
}

Json submitAnswer(const Context& c, const ApiCall& call) {
    Params p(call);
    const auto questionId = p.requiredInteger("question_id", "Soru bulunamadı.", "Soru bulunamadı.");
    if (!p.ok()) return p.rejection();
    const auto question = c.db.queryRow("SELECT id, survey_id, typed FROM survey_questions WHERE id = ?", {*questionId});
    if (!question) {
        p.fail("question_id", "Soru bulunamadı.");
        return p.rejection();
    }
    const std::int64_t surveyId = (*question)["survey_id"];
    const std::string typed = (*question)["typed"];
    const std::string status = statusOf(*findSurvey(c.db, surveyId), c.now());
    if (status == Pending) p.fail("question_id", "Bu yarışma henüz başlamamıştır.");
    else if (status == Ended) p.fail("question_id", "Bu yarışma sona ermiştir.");
    else if (c.db.scalar("SELECT COUNT(*) FROM survey_responses WHERE question_id = ? AND user_id = ?",
                         {*questionId, call.userId}))
        p.fail("question_id", "Bu soruyu daha önce cevapladınız.");
    if (!p.ok()) return p.rejection();

    const Json choices = c.db.query("SELECT id, correct FROM survey_choices WHERE question_id = ? ORDER BY position, id",
                                    {*questionId});
    const std::string text = p.trimmed("textarea");
    auto picked = p.ids("answer_ids");
    std::optional<std::string> upload;
    bool scored = false, correct = false;

    if (typed == Photo) {
        upload = media::claimUpload(c.db, call.userId, p.trimmed("upload"));
        if (!upload) p.fail("upload", "Lütfen bir fotoğraf ekleyiniz.");
    } else if (typed == Written && (choices.empty() || !text.empty())) {
        // A written answer, or the text behind the last choice.
        if (text.empty()) p.fail("textarea", "Lütfen cevabınızı yazınız.");
        else if (text.size() > MaxWrittenAnswer) p.fail("textarea", "Cevabınız en fazla 2000 karakter olabilir.");
        picked = std::vector<std::int64_t>{};
    } else {
        std::set<std::int64_t> known, right;
        for (const auto& ch : choices) {
            known.insert(ch["id"].get<std::int64_t>());
            if (ch["correct"].get<std::int64_t>()) right.insert(ch["id"].get<std::int64_t>());
        }
        if (!picked) p.fail("answer_ids", "Geçersiz seçenek.");
        else if (picked->empty()) p.fail("answer_ids", "Lütfen bir seçenek işaretleyiniz.");
        else if (std::any_of(picked->begin(), picked->end(), [&](auto id) { return !known.count(id); }))
            p.fail("answer_ids", "Geçersiz seçenek.");
        else if (typed == Written && picked->back() == choices.back()["id"].get<std::int64_t>())
            p.fail("textarea", "Lütfen cevabınızı yazınız.");
        else {
            scored = typed != Written;
            correct = scored && std::set<std::int64_t>(picked->begin(), picked->end()) == right;
        }
    }
    if (!p.ok()) return p.rejection();

    Json pickedJson = Json::array();
    for (auto id : *picked) pickedJson.push_back(id);
    c.db.execute("INSERT INTO survey_responses (survey_id, question_id, user_id, choice_ids, text, upload, scored, correct,"
                 " created_at) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)",
                 {surveyId, *questionId, call.userId, pickedJson.dump(),
                  typed == Written && !text.empty() ? SqlValue(text) : SqlValue(nullptr),
                  upload ? SqlValue(*upload) : SqlValue(nullptr), std::int64_t(scored), std::int64_t(correct), c.now()});
    const auto counts = *c.db.queryRow(
        "SELECT COALESCE(SUM(correct), 0) AS score, COALESCE(SUM(scored), 0) AS total FROM survey_responses "
        "WHERE survey_id = ? AND user_id = ?",
        {surveyId, call.userId});
    Json contestant{{"score", counts["score"]},
                    {"total", counts["total"]},
                    {"completed", completed(c.db, surveyId, call.userId)}};
    if (upload) contestant["photo"] = media::uploadUrl(call.baseUrl, *upload);
    return envelope::success(Json{{"contestant", contestant}});
}

Json drawCommand(const Context& c, const ApiCall& call) {
    Params p(call);
    const auto id = p.requiredInteger("id", "Yarışma seçiniz.", "Yarışma bulunamadı.");
    if (!p.ok()) return p.rejection();
    const auto row = findSurvey(c.db, *id);
    const std::int64_t now = c.now();
    if (!row) p.fail("id", "Yarışma bulunamadı.");
    else if (now < (*row)["starts_at"].get<std::int64_t>()) p.fail("id", "Bu yarışma henüz başlamamıştır.");
    else if (!(*row)["drawn_at"].is_null()) p.fail("id", "Bu yarışmanın çekilişi daha önce yapıldı.");
    if (!p.ok()) return p.rejection();
    draw(c.db, *id, now);
    return envelope::success(Json{{"winners", winnersOf(c.db, *id)}});
}

} // namespace

int draw(Database& db, std::int64_t surveyId, std::int64_t now) {
    int won = 0;
    db.transaction([&] {
        const auto row = findSurvey(db, surveyId);
        if (!row || !(*row)["drawn_at"].is_null()) return;
        const std::int64_t places = (*row)["winner_count"];
        const std::int64_t scoredQuestions = db.scalar(
            "SELECT COUNT(*) FROM survey_questions WHERE survey_id = ? AND typed IN ('single', 'multiple')", {surveyId});
        // Entrants: every question answered; the right answers to every choice question count first.
        const Json entrants = db.query(
            "SELECT user_id, SUM(correct) AS score FROM survey_responses WHERE survey_id = ? GROUP BY user_id "
            "HAVING COUNT(*) >= (SELECT COUNT(*) FROM survey_questions WHERE survey_id = ?)",
            {surveyId, surveyId});
        std::vector<std::int64_t> faultless, others;
        for (const auto& e : entrants)
            (e["score"].get<std::int64_t>() >= scoredQuestions ? faultless : others).push_back(e["user_id"]);
        std::mt19937_64 random{std::random_device{}()};
        std::shuffle(faultless.begin(), faultless.end(), random);
        std::shuffle(others.begin(), others.end(), random);
        faultless.insert(faultless.end(), others.begin(), others.end());
        for (std::int64_t i = 0; i < places && i < std::int64_t(faultless.size()); ++i, ++won)
            db.execute("INSERT INTO survey_winners (survey_id, user_id, position) VALUES (?, ?, ?)",
                       {surveyId, faultless[size_t(i)], i + 1});
        db.execute("UPDATE surveys SET drawn_at = ? WHERE id = ?", {now, surveyId});
    });
    return won;
}

void drawEnded(Database& db, std::int64_t now) {
    for (const auto& row : db.query("SELECT id FROM surveys WHERE drawn_at IS NULL AND ends_at <= ?", {now}))
        draw(db, row["id"].get<std::int64_t>(), now);
}

void registerContestCommands(Dispatch& dispatch, Database& db, Clock clock) {
    const Context c{db, clock ? clock : Clock(systemSeconds)};
    dispatch.add("surveys", Access::FarmerSide, listSurveys, c);
    dispatch.add("surveys/detail", Access::FarmerSide, surveyDetail, c);
    dispatch.add("surveys/submit", Access::FarmerSide, submitAnswer, c);
    dispatch.add("surveys/draw", Access::Staff, drawCommand, c);
}

namespace {

struct SeedChoice {
    const char* content;
    bool correct;
};
struct SeedQuestion {
    std::int64_t id;
    const char* typed;
    const char* content;
    std::vector<SeedChoice> choices;
};

void seedQuestions(Database& db, std::int64_t surveyId, const std::vector<SeedQuestion>& questions) {
    int position = 0;
    for (const auto& q : questions) {
        db.execute("INSERT OR IGNORE INTO survey_questions (id, survey_id, position, content, typed) VALUES (?, ?, ?, ?, ?)",
                   {q.id, surveyId, std::int64_t(++position), std::string(q.content), std::string(q.typed)});
        std::int64_t choice = 0;
        for (const auto& ch : q.choices) {
            ++choice;
            db.execute("INSERT OR IGNORE INTO survey_choices (id, question_id, position, content, correct) VALUES (?, ?, ?, ?, ?)",
                       {q.id * 10 + choice, q.id, choice, std::string(ch.content), std::int64_t(ch.correct)});
        }
    }
}

} // namespace

void seedContests(Database& db, Clock clock) {
    const std::int64_t now = clock ? clock() : systemSeconds();
    constexpr std::int64_t Day = 24 * 3600;
    db.transaction([&] {
        db.execute("INSERT OR IGNORE INTO surveys (id, name, description, prize, winner_count, starts_at, ends_at)"
                   " VALUES (1, ?, ?, ?, 3, ?, ?)",
                   {std::string("Hububatta Yaprak Hastalıkları Yarışması"),
                    std::string("Buğday ve arpada sık görülen yaprak hastalıklarını ne kadar tanıyorsunuz? Soruları "
                                "cevaplayanlar arasından 3 kişiye sırt pülverizatörü hediye."),
                    std::string("bir sırt pülverizatörü"), now - 45 * Day, now - 12 * Day});
        seedQuestions(db, 1,
                      {{101, "single", "Buğday yaprağında sarı-turuncu püstüllerle kendini gösteren hastalık hangisidir?",
                        {{"Sarı pas", true}, {"Rastık", false}, {"Kök çürüklüğü", false}}},
                       {102, "single", "Septorya yaprak lekesi en çok hangi koşullarda yayılır?",
                        {{"Serin ve yağışlı havada", true}, {"Kurak ve sıcak havada", false}, {"Kar altında", false}}}});
        db.execute("INSERT OR IGNORE INTO surveys (id, name, description, prize, winner_count, starts_at, ends_at)"
                   " VALUES (2, ?, ?, ?, 3, ?, ?)",
                   {std::string("Sonbahar Ekimi Bilgi Yarışması"),
                    std::string("Ekim öncesi hazırlığınızı bizimle paylaşın; katılanlar arasından 3 kişiye 50 kg "
                                "yaprak gübresi hediye."),
                    std::string("50 kg yaprak gübresi"), now - 5 * Day, now + 20 * Day});
        seedQuestions(db, 2,
                      {{201, "single", "Buğday ekiminde dekara atılması önerilen tohum miktarı hangi aralıktadır?",
                        {{"5-10 kg", false}, {"18-25 kg", true}, {"40-50 kg", false}}},
                       {202, "textarea", "Bu sezon tarlanızda en çok hangi zararlıyla karşılaştınız? Kısaca anlatınız.", {}},
                       {203, "textarea", "Toprak analizini en son ne zaman yaptırdınız?",
                        {{"Bu yıl", false}, {"1-3 yıl önce", false}, {"Hiç yaptırmadım", false}, {"Diğer (yazınız)", false}}},
                       {204, "image", "Ekime hazırladığınız tarlanızın bir fotoğrafını paylaşın.", {}}});
        db.execute("INSERT OR IGNORE INTO surveys (id, name, description, prize, winner_count, starts_at, ends_at)"
                   " VALUES (3, ?, ?, ?, 5, ?, ?)",
                   {std::string("Kışlık Sebze Fotoğraf Yarışması"),
                    std::string("Seranızdaki ya da bahçenizdeki kışlık sebzelerin en güzel fotoğrafını çekin; 5 kişiye "
                                "budama makası hediye."),
                    std::string("bir budama makası"), now + 10 * Day, now + 40 * Day});
        seedQuestions(db, 3,
                      {{301, "image", "Kışlık sebzelerinizin bir fotoğrafını paylaşın.", {}},
                       {302, "multiple", "Serada hangi sebzeleri yetiştiriyorsunuz?",
                        {{"Marul", false}, {"Ispanak", false}, {"Domates", false}, {"Salatalık", false}}}});

        // The finished contest's entrants: the demo farmer and farmers of other provinces, who keep
        // no token and never sign in here.
        struct Entrant {
            const char* phone;
            const char* fullname;
        };
        const std::vector<Entrant> others = {{"05321000901", "Hatice Arslan"}, {"05321000902", "Mustafa Yıldırım"},
                                             {"05321000903", "Emine Koç"}, {"05321000904", "İbrahim Şahin"}};
        std::vector<std::int64_t> ids;
        ids.push_back(db.scalar("SELECT id FROM users WHERE phone = ?", {accounts::demoAccount("farmer").phone}));
        for (const auto& e : others) {
            db.execute("INSERT OR IGNORE INTO users (phone, fullname, type) VALUES (?, ?, 'farmer')",
                       {std::string(e.phone), std::string(e.fullname)});
            ids.push_back(db.scalar("SELECT id FROM users WHERE phone = ?", {std::string(e.phone)}));
        }
        if (db.scalar("SELECT COUNT(*) FROM surveys WHERE id = 1 AND drawn_at IS NULL") == 0) return;
        for (size_t i = 0; i < ids.size(); ++i) {
            if (!ids[i]) continue;
            const bool right = i != 3; // one entrant missed the second question
            db.execute("INSERT OR IGNORE INTO survey_responses (survey_id, question_id, user_id, choice_ids, scored,"
                       " correct, created_at) VALUES (1, 101, ?, '[1011]', 1, 1, ?)",
                       {ids[i], now - 30 * Day});
            db.execute("INSERT OR IGNORE INTO survey_responses (survey_id, question_id, user_id, choice_ids, scored,"
                       " correct, created_at) VALUES (1, 102, ?, ?, 1, ?, ?)",
                       {ids[i], std::string(right ? "[1021]" : "[1022]"), std::int64_t(right), now - 30 * Day});
        }
        // The draw as it fell: the demo farmer second of three.
        const std::int64_t order[] = {ids[1], ids[0], ids[2]};
        for (std::int64_t i = 0; i < 3; ++i)
            if (order[i])
                db.execute("INSERT OR IGNORE INTO survey_winners (survey_id, user_id, position) VALUES (1, ?, ?)",
                           {order[i], i + 1});
        db.execute("UPDATE surveys SET drawn_at = ends_at WHERE id = 1");
    });
}

} // namespace ekinora::server::contests
