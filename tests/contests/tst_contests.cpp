// The contest list, the question flow and the results against scripted replies: what each contest
// offers, what an answer sends and when the flow moves on, and how the winners read.

#include "FakePlatform.h"
#include "contests/ContestsScreens.h"
#include "contests/GameRequest.h"
#include "contests/GameViewController.h"
#include "contests/QuestionsViewController.h"
#include "contests/ResultViewController.h"
#include "platform/AlertController.h"
#include "platform/NavigationController.h"
#include "widgets/Colors.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace ekinora;
using namespace ekinora::testing;
using namespace ekinora::contests;

namespace {

QJsonObject envelope(const QJsonValue& data, int status = 200, const QJsonObject& errors = {}) {
    return QJsonObject{{"status", status}, {"message", ""}, {"errors", errors}, {"data", data}};
}
QJsonObject game(int id, const QString& status, bool completed) {
    return QJsonObject{{"id", id}, {"name", QString("Yarışma %1").arg(id)}, {"description", "Açıklama"},
                       {"ends_at", 1767268800}, {"status", status}, {"already_completed", completed}};
}
QJsonObject question(int id, const QString& typed, const QJsonArray& answers = {}) {
    return QJsonObject{{"question_id", id}, {"content", QString("Soru %1").arg(id)}, {"typed", typed}, {"answers", answers}};
}
QJsonArray choices(int first, int n) {
    QJsonArray list;
    for (int i = 0; i < n; ++i) list.append(QJsonObject{{"id", first + i}, {"content", QString("Seçenek %1").arg(i + 1)}});
    return list;
}
QJsonObject bodyOf(const HttpRequest& r) { return QJsonDocument::fromJson(r.body).object(); }

} // namespace

class ContestsTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        fake = new FakePlatform;
        fake->store->setString("token", "tok-1");
        contests::registerScreens();
        fake->http->on("notifications", jsonReply(envelope(QJsonObject{{"unreadCount", 0}})));
    }
    void cleanup() {
        delete fake;
        fake = nullptr;
    }

    void requestKeepsTheWireForm() {
        GameRequest r;
        r.doParam = QStringLiteral("surveys/submit");
        r.gameID = 4;
        r.arrAnswers = QJsonArray{};
        r.pageToken = true;
        QStringList keys;
        for (const auto& [key, value] : r.dictionaryRepresentation()) keys << key;
        // No "do" for the answer, no empty "answer_ids", the token last.
        QCOMPARE(keys, (QStringList{"id", "ptoken", "bearer"}));

        r.questionID = QStringLiteral("203");
        r.gameID = QJsonValue(QJsonValue::Undefined);
        r.pageToken = QJsonValue(QJsonValue::Undefined);
        r.arrAnswers = QJsonArray{2031};
        r.submitAnswers({}, {});
        const HttpRequest sent = fake->http->requests.last();
        QVERIFY(sent.url.endsWith("/api/?do=surveys/submit&question_id=203"));
        QCOMPARE(bodyOf(sent), (QJsonObject{{"answer_ids", QJsonArray{2031}}, {"bearer", "tok-1"}}));

        // The photograph: the dictionary's fields, "do" and "question_id", one file part last.
        r.arrAnswers = QJsonValue(QJsonValue::Undefined);
        r.mediaData = QByteArray("\xFF\xD8\xFFjpeg", 7);
        r.sendMedia({}, {});
        const HttpRequest upload = fake->http->requests.last();
        QVERIFY(upload.url.endsWith("/omr/upload/"));
        QCOMPARE(upload.header("Authorization"), QByteArray("Bearer tok-1"));
        const QByteArray boundary = upload.header("Content-Type").split('=').last();
        const QList<QByteArray> parts = upload.body.split('\n');
        QStringList names;
        for (const QByteArray& line : parts)
            if (line.startsWith("Content-Disposition")) names << QString::fromUtf8(line.trimmed());
        QCOMPARE(names, (QStringList{"Content-Disposition: form-data; name=\"bearer\"",
                                     "Content-Disposition: form-data; name=\"do\"",
                                     "Content-Disposition: form-data; name=\"question_id\"",
                                     "Content-Disposition: form-data; name=\"upload[0]\"; filename=\"photo.jpg\""}));
        QVERIFY(upload.body.contains("surveys/submit\r\n"));
        QVERIFY(upload.body.endsWith("\xFF\xD8\xFFjpeg\r\n--" + boundary + "--\r\n"));
    }

    void listDecidesWhatEachContestOffers() {
        fake->http->on("surveys", jsonReply(envelope(QJsonObject{
                                      {"surveys", QJsonArray{game(1, "ended", true), game(2, "active", true),
                                                             game(3, "pending", false), game(4, "active", false),
                                                             game(5, "pending", true)}}})));
        auto* screen = showGames();
        QCOMPARE(screen->tblGame->numberOfRows(), 5);
        QVERIFY(screen->imgInfoBack->isHidden() && screen->lblInfoBack->isHidden());
        const auto cell = [&](int row) { return screen->tblGame->cellForRow(row).values; };
        QCOMPARE(cell(0).value("lblInfo").toString(), QStringLiteral("Tamamlanma Tarihi: 01.01.2026"));
        // Ended and completed both: cerulean, not grey.
        QCOMPARE(cell(0).value("lblAction").toString(), QStringLiteral("SONUÇLAR"));
        QCOMPARE(cell(0).value("lblActionBackground").value<QColor>(), widgets::Colors::cerulean());
        QCOMPARE(cell(1).value("lblActionBackground").value<QColor>(), widgets::Colors::border());
        QCOMPARE(cell(1).value("imgStatusColor").value<QColor>(), widgets::Colors::black());
        QCOMPARE(cell(2).value("lblAction").toString(), QStringLiteral("KATIL"));
        QCOMPARE(cell(3).value("imgStatusColor").value<QColor>(), widgets::Colors::leaf());

        // Taps: a pending one is refused; a completed pending one goes to its results.
        fake->http->on("surveys/detail", jsonReply(envelope(QJsonObject{{"surveyItem", QJsonObject{}}})));
        screen->tblGame->selectRow(2);
        QVERIFY(fake->alert());
        QCOMPARE(fake->alert()->message(), QStringLiteral("Bu yarışma henüz başlamamıştır."));
        fake->alert()->tapButton(0);
        QCOMPARE(nav->depth(), 1);
        screen->tblGame->selectRow(4);
        QVERIFY(!fake->alert());
        auto* result = qobject_cast<ResultViewController*>(nav->topViewController());
        QVERIFY(result);
        QCOMPARE(result->gameID, QJsonValue(5));
        nav->popViewControllerAnimated(false);
        // Back on the list: it was emptied on leaving and fills again from the first page.
        QCOMPARE(screen->arrGames.size(), 0);
        fake->run(0);
        screen->tblGame->selectRow(3);
        auto* questions = qobject_cast<QuestionsViewController*>(nav->topViewController());
        QVERIFY(questions);
        QCOMPARE(questions->gameID, QJsonValue(4));
        nav->popViewControllerAnimated(false);
        fake->run(0);

        // A later page is appended.
        QCOMPARE(screen->arrGames.size(), 5);
        const int before = fake->http->requestsFor("surveys").size();
        screen->scrollViewDidEndDragging(4, true);
        fake->run(0);
        QCOMPARE(queryValues(fake->http->requests.last(), "ptoken"), QStringList{"1"});
        QCOMPARE(screen->arrGames.size(), 10);
        QCOMPARE(fake->http->requestsFor("surveys").size(), before + 1);
    }

    void emptyListShowsTheNoticeAndAFailureLeavesItHidden() {
        fake->http->on("surveys", transportFailure());
        auto* screen = showGames();
        QVERIFY(screen->imgInfoBack->isHidden());
        fake->http->on("surveys", jsonReply(envelope(QJsonObject{{"surveys", QJsonArray{}}})));
        screen->getGames(nullptr);
        fake->run(0);
        QVERIFY(!screen->imgInfoBack->isHidden() && !screen->lblInfoBack->isHidden());
    }

    void flowAnswersEveryKindAndMovesOn() {
        QJsonArray list{question(201, "single", choices(2011, 3)), question(202, "textarea"),
                        question(203, "textarea", choices(2031, 3)), question(204, "puzzle", choices(2041, 2)),
                        question(205, "image")};
        auto* flow = showQuestions(list);
        QCOMPARE(flow->lblQuestionNumber->text(), QStringLiteral("1/5"));
        QCOMPARE(flow->buttonSubmit->title(), QStringLiteral("Devam"));
        QVERIFY(!flow->buttonSubmit->userInteractionEnabled());

        // Two choices at once; the reply's counts come up over the next question.
        fake->http->on("surveys/submit", jsonReply(envelope(QJsonObject{{"contestant", QJsonObject{{"score", 1}, {"total", 3}}}})));
        flow->didSelectItem(0);
        flow->didSelectItem(2);
        QCOMPARE(flow->arrAnswers, (QJsonArray{2011, 2013}));
        QCOMPARE(flow->answerCell(2).value("imgCheck").toString(), QStringLiteral("checkAnswer"));
        QVERIFY(flow->buttonSubmit->userInteractionEnabled());
        submit(flow);
        QCOMPARE(bodyOf(fake->http->requests.last()), (QJsonObject{{"answer_ids", QJsonArray{2011, 2013}}, {"bearer", "tok-1"}}));
        QCOMPARE(flow->lblQuestionNumber->text(), QStringLiteral("2/5"));
        QVERIFY(!flow->viewResult->isHidden());
        QCOMPARE(flow->lblResultTrue->text(), QStringLiteral("1 Doğru"));
        QCOMPARE(flow->lblResultFalse->text(), QStringLiteral("2 Yanlış"));
        QCOMPARE(flow->lblResultDuration->text(), flow->lblDuration->text());
        flow->closeResultView();

        // A written answer: the placeholder does not count.
        QVERIFY(!flow->viewTextAnswer->isHidden() && flow->collAnswers->isHidden());
        QCOMPARE(flow->textAnswer->text(), QuestionsViewController::Placeholder);
        flow->textViewDidBeginEditing(true);
        flow->textViewDidEndEditing(true, QString());
        QVERIFY(!flow->buttonSubmit->userInteractionEnabled());
        flow->textViewDidEndEditing(true, QStringLiteral("Süne"));
        submit(flow);
        QCOMPARE(bodyOf(fake->http->requests.last()).value("textarea").toString(), QStringLiteral("Süne"));
        flow->closeResultView();

        // The last choice opens the text cell; another choice closes it and empties the picks.
        QCOMPARE(flow->numberOfItems(), 3);
        flow->didSelectItem(2);
        QCOMPARE(flow->numberOfItems(), 4);
        QCOMPARE(flow->answerCell(3).value("reuseIdentifier").toString(), QStringLiteral("AnswerTextCell"));
        QVERIFY(!flow->buttonSubmit->userInteractionEnabled());
        flow->didSelectItem(0);
        QCOMPARE(flow->numberOfItems(), 3);
        QCOMPARE(flow->arrAnswers, QJsonArray{2031});
        flow->didSelectItem(2);
        QCOMPARE(flow->arrAnswers, QJsonArray{2033});
        flow->textViewDidEndEditing(false, QStringLiteral("Dört yıl önce"));
        QVERIFY(flow->buttonSubmit->userInteractionEnabled());
        // A rejected answer is only logged: no panel, no alert, and the next question.
        fake->http->on("surveys/submit",
                       jsonReply(envelope(QJsonValue::Null, 400, QJsonObject{{"question_id", "Bu soruyu daha önce cevapladınız."}})));
        submit(flow);
        // The text choice's own id is not sent.
        QCOMPARE(bodyOf(fake->http->requests.last()), (QJsonObject{{"textarea", "Dört yıl önce"}, {"bearer", "tok-1"}}));
        QVERIFY(flow->viewResult->isHidden());
        QVERIFY(!fake->alert());
        QVERIFY(fake->logged("Bu soruyu daha önce cevapladınız."));

        // A kind the screen does not know is answered by its choices.
        QCOMPARE(flow->lblQuestionNumber->text(), QStringLiteral("4/5"));
        QVERIFY(!flow->collAnswers->isHidden());
        flow->didSelectItem(1);
        // A failed transport keeps the question on screen.
        fake->http->on("surveys/submit", transportFailure());
        submit(flow);
        QCOMPARE(flow->lblQuestionNumber->text(), QStringLiteral("4/5"));
        QCOMPARE(fake->platform->window().hudCount(), 0);
        fake->http->on("surveys/submit", jsonReply(envelope(QJsonObject{{"contestant", QJsonObject{{"score", 1}, {"total", 2}}}})));
        submit(flow);

        // The photograph goes through the upload; the last question's answer ends the flow.
        QCOMPARE(flow->buttonSubmit->title(), QStringLiteral("Onayla"));
        QVERIFY(!flow->viewPhotoAnswer->isHidden());
        QVERIFY(!flow->buttonSubmit->userInteractionEnabled());
        QImage picture(40, 30, QImage::Format_RGB32);
        picture.fill(Qt::darkGreen);
        flow->imagePickerDidFinish(picture);
        QVERIFY(flow->buttonSubmit->userInteractionEnabled() && !flow->buttonRePhoto->isHidden());
        fake->http->on("/omr/upload/", jsonReply(envelope(QJsonObject{{"contestant", QJsonObject{{"score", 1}, {"total", 2}}}})));
        flow->viewResult->setHidden(true);
        submit(flow);
        HttpRequest upload;
        for (const auto& r : fake->http->requests)
            if (r.url.endsWith("/omr/upload/")) upload = r;
        QVERIFY(upload.body.contains("name=\"question_id\"\r\n\r\n205\r\n"));
        QVERIFY(upload.body.contains("\r\n\r\n\xFF\xD8\xFF"));
        QVERIFY(flow->viewResult->isHidden()); // no panel after a photograph
        QCOMPARE(nav->depth(), 1);
    }

    void contestWithoutQuestionsEndsAtOnce() {
        showQuestions({});
        QCOMPARE(nav->depth(), 1);
    }

    void resultsShowWinnersOrTheEndDate() {
        const QJsonArray winners{QJsonObject{{"farmer_id", 7}, {"fullname", "Hatice Arslan"}, {"result", "won"}},
                                 QJsonObject{{"farmer_id", 3}, {"fullname", "Ahmet Yılmaz"}, {"result", "won"}},
                                 QJsonObject{{"farmer_id", 9}, {"fullname", "Emine Koç"}, {"result", "won"}},
                                 QJsonObject{{"farmer_id", 10}, {"fullname", "Ali Er"}, {"result", "won"}},
                                 QJsonObject{{"farmer_id", 11}, {"fullname", "Can Ak"}, {"result", "won"}}};
        auto* won = showResult(QJsonObject{{"winners", winners}, {"ends_at", 1767268800},
                                           {"current_user", QJsonObject{{"farmer_id", 3}, {"result", "won"}, {"result_description", "Kazandınız."}}}});
        QVERIFY(!won->tblScores->isHidden() && won->viewInfo->isHidden() && !won->lblCongrats->isHidden());
        QCOMPARE(won->lblScoreMessage->text(), QStringLiteral("Kazandınız."));
        QCOMPARE(won->scoreCell(1).value("lblOrder").toString(), QStringLiteral("2."));
        QCOMPARE(won->scoreCell(1).value("textColor").value<QColor>(), widgets::Colors::cerulean());
        QCOMPARE(won->scoreCell(0).value("textColor").value<QColor>(), widgets::Colors::black());

        auto* lost = showResult(QJsonObject{{"winners", winners}, {"current_user", QJsonObject{{"farmer_id", 4}, {"result", "lost"}, {"result_description", "Bu sefer olmadı."}}}});
        QVERIFY(lost->lblCongrats->isHidden());
        QCOMPARE(lost->lblScoreMessage->text(), QStringLiteral("Bu sefer olmadı."));
        for (int row = 0; row < 5; ++row) QCOMPARE(lost->scoreCell(row).value("textColor").value<QColor>(), widgets::Colors::black());

        // No draw yet: the end date alone; "current_user" is not read.
        auto* waiting = showResult(QJsonObject{{"winners", QJsonArray{}}, {"ends_at", 1767268800}, {"current_user", QJsonValue::Null}});
        QVERIFY(!waiting->viewInfo->isHidden() && waiting->tblScores->isHidden() && waiting->lblCongrats->isHidden());
        QCOMPARE(waiting->lblInfo->text(), QStringLiteral("01.01.2026"));
        QCOMPARE(ResultViewController::stringFromTimeInterval(3725.9), QStringLiteral("02:05"));
    }

private:
    GameViewController* showGames() {
        nav = new platform::NavigationController;
        auto* screen = new GameViewController;
        nav->setViewControllers({screen});
        fake->platform->window().setRootViewController(nav);
        fake->platform->window().makeKeyAndVisible();
        fake->run(0);
        return screen;
    }
    // The screen pushed over an empty contest list, its contest's detail answered with the item.
    template <class T> T* pushOverList(T* screen, const QJsonObject& item) {
        fake->http->on("surveys/detail", jsonReply(envelope(QJsonObject{{"surveyItem", item}})));
        fake->http->on("surveys", jsonReply(envelope(QJsonObject{{"surveys", QJsonArray{}}})));
        showGames();
        nav->pushViewController(screen, false);
        fake->run(0);
        return screen;
    }
    QuestionsViewController* showQuestions(const QJsonArray& questions) {
        auto* flow = new QuestionsViewController;
        flow->gameID = 2;
        return pushOverList(flow, QJsonObject{{"questions", questions}});
    }
    ResultViewController* showResult(const QJsonObject& item) {
        auto* result = new ResultViewController;
        result->gameID = 1;
        return pushOverList(result, item);
    }
    void submit(QuestionsViewController* flow) {
        flow->buttonSubmit->tap();
        fake->run(0);
    }

    FakePlatform* fake = nullptr;
    platform::NavigationController* nav = nullptr;
};

QTEST_MAIN(ContestsTest)
#include "tst_contests.moc"
