// Contests end to end: the real application in-process, offscreen, against the real reference
// service. The demo farmer enters the running contest and answers each kind of question, and reads the
// winners of the finished one.

#include "EndToEnd.h"
#include "contests/ImagePickerController.h"

#include <QImage>

using namespace ekinora;
using namespace ekinora::testing;

class ContestsEndToEnd : public EndToEnd {
    Q_OBJECT
private slots:
    void init() {
        startStoredService();
        // The library the picker lists holds one photograph of a field.
        QImage field(640, 480, QImage::Format_RGB32);
        field.fill(QColor(120, 150, 70));
        for (int y = 0; y < 480; y += 24) for (int x = 0; x < 640; ++x) field.setPixelColor(x, y, QColor(92, 70, 40));
        QVERIFY(field.save(photos.filePath(QStringLiteral("tarla.jpg")), "JPEG", 90));
        contests::ImagePickerController::setLibraryFolder(photos.path());
    }
    void cleanup() { stopAll(); }

    void farmerEntersTheRunningContestAndReadsTheWinners() {
        startApp();
        signInAs("farmer");
        openMenu(QStringLiteral("Çekiliş"), "GameViewController");
        QCOMPARE(content()->topTitle(), QStringLiteral("Çekiliş"));
        QTRY_COMPARE_WITH_TIMEOUT(cells("GameCell").size(), 3, 5000);
        QCOMPARE(action("Sonbahar Ekimi Bilgi Yarışması"), QStringLiteral("KATIL"));
        QCOMPARE(action("Kışlık Sebze Fotoğraf Yarışması"), QStringLiteral("KATIL"));
        QCOMPARE(action("Hububatta Yaprak Hastalıkları Yarışması"), QStringLiteral("SONUÇLAR"));
        shootSettled(QStringLiteral("contests-list"));

        // The one to come refuses.
        tapItem(window(), game("Kışlık Sebze Fotoğraf Yarışması"));
        QTRY_COMPARE(alertText(), QStringLiteral("Bu yarışma henüz başlamamıştır."));
        dismissAlert();

        // The running one: a choice.
        tapItem(window(), game("Sonbahar Ekimi Bilgi Yarışması"));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "QuestionsViewController"), 5000);
        QTRY_COMPARE_WITH_TIMEOUT(textOf("lblQuestionNumber"), QStringLiteral("1/4"), 5000);
        settle();
        tapCell("AnswerCell", "lblAnswer", QStringLiteral("18-25 kg"));
        QTRY_VERIFY(itemNamed(window(), "imgCheck"));
        saveScreenshot(window(), QStringLiteral("contests-choice"));
        tap("buttonSubmit");
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "viewResult"), 5000);
        QCOMPARE(textOf("lblResultTrue"), QStringLiteral("1 Doğru"));
        QCOMPARE(textOf("lblResultFalse"), QStringLiteral("0 Yanlış"));
        shootSettled(QStringLiteral("contests-result-panel"));
        tap("closeResultView");

        // A written answer.
        QTRY_COMPARE(textOf("lblQuestionNumber"), QStringLiteral("2/4"));
        typeInto("textAnswer", QStringLiteral("Süne gördük"));
        tapItem(window(), itemNamed(window(), "viewQuestion"));
        shootSettled(QStringLiteral("contests-text"));
        tap("buttonSubmit");
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "viewResult"), 5000);
        tap("closeResultView");

        // The choice with a text behind it.
        QTRY_COMPARE(textOf("lblQuestionNumber"), QStringLiteral("3/4"));
        tapCell("AnswerCell", "lblAnswer", QStringLiteral("Diğer (yazınız)"));
        QTRY_VERIFY(itemNamed(window(), "AnswerTextCell"));
        typeInto("textAnswer", QStringLiteral("Geçen güz"));
        tapItem(window(), itemNamed(window(), "viewQuestion"));
        shootSettled(QStringLiteral("contests-text-choice"));
        tap("buttonSubmit");
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "viewResult"), 5000);
        tap("closeResultView");

        // A photograph from the library.
        QTRY_COMPARE(textOf("lblQuestionNumber"), QStringLiteral("4/4"));
        QCOMPARE(itemNamed(window(), "buttonSubmit")->property("text").toString(), QStringLiteral("Onayla"));
        tap("addImage");
        dismissAlert();
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "PhotoCell"), 5000);
        shootSettled(QStringLiteral("contests-picker"));
        tap("PhotoCell");
        QTRY_VERIFY(itemNamed(window(), "buttonRePhoto"));
        shootSettled(QStringLiteral("contests-photo"));
        tap("buttonSubmit");

        // The flow ends on the list, where the contest now offers its results.
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "QuestionsViewController"), 5000);
        QTRY_COMPARE_WITH_TIMEOUT(action("Sonbahar Ekimi Bilgi Yarışması"), QStringLiteral("SONUÇLAR"), 5000);
        const auto answers = db().query(
            "SELECT question_id, choice_ids, text, upload FROM survey_responses WHERE survey_id = 2 AND user_id = "
            "(SELECT id FROM users WHERE phone = ?) ORDER BY question_id",
            {server::accounts::demoAccount("farmer").phone});
        QCOMPARE(int(answers.size()), 4);
        QCOMPARE(QString::fromStdString(answers[0]["choice_ids"].get<std::string>()), QStringLiteral("[2012]"));
        QCOMPARE(QString::fromStdString(answers[1]["text"].get<std::string>()), QStringLiteral("Süne gördük"));
        QCOMPARE(QString::fromStdString(answers[2]["text"].get<std::string>()), QStringLiteral("Geçen güz"));
        QVERIFY(answers[3]["upload"].is_string());

        // The finished contest: the winners, the farmer among them, and his congratulation.
        tapItem(window(), game("Hububatta Yaprak Hastalıkları Yarışması"));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "lblCongrats"), 5000);
        QTRY_COMPARE(cells("ScoreCell").size(), 3);
        QQuickItem* me = itemsNamed(cells("ScoreCell").at(1), "lblName").first();
        QCOMPARE(me->property("text").toString(), QString::fromStdString(server::accounts::demoAccount("farmer").fullname));
        QCOMPARE(me->property("color").value<QColor>(), QColor(0, 144, 197));
        shootSettled(QStringLiteral("contests-winners"));
        tap("goHome");
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "GameViewController"), 5000);

        // The running contest has no draw yet: its end date.
        settle();
        tapItem(window(), game("Sonbahar Ekimi Bilgi Yarışması"));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "viewInfo"), 5000);
        QVERIFY(!itemNamed(window(), "lblCongrats"));
        shootSettled(QStringLiteral("contests-waiting"));
    }

private:
    QTemporaryDir photos;

    QQuickItem* game(const QString& name) const { return cellWith("GameCell", "lblContent", name); }
    QString action(const QString& name) const { return textOf(game(name), "lblAction"); }
};

EKINORA_GUI_TEST_MAIN(ContestsEndToEnd)
#include "tst_contests_e2e.moc"
