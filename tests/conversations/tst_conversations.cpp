// The subject list, the thread and the new question against scripted replies: what each side sees,
// what goes out (the media upload read part by part), and what a reply changes.

#include "FakePlatform.h"
#include "conversations/ConversationsScreens.h"
#include "conversations/MessageDetailViewController.h"
#include "conversations/MessageRequest.h"
#include "conversations/MessageViewController.h"
#include "conversations/NewMessageViewController.h"
#include "platform/NavigationController.h"
#include "service/LocalStore.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTest>
#include <QUrlQuery>

using namespace ekinora;
using namespace ekinora::testing;
using namespace ekinora::conversations;

namespace {

QJsonObject envelope(const QJsonValue& data, int status = 200) {
    return QJsonObject{{"status", status}, {"message", ""}, {"errors", QJsonObject{}}, {"data", data}};
}
QJsonObject subject(int id, int status, bool read, const QJsonValue& farmer = QJsonValue::Undefined) {
    QJsonObject s{{"id", id}, {"title", QString("Soru %1").arg(id)}, {"date", "01.06.2026 10:00"}, {"status", status}, {"isRead", read}};
    if (!farmer.isUndefined()) s.insert("farmer", farmer);
    return s;
}
QJsonObject message(int id, const QString& sender, const QJsonValue& image = QJsonValue::Null) {
    return QJsonObject{{"id", id}, {"sender", sender}, {"text", "Metin"}, {"image", image}, {"date", "01.06.2026"}};
}
QString query(const HttpRequest& r, const char* key) {
    return QUrlQuery(QUrl::fromEncoded(r.url)).queryItemValue(key, QUrl::FullyDecoded);
}
// The form's part headers in the order they go out.
QStringList partNames(const QByteArray& body) {
    QStringList names;
    for (const QByteArray& line : body.split('\n'))
        if (line.startsWith("Content-Disposition")) names << QString::fromUtf8(line.trimmed()).remove("Content-Disposition: form-data; ");
    return names;
}

} // namespace

class ConversationsTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        fake = new FakePlatform;
        fake->store->setString("token", "tok-1");
        conversations::registerScreens();
        fake->http->on("notifications", jsonReply(envelope(QJsonObject{{"unreadCount", 0}})));
        fake->http->on("subject/message/check", jsonReply(envelope(QJsonObject{{"count", 0}})));
    }
    void cleanup() {
        delete fake;
        fake = nullptr;
    }

    void listShowsEachSideItsStatesAndPages() {
        // An empty list: the asker keeps the asking button and no info, the answering side the reverse.
        signInAs("farmer");
        fake->http->on("subjects", jsonReply(envelope(QJsonObject{{"subjects", QJsonArray{}}})));
        auto* list = showList();
        QVERIFY(fake->posts.contains("checkMenuList") && fake->posts.contains("checkUnreadMessages"));
        QVERIFY(list->lblInfo->isHidden());
        QCOMPARE(list->constraintQuestionHeight->constant(), 50.0);
        delete nav;
        signInAs("adminUser");
        list = showList();
        QVERIFY(!list->lblInfo->isHidden());
        QCOMPARE(list->constraintQuestionHeight->constant(), 0.0);

        const QJsonObject asker{{"fullname", "Hasan Doğru"}};
        QJsonObject undated = subject(6, 0, true);
        undated.insert("date", QJsonValue::Null);
        fake->http->on("subjects", jsonReply(envelope(QJsonObject{{"subjects", QJsonArray{
            subject(1, 0, true, asker), subject(2, 0, false, asker), subject(3, 2, true, asker), subject(4, 0, false),
            subject(5, 3, true), undated}}})));
        delete nav;
        list = showList();
        const auto cell = [&](int row) { return list->tblMessage->cellForRow(row).values; };
        QCOMPARE(cell(0).value("lblReadCheck").toString(), QStringLiteral("OKUNDU"));
        QCOMPARE(cell(0).value("lblName").toString(), QStringLiteral("Hasan Doğru"));
        QCOMPARE(cell(1).value("lblReadCheck").toString(), QStringLiteral("İLETİLDİ"));
        QCOMPARE(cell(2).value("lblReadCheck").toString(), QStringLiteral("CEVAP BEKLENİYOR"));
        QCOMPARE(cell(3).value("lblReadCheck").toString(), QStringLiteral("OKUNMADI"));
        QCOMPARE(cell(3).value("lblName").toString(), QString());
        QVERIFY(!cell(4).contains("lblReadCheck")); // an unknown status leaves the cell as it was
        QCOMPARE(cell(5).value("lblDate").toString(), QString());
        QCOMPARE(cell(5).value("lblReadCheck").toString(), QStringLiteral("CEVAPLANMADI"));

        // A broadcast asks for the next page and appends it; the first page asks without "ptoken".
        QCOMPARE(query(fake->http->requestsFor("subjects").last(), "ptoken"), QString());
        fake->platform->notificationCenter().postNotificationName("refreshMessages", this);
        fake->run(0);
        QCOMPARE(query(fake->http->requestsFor("subjects").last(), "ptoken"), QStringLiteral("1")); // true, as a boolean goes in a query
        QCOMPARE(list->tblMessage->numberOfRows(), 12);
        // A drag that stops dead asks for nothing.
        const int asked = int(fake->http->requestsFor("subjects").size());
        list->scrollViewDidEndDragging(11, false);
        QCOMPARE(int(fake->http->requestsFor("subjects").size()), asked);
    }

    void deletionRemovesTheRowAtItsPlaceWhenTapped() {
        signInAs("farmer");
        fake->http->on("subjects", jsonReply(envelope(QJsonObject{{"subjects", QJsonArray{subject(1, 1, true), subject(2, 1, true)}}})));
        auto* list = showList();
        fake->http->on("subject/delete", jsonReply(envelope(QJsonObject{}, 404)));
        list->deleteRow(0);
        QCOMPARE(query(fake->http->requests.last(), "id"), QStringLiteral("1"));
        fake->run(0);
        // Whatever the reply says, the row goes.
        QCOMPARE(list->tblMessage->numberOfRows(), 1);
        QCOMPARE(list->arrMessages.at(0).toObject().value("id").toInt(), 2);
    }

    void closingRowDependsOnTheViewerAndTheStatus() {
        signInAs("farmer");
        auto* thread = showThread(0, {message(10, "farmer", "http://x/p.jpg"), message(11, "adminUser")});
        // A new subject: the asker sees no closing row; his picture stands outgoing without its text.
        QCOMPARE(thread->numberOfRows(), 2);
        auto row = thread->tblMessages->cellForRow(0);
        QCOMPARE(row.reuseIdentifier, QStringLiteral("OutgoingMediaCell"));
        QVERIFY(!row.values.contains("lblMessage"));
        QCOMPARE(thread->tblMessages->cellForRow(1).reuseIdentifier, QStringLiteral("IncomingTextCell"));
        // The scroll goes to the last message, not the closing row.
        QSignalSpy scrolled(thread, &MessageDetailViewController::scrollToRow);
        fake->run(600);
        QCOMPARE(scrolled.last().first().toInt(), 1);

        thread = showThread(1, {message(10, "loyalty")});
        QCOMPARE(thread->numberOfRows(), 2);
        row = thread->tblMessages->cellForRow(1);
        QCOMPARE(row.values.value("labelQuestion").toString(), QStringLiteral("Bu cevap size yardımcı oldu mu?"));
        QCOMPARE(row.values.value("buttonAction").toString(), QStringLiteral("Daha Fazla Bilgi"));

        // The answering side sees the farmer's message on the same side, and the confirmation.
        signInAs("adminUser");
        thread = showThread(0, {message(10, "farmer")});
        QCOMPARE(thread->tblMessages->cellForRow(0).reuseIdentifier, QStringLiteral("OutgoingTextCell"));
        row = thread->tblMessages->cellForRow(1);
        QCOMPARE(row.values.value("labelQuestion").toString(), QStringLiteral("Soru cevaplandı mı?"));
        thread->sendMessageStatus();
        const HttpRequest status = fake->http->requests.last();
        QCOMPARE(query(status, "do"), QStringLiteral("subject/set-status"));
        QCOMPARE(query(status, "subjectId"), QStringLiteral("7"));

        // Two will-show notifications give up the keyboard's height once.
        thread->keyboardWillShow(300);
        thread->keyboardWillShow(300);
        QCOMPARE(thread->constraintKeyboard->constant(), 300.0);
        thread->keyboardWillHide(300);
        QCOMPARE(thread->constraintKeyboard->constant(), 0.0);
    }

    void sendingKeepsTheTextOnFailureAndTheUploadsWireForm() {
        signInAs("farmer");
        auto* thread = showThread(1, {});
        // An empty text goes as it is; a failure keeps the field.
        fake->http->on("subject/message/send", jsonReply(QJsonObject{}, 500));
        thread->txtMessage->setText("Teşekkürler");
        thread->sendMessage();
        fake->run(0);
        QCOMPARE(QJsonDocument::fromJson(fake->http->requestsFor("subject/message/send").last().body).object().value("text").toString(),
                 QStringLiteral("Teşekkürler"));
        QCOMPARE(thread->txtMessage->text(), QStringLiteral("Teşekkürler"));

        // A picture as the first message: no "id", "do" the message command, one file part.
        QImage picture(20, 20, QImage::Format_RGB32);
        picture.fill(Qt::darkGreen);
        thread->postedImage = picture;
        thread->sendMedia();
        const HttpRequest upload = fake->http->requests.last();
        QVERIFY(upload.url.endsWith("/omr/upload/"));
        QCOMPARE(partNames(upload.body), (QStringList{"name=\"subjectId\"", "name=\"bearer\"", "name=\"do\"",
                                                      "name=\"upload[0]\"; filename=\"photo.jpg\""}));
        QVERIFY(upload.body.contains("\r\n\r\nsubject/message/send\r\n"));
        QVERIFY(upload.body.contains("Content-Type: image/jpeg\r\n\r\n\xFF\xD8"));
    }

    void newQuestionGoesUncheckedAndItsPictureFollows() {
        signInAs("farmer");
        auto* screen = mount(new NewMessageViewController);
        // A rejection does nothing; the placeholder goes with an empty title.
        fake->http->on("subject/add", jsonReply(envelope(QJsonObject{}, 400)));
        screen->doneButtonPressed();
        fake->run(0);
        QCOMPARE(QJsonDocument::fromJson(fake->http->requests.last().body).object().value("description").toString(),
                 NewMessageViewController::Placeholder);
        QVERIFY(screen->messageID.isUndefined());

        fake->http->on("subject/add", jsonReply(envelope(QJsonObject{{"subject", QJsonObject{{"id", 42}}}})));
        QImage picture(10, 10, QImage::Format_RGB32);
        picture.fill(Qt::yellow);
        screen->postedImage = picture;
        screen->doneButtonPressed();
        fake->run(0);
        const HttpRequest upload = fake->http->requests.last();
        QVERIFY(upload.url.endsWith("/omr/upload/"));
        QCOMPARE(partNames(upload.body).mid(0, 2), (QStringList{"name=\"id\"", "name=\"subjectId\""}));
        QVERIFY(upload.body.contains("name=\"id\"\r\n\r\n0\r\n"));
        QVERIFY(upload.body.contains("name=\"subjectId\"\r\n\r\n42\r\n"));
    }

private:
    FakePlatform* fake = nullptr;
    platform::NavigationController* nav = nullptr;

    void signInAs(const QString& type) { service::LocalStore::setUserInfo(QJsonObject{{"type", type}, {"fullname", "Ad Soyad"}}); }

    template <class T> T* mount(T* screen) {
        nav = new platform::NavigationController;
        nav->setViewControllers({screen});
        fake->platform->window().setRootViewController(nav);
        fake->platform->window().makeKeyAndVisible();
        fake->run(0);
        return screen;
    }
    MessageViewController* showList() { return mount(new MessageViewController); }

    MessageDetailViewController* showThread(int status, const QJsonArray& messages) {
        fake->http->on("subject/messages", jsonReply(envelope(QJsonObject{{"subject", QJsonObject{
            {"title", "Başlık"}, {"description", "Açıklama"}, {"date", "01.06.2026"}, {"status", status}, {"messages", messages}}}})));
        auto* screen = new MessageDetailViewController;
        screen->messageID = 7;
        return mount(screen);
    }
};

QTEST_MAIN(ConversationsTest)
#include "tst_conversations.moc"
