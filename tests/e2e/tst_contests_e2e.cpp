// The demo farmer answers each kind of question of the running contest and reads the finished one's
// winners.

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

        tapItem(window(), game("Kışlık Sebze Fotoğraf Yarışması"));
        QTRY_COMPARE(alertText(), QStringLiteral("Bu yarışma henüz başlamamıştır."));
        dismissAlert();

        tapUntilShown(game("Sonbahar Ekimi Bilgi Yarışması"), "QuestionsViewController");
        QTRY_COMPARE_WITH_TIMEOUT(textOf("lblQuestionNumber"), QStringLiteral("1/4"), 5000);
        settle();
        tapCell("AnswerCell", "lblAnswer", QStringLiteral("18-25 kg"));
        QTRY_VERIFY(itemNamed(window(), "imgCheck"));
        saveScreenshot(window(), QStringLiteral("contests-choice"));
        tapUntilShown("buttonSubmit", "viewResult");
        QCOMPARE(textOf("lblResultTrue"), QStringLiteral("1 Doğru"));
        QCOMPARE(textOf("lblResultFalse"), QStringLiteral("0 Yanlış"));
        shootSettled(QStringLiteral("contests-result-panel"));
        tap("closeResultView");

        QTRY_COMPARE(textOf("lblQuestionNumber"), QStringLiteral("2/4"));
        typeInto("textAnswer", QStringLiteral("Süne gördük"));
        tapItem(window(), itemNamed(window(), "viewQuestion"));
        shootSettled(QStringLiteral("contests-text"));
        tapUntilShown("buttonSubmit", "viewResult");
        tap("closeResultView");

        QTRY_COMPARE(textOf("lblQuestionNumber"), QStringLiteral("3/4"));
        tapCell("AnswerCell", "lblAnswer", QStringLiteral("Diğer (yazınız)"));
        QTRY_VERIFY(itemNamed(window(), "AnswerTextCell"));
        typeInto("textAnswer", QStringLiteral("Geçen güz"));
        tapItem(window(), itemNamed(window(), "viewQuestion"));
        shootSettled(QStringLiteral("contests-text-choice"));
        tapUntilShown("buttonSubmit", "viewResult");
        tap("closeResultView");

        QTRY_COMPARE(textOf("lblQuestionNumber"), QStringLiteral("4/4"));
        QCOMPARE(itemNamed(window(), "buttonSubmit")->property("text").toString(), QStringLiteral("Onayla"));
        tap("addImage");
        dismissAlert();
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "PhotoCell"), 5000);
        shootSettled(QStringLiteral("contests-picker"));
        tapUntilShown("PhotoCell", "buttonRePhoto");
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
        tapUntilShown(game("Hububatta Yaprak Hastalıkları Yarışması"), "lblCongrats");
        QTRY_COMPARE(cells("ScoreCell").size(), 3);
        QQuickItem* me = itemsNamed(cells("ScoreCell").at(1), "lblName").first();
        QCOMPARE(me->property("text").toString(), QString::fromStdString(server::accounts::demoAccount("farmer").fullname));
        QCOMPARE(me->property("color").value<QColor>(), QColor(0, 144, 197));
        shootSettled(QStringLiteral("contests-winners"));
        tapUntilShown("goHome", "GameViewController");

        // The running contest has no draw yet: its end date.
        settle();
        tapUntilShown(game("Sonbahar Ekimi Bilgi Yarışması"), "viewInfo");
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
