#include "conversations/Conversations.h"

#include "core/Access.h"
#include "core/Envelope.h"
#include "core/Params.h"
#include "media/Upload.h"

#include <algorithm>

namespace ekinora::server::conversations {

namespace {

constexpr std::int64_t PageSize = 10;
const std::string NoSubject = "Aradığınız soru bulunamadı.";
const char* const ShownDate = "strftime('%d.%m.%Y %H:%M', %s)";

bool asks(const ApiCall& call) { return allows(Access::FarmerSide, call.role); }

std::string dateOf(const std::string& column) {
    std::string text = ShownDate;
    text.replace(text.find("%s"), 2, column);
    return text;
}

// The subject as this caller may reach it: the asker only his own.
std::optional<Json> reachableSubject(Database& db, const ApiCall& call, std::int64_t id) {
    if (asks(call))
        return db.queryRow("SELECT id, user_id, status FROM subjects WHERE id = ? AND user_id = ?", {id, call.userId});
    return db.queryRow("SELECT id, user_id, status FROM subjects WHERE id = ?", {id});
}

std::string mediaUrl(const ApiCall& call, const Json& path) {
    if (!path.is_string()) return {};
    const std::string text = path.get<std::string>();
    return text.rfind("http", 0) == 0 ? text : call.baseUrl + text;
}

// A page of subjects, newest activity first. The first page starts the reader anew; "ptoken"
// true continues where the last page of this account ended.
Json listSubjects(Database& db, const ApiCall& call) {
    const Params p(call);
    const bool more = p.answer("ptoken") == Answer::Yes || p.trimmed("ptoken") == "true";
    std::int64_t offset = 0;
    if (more) offset = db.scalar("SELECT next_offset FROM subject_readers WHERE user_id = ?", {call.userId}, 0);
    db.execute("INSERT INTO subject_readers (user_id, next_offset) VALUES (?, ?)"
               " ON CONFLICT(user_id) DO UPDATE SET next_offset = excluded.next_offset",
               {call.userId, offset + PageSize});
    const std::string columns =
        "SELECT s.id, s.title, " + dateOf("s.created_at") +
        " AS date, s.status, s.read_by_staff AS isRead, u.fullname FROM subjects s JOIN users u ON u.id = s.user_id";
    const std::string order = " ORDER BY COALESCE((SELECT MAX(m.created_at) FROM messages m WHERE m.subject_id = s.id),"
                              " s.created_at) DESC, s.id DESC LIMIT ? OFFSET ?";
    const Json rows = asks(call) ? db.query(columns + " WHERE s.user_id = ?" + order, {call.userId, PageSize, offset})
                                 : db.query(columns + order, {PageSize, offset});
    Json subjects = Json::array();
    for (const auto& row : rows) {
        Json subject = {{"id", row["id"]}, {"title", row["title"]}, {"date", row["date"]},
                        {"status", row["status"]}, {"isRead", row["isRead"].get<std::int64_t>() != 0}};
        if (!asks(call)) subject["farmer"] = {{"fullname", row["fullname"]}};
        subjects.push_back(std::move(subject));
    }
    return envelope::success(Json{{"subjects", std::move(subjects)}});
}

Json addSubject(Database& db, const ApiCall& call) {
    Params p(call);
    const std::string title = p.required("title", "Sorunuzun başlığını yazınız.");
    const std::string description = p.trimmed("description");
    if (title.size() > 200) p.fail("title", "Başlık en fazla 200 karakter olabilir.");
    if (description.size() > 4000) p.fail("description", "Açıklama en fazla 4000 karakter olabilir.");
    if (!p.ok()) return p.rejection();
    db.execute("INSERT INTO subjects (user_id, title, description) VALUES (?, ?, ?)",
               {call.userId, trimmed(title), description});
    return envelope::success(Json{{"subject", {{"id", db.lastInsertId()}}}}, "Sorunuz iletildi.");
}

Json deleteSubject(Database& db, const ApiCall& call) {
    Params p(call);
    const auto id = p.requiredInteger("id", "Silinecek soruyu seçiniz.", NoSubject);
    if (!p.ok()) return p.rejection();
    if (db.execute("DELETE FROM subjects WHERE id = ? AND user_id = ?", {*id, call.userId}) != 1)
        return envelope::failure(envelope::NotFound, NoSubject);
    return envelope::success();
}

// The thread whole (up to "limit" messages). Opening it marks the other side's messages read, and
// for the answering side the subject too.
Json subjectMessages(Database& db, const ApiCall& call) {
    Params p(call);
    const auto id = p.requiredInteger("id", "Soruyu seçiniz.", NoSubject);
    const std::int64_t limit = std::clamp<std::int64_t>(p.integer("limit").value_or(1000), 1, 1000);
    if (!p.ok()) return p.rejection();
    const auto reachable = reachableSubject(db, call, *id);
    if (!reachable) return envelope::failure(envelope::NotFound, NoSubject);
    const std::int64_t owner = (*reachable)["user_id"].get<std::int64_t>();
    db.transaction([&] {
        if (asks(call)) {
            db.execute("UPDATE messages SET read = 1 WHERE subject_id = ? AND sender_user_id <> ?", {*id, owner});
        } else {
            db.execute("UPDATE messages SET read = 1 WHERE subject_id = ? AND sender_user_id = ?", {*id, owner});
            db.execute("UPDATE subjects SET read_by_staff = 1 WHERE id = ?", {*id});
        }
    });
    const Json subject = *db.queryRow("SELECT title, description, " + dateOf("created_at") +
                                          " AS date, status FROM subjects WHERE id = ?",
                                      {*id});
    const Json rows = db.query("SELECT m.id, u.type AS sender, m.text, m.image, m.video, " + dateOf("m.created_at") +
                                   " AS date FROM messages m JOIN users u ON u.id = m.sender_user_id"
                                   " WHERE m.subject_id = ? ORDER BY m.id LIMIT ?",
                               {*id, limit});
    Json messages = Json::array();
    for (const auto& row : rows) {
        Json message = {{"id", row["id"]}, {"sender", row["sender"]}, {"text", row["text"]}, {"image", nullptr},
                        {"date", row["date"]}};
        if (row["image"].is_string()) message["image"] = mediaUrl(call, row["image"]);
        if (row["video"].is_string()) message["video"] = mediaUrl(call, row["video"]);
        messages.push_back(std::move(message));
    }
    return envelope::success(Json{{"subject",
                                   {{"title", subject["title"]},
                                    {"description", subject["description"]},
                                    {"date", subject["date"]},
                                    {"status", subject["status"]},
                                    {"messages", std::move(messages)}}}});
}

// A message in a subject: a text, or a picture, or a video with its preview (through the media
// upload). The asker asking again puts an answered subject back to waiting; an answer to a waiting
// subject puts it back to new, where the answering side confirms it.
Json sendMessage(Database& db, const ApiCall& call) {
    Params p(call);
    const auto id = p.requiredInteger("subjectId", "Soruyu seçiniz.", NoSubject);
    const std::string text = p.trimmed("text");
    if (text.size() > 4000) p.fail("text", "Mesaj en fazla 4000 karakter olabilir.");
    if (!p.ok()) return p.rejection();
    const auto reachable = reachableSubject(db, call, *id);
    if (!reachable) return envelope::failure(envelope::NotFound, NoSubject);

    std::optional<std::string> upload, preview;
    if (const auto name = p.filled("upload")) {
        upload = media::claimUpload(db, call.userId, *name);
        if (!upload) return envelope::rejection({{"upload", "Gönderilen dosya bulunamadı."}});
    }
    if (const auto name = p.filled("preview"); name && upload) preview = media::claimUpload(db, call.userId, *name);
    if (text.empty() && !upload) return envelope::rejection({{"text", "Mesajınızı yazınız."}});

    const bool video = upload && upload->size() > 4 && upload->substr(upload->size() - 4) == ".mp4";
    SqlValue image = nullptr, film = nullptr;
    if (video) {
        film = media::UploadedPrefix + *upload;
        if (preview) image = media::UploadedPrefix + *preview;
    } else if (upload) {
        image = media::UploadedPrefix + *upload;
    }
    const std::int64_t status = (*reachable)["status"].get<std::int64_t>();
    db.transaction([&] {
        db.execute("INSERT INTO messages (subject_id, sender_user_id, text, image, video) VALUES (?, ?, ?, ?, ?)",
                   {*id, call.userId, text, image, film});
        if (asks(call)) {
            db.execute("UPDATE subjects SET read_by_staff = 0, status = ? WHERE id = ?",
                       {status == Answered ? std::int64_t(Waiting) : status, *id});
        } else if (status == Waiting) {
            db.execute("UPDATE subjects SET status = ? WHERE id = ?", {std::int64_t(New), *id});
        }
    });
    return envelope::success(Json{{"message", {{"id", db.lastInsertId()}}}});
}

// The one step each side can take: the answering side confirms a new subject answered; the asker
// asks for more about an answered one. Any other state stays as it is.
Json setStatus(Database& db, const ApiCall& call) {
    Params p(call);
    const auto id = p.requiredInteger("subjectId", "Soruyu seçiniz.", NoSubject);
    if (!p.ok()) return p.rejection();
    const auto reachable = reachableSubject(db, call, *id);
    if (!reachable) return envelope::failure(envelope::NotFound, NoSubject);
    const std::int64_t status = (*reachable)["status"].get<std::int64_t>();
    std::int64_t next = status;
    if (asks(call) && status == Answered) next = Waiting;
    if (!asks(call) && status == New) next = Answered;
    db.execute("UPDATE subjects SET status = ? WHERE id = ?", {next, *id});
    return envelope::success(Json{{"status", next}});
}

} // namespace

const char* conversationsSchemaSql() {
    return R"sql(
ALTER TABLE subjects ADD COLUMN description TEXT NOT NULL DEFAULT '';
ALTER TABLE subjects ADD COLUMN read_by_staff INTEGER NOT NULL DEFAULT 0;
ALTER TABLE messages ADD COLUMN image TEXT;
ALTER TABLE messages ADD COLUMN video TEXT;
CREATE TABLE subject_readers (
    user_id INTEGER PRIMARY KEY REFERENCES users(id) ON DELETE CASCADE,
    next_offset INTEGER NOT NULL DEFAULT 0
);
)sql";
}

void registerConversationCommands(Dispatch& dispatch, Database& db) {
    dispatch.add("subjects", Access::Account, listSubjects, db);
    dispatch.add("subject/add", Access::FarmerSide, addSubject, db);
    dispatch.add("subject/delete", Access::FarmerSide, deleteSubject, db);
    dispatch.add("subject/messages", Access::Account, subjectMessages, db);
    dispatch.add("subject/message/send", Access::Account, sendMessage, db);
    dispatch.add("subject/set-status", Access::Account, setStatus, db);
}

namespace {

struct SeedMessage {
    bool fromAsker;
    const char* text;
    const char* image;
    const char* age; // before now, as SQLite reads a modifier
};

struct SeedThread {
    const char* askerPhone;
    const char* title;
    const char* description;
    int status;
    bool readByStaff;
    const char* age;
    std::vector<SeedMessage> messages;
};

} // namespace

void seedConversations(Database& db) {
    const std::int64_t agronomist = db.scalar("SELECT id FROM users WHERE phone = '05051000404'", {}, 0);
    if (!agronomist) return;
    const std::vector<SeedThread> threads = {
        {"05321000101", "Buğdayda süne zararı",
         "Çumra'daki ekmeklik buğday tarlamda başakların bir kısmı beyazladı, sapların üzerinde kahverengi "
         "böcekler var. Fotoğrafını gönderiyorum. İlaçlama için geç mi kaldım?",
         New, true, "-2 hours",
         {{true, "", "/static/conversations/bugday-sune.jpg", "-2 hours"}}},
        {"05321000101", "Mısırda yaprak sararması",
         "Silajlık mısırım 8-10 yapraklı dönemde, alt yapraklar kenarlardan sararmaya başladı. Gübre mi eksik?",
         Answered, true, "-3 days",
         {{false,
           "Merhaba Hasan Bey, alt yapraklarda kenardan başlayan sararma çoğunlukla potasyum eksikliğidir. Toprak "
           "analizi yaptırmanızı, sonuca göre dekara 10-15 kg potasyum sülfat vermenizi öneririm. Sulamadan sonra "
           "uygulayın.",
           nullptr, "-2 days"}}},
        {"05321000101", "Şeker pancarında yaprak lekesi",
         "Pancar yapraklarında ortası gri, kenarı kırmızımsı küçük lekeler çıktı. Geçen yıl da olmuştu.",
         Waiting, true, "-9 days",
         {{false,
           "Tarif ettiğiniz belirtiler Cercospora yaprak lekesine uyuyor. Lekeler yaprakların %5'ini geçmeden "
           "koruyucu fungisit uygulaması yapılmalı, 14 gün arayla tekrarlanmalı.",
           nullptr, "-8 days"},
          {true, "İlk ilaçlamayı yaptım ama yeni yapraklarda da leke görüyorum. İkinci ilaçlamada başka etken madde mi kullanmalıyım?",
           nullptr, "-1 days"}}},
        {"05331000202", "Bağda külleme",
         "Alaşehir'deki sultani çekirdeksiz bağımda salkımlarda beyaz unlu bir tabaka oluştu.",
         Answered, true, "-6 days",
         {{false,
           "Ayşe Hanım, bu külleme hastalığıdır. Kükürt tozu ya da ıslanabilir kükürt ile sabah serinliğinde "
           "ilaçlama yapabilirsiniz; sıcaklık 30 derecenin üzerindeyken uygulamayın.",
           nullptr, "-5 days"}}},
    };
    db.transaction([&] {
        for (const auto& thread : threads) {
            const std::int64_t asker = db.scalar("SELECT id FROM users WHERE phone = ?", {std::string(thread.askerPhone)}, 0);
            if (!asker || db.scalar("SELECT COUNT(*) FROM subjects WHERE user_id = ? AND title = ?",
                                    {asker, std::string(thread.title)}))
                continue;
            // Ids of their own, far from the ones the service hands out.
            const std::int64_t seeded = std::max<std::int64_t>(9000, db.scalar("SELECT MAX(id) FROM subjects", {}, 0)) + 1;
            db.execute("INSERT INTO subjects (id, user_id, title, description, status, read_by_staff, created_at)"
                       " VALUES (?, ?, ?, ?, ?, ?, datetime('now', ?))",
                       {seeded, asker, std::string(thread.title), std::string(thread.description), std::int64_t(thread.status),
                        std::int64_t(thread.readByStaff), std::string(thread.age)});
            const std::int64_t subject = db.lastInsertId();
            for (const auto& m : thread.messages) {
                db.execute("INSERT INTO messages (subject_id, sender_user_id, text, image, read, created_at)"
                           " VALUES (?, ?, ?, ?, 1, datetime('now', ?))",
                           {subject, m.fromAsker ? asker : agronomist, std::string(m.text),
                            m.image ? SqlValue(std::string(m.image)) : SqlValue(nullptr), std::string(m.age)});
            }
        }
    });
}

} // namespace ekinora::server::conversations
