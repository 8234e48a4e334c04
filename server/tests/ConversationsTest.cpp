#include "conversations/Conversations.h"

#include <QTest>

#include "TestSupport.h"

using namespace ekinora::server;
using namespace testing;

namespace {

const std::string Jpeg = std::string("\xFF\xD8\xFF\xE0", 4) + std::string(300, 'j') + "\xFF\xD9";
// Larger than the service's usual body limit, which only a video may pass.
const std::string Mp4 = std::string("\0\0\0\x18" "ftypmp42", 12) + std::string(3 * 1024 * 1024, 'v');

} // namespace

// Subjects between the askers and the agronomists: who reaches which, the statuses, the paging and
// the media of a message.
class ConversationsTest : public ServiceTest {
    Q_OBJECT

    std::int64_t addSubject(const std::string& title, const std::string& token = Farmer) {
        return s->post("subject/add", {{"title", title}, {"description", "Açıklama"}}, token).json["data"]["subject"]["id"];
    }
    Json subjects(const std::string& token, bool more = false) {
        return s->get(std::string("/api/?do=subjects") + (more ? "&ptoken=true" : ""), token).json["data"]["subjects"];
    }
    Reply thread(std::int64_t id, const std::string& token) {
        return s->get("/api/?do=subject/messages&limit=1000&id=" + std::to_string(id), token);
    }
    Reply upload(std::int64_t subject, httplib::MultipartFormDataItems files, const std::string& token = Farmer) {
        files.insert(files.begin(), {{"id", "0", "", ""}, {"subjectId", std::to_string(subject), "", ""},
                                     {"bearer", token, "", ""}, {"do", "subject/message/send", "", ""}});
        return Reply::from(s->client->Post("/omr/upload/", s->bearer(token), files));
    }

private slots:

    void aQuestionIsAnsweredAndClosed() {
        const auto id = addSubject("Buğdayda sarı pas");
        QCOMPARE(upload(id, {{"upload[0]", Jpeg, "photo.jpg", "image/jpeg"}}).status(), 200);

        // The agronomist sees it with the asker's name, unread; the farmer's own list has no name.
        Json row = subjects(Staff)[0];
        JCOMPARE(row["title"], Json("Buğdayda sarı pas"));
        JCOMPARE(row["farmer"]["fullname"], Json("Hasan Doğru"));
        JCOMPARE(row["isRead"], Json(false));
        QVERIFY(!subjects(Farmer)[0].contains("farmer"));
        QCOMPARE(s->get("/api/?do=subject/message/check", Staff).json["data"]["count"].get<int>(), 1);

        Json subject = thread(id, Staff).json["data"]["subject"];
        JCOMPARE(subject["messages"][0]["sender"], Json("farmer"));
        const std::string image = subject["messages"][0]["image"];
        const auto served = s->client->Get(image.substr(image.find("/omr/uploads/")).c_str());
        QVERIFY(served && served->body == Jpeg);
        JCOMPARE(subjects(Farmer)[0]["isRead"], Json(true));

        // An empty text without media is refused; the answer and the confirmation go through.
        QCOMPARE(s->post("subject/message/send", {{"subjectId", id}, {"text", " "}}, Staff).status(), 400);
        QCOMPARE(s->post("subject/message/send", {{"subjectId", id}, {"text", "Fungisit uygulayın."}}, Staff).status(), 200);
        JCOMPARE(s->get("/api/?do=subject/set-status&subjectId=" + std::to_string(id), Staff).json["data"]["status"], Json(1));

        subject = thread(id, Farmer).json["data"]["subject"];
        JCOMPARE(subject["status"], Json(1));
        JCOMPARE(subject["messages"][1]["sender"], Json("adminUser"));
        JCOMPARE(subject["messages"][1]["image"], Json(nullptr));
        // Asking for more puts it back to waiting; the answer brings it back to the agronomist's check.
        JCOMPARE(s->get("/api/?do=subject/set-status&subjectId=" + std::to_string(id), Farmer).json["data"]["status"], Json(2));
        s->post("subject/message/send", {{"subjectId", id}, {"text", "Dozu 100 ml/da."}}, Staff);
        JCOMPARE(thread(id, Farmer).json["data"]["subject"]["status"], Json(0));
    }

    void anAskerReachesOnlyHisOwnSubjects() {
        const auto id = addSubject("Elmada karaleke");
        const std::string sid = std::to_string(id);
        QCOMPARE(thread(id, Member).status(), 404);
        QCOMPARE(s->post("subject/message/send", {{"subjectId", id}, {"text", "Merhaba"}}, Member).status(), 404);
        QCOMPARE(s->get("/api/?do=subject/set-status&subjectId=" + sid, Member).status(), 404);
        QCOMPARE(s->get("/api/?do=subject/delete&id=" + sid, Member).status(), 404);
        QCOMPARE(upload(id, {{"upload[0]", Jpeg, "photo.jpg", "image/jpeg"}}, Member).status(), 404);
        QCOMPARE(s->db->scalar("SELECT COUNT(*) FROM media_uploads"), std::int64_t(0));
        for (const auto& row : subjects(Member)) QVERIFY(row["id"] != id);
        QCOMPARE(s->get("/api/?do=subject/delete&id=" + sid, Farmer).status(), 200);
        QCOMPARE(thread(id, Farmer).status(), 404);
    }

    void pagesFollowTheReader() {
        for (int i = 0; i < 12; ++i) addSubject("Soru " + std::to_string(i));
        const Json first = subjects(Farmer);
        QCOMPARE(int(first.size()), 10);
        JCOMPARE(first[0]["title"], Json("Soru 11"));
        const Json second = subjects(Farmer, true);
        QCOMPARE(int(second.size()), 12 + 3 - 10); // the three seeded subjects come last
        QCOMPARE(int(subjects(Farmer, true).size()), 0);
        // A first page starts over.
        JCOMPARE(subjects(Farmer)[0]["title"], Json("Soru 11"));
        QCOMPARE(int(subjects(Farmer, true).size()), 5);
    }

    void aVideoComesWithItsPreview() {
        const auto id = addSubject("Serada beyazsinek");
        // Not a video nor a picture, or a preview that is not a picture: refused and nothing kept.
        QCOMPARE(upload(id, {{"upload[0]", "RIFF....AVI ", "video.mp4", "video/mp4"}}).status(), 400);
        QCOMPARE(upload(id, {{"upload[1]", "GIF89a", "photo.jpg", "image/jpeg"}, {"upload[0]", Mp4, "video.mp4", "video/mp4"}}).status(), 400);
        const std::string bigPicture = Jpeg + std::string(1024 * 1024, 'j');
        JCOMPARE(upload(id, {{"upload[0]", bigPicture, "photo.jpg", "image/jpeg"}}).json["errors"]["upload"], Json("Fotoğraf en fazla 1 MB olabilir."));
        QCOMPARE(s->db->scalar("SELECT COUNT(*) FROM media_uploads"), std::int64_t(0));

        QCOMPARE(upload(id, {{"upload[1]", Jpeg, "photo.jpg", "image/jpeg"}, {"upload[0]", Mp4, "video.mp4", "video/mp4"}}).status(), 200);
        const Json message = thread(id, Staff).json["data"]["subject"]["messages"][0];
        const std::string image = message["image"], video = message["video"];
        QVERIFY(s->client->Get(image.substr(image.find("/omr/uploads/")).c_str())->body == Jpeg);
        const auto film = s->client->Get(video.substr(video.find("/omr/uploads/")).c_str());
        QVERIFY(film->body == Mp4);
        QCOMPARE(q(film->get_header_value("Content-Type")), QStringLiteral("video/mp4"));
        // A contest answer still takes no video.
        httplib::MultipartFormDataItems contest = {{"do", "surveys/submit", "", ""}, {"question_id", "204", "", ""},
                                                   {"upload[0]", Mp4, "video.mp4", "video/mp4"}};
        QCOMPARE(Reply::from(s->client->Post("/omr/upload/", s->bearer(Farmer), contest)).status(), 400);
    }
};

QTEST_GUILESS_MAIN(ConversationsTest)
#include "ConversationsTest.moc"
