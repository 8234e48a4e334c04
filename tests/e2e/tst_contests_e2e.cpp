// Contests end to end: the real application in-process, offscreen, against the real reference
// service. The demo farmer enters the running contest and answers each kind of question, and reads the
// winners of the finished one.

#include "EndToEnd.h"
#include "accounts/DemoAccounts.h"
#include "contests/ImagePickerController.h"
#include "core/Database.h"
#include "core/Server.h"
#include "platform/NavigationController.h"

#include <QImage>
#include <QTemporaryDir>
#include <QTest>

using namespace ekinora;
using namespace ekinora::testing;

class ContestsEndToEnd : public EndToEnd {
    Q_OBJECT
private slots:
    void init() {
        server::ServerOptions options;
        options.dbPath = dbDir.filePath(QStringLiteral("service.db")).toStdString();
        QFile::remove(QString::fromStdString(options.dbPath));
        startService(options);
        // The library the picker lists holds one photograph of a field.
        QImage field(640, 480, QImage::Format_RGB32);
        field.fill(QColor(120, 150, 70));
        for (int y = 0; y < 480; y += 24) for (int x = 0; x < 640; ++x) field.setPixelColor(x, y, QColor(92, 70, 40));
        QVERIFY(field.save(photos.filePath(QStringLiteral("tarla.jpg")), "JPEG", 90));
        contests::ImagePickerController::setLibraryFolder(photos.path());
    }
    void cleanup() { stopAll(); }

    void farmerEntersTheRunningContestAndReadsTheWinners() {
        openContests();
        QTRY_COMPARE_WITH_TIMEOUT(itemsNamed(window()->contentItem(), "GameCell").size(), 3, 5000);
        QCOMPARE(action("Sonbahar Ekimi Bilgi Yarışması"), QStringLiteral("KATIL"));
        QCOMPARE(action("Kışlık Sebze Fotoğraf Yarışması"), QStringLiteral("KATIL"));
        QCOMPARE(action("Hububatta Yaprak Hastalıkları Yarışması"), QStringLiteral("SONUÇLAR"));
        settle();
        saveScreenshot(window(), QStringLiteral("contests-list"));

        // The one to come refuses.
        tapItem(window(), game("Kışlık Sebze Fotoğraf Yarışması"));
        QTRY_VERIFY(itemNamed(window(), "alert"));
        QCOMPARE(itemNamed(window(), "alert")->property("message").toString(), QStringLiteral("Bu yarışma henüz başlamamıştır."));
        tapItem(window(), itemsNamed(itemNamed(window(), "alert"), "alertButton").first());
        QTRY_VERIFY(!itemNamed(window(), "alert"));

        // The running one: a choice.
        tapItem(window(), game("Sonbahar Ekimi Bilgi Yarışması"));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "QuestionsViewController"), 5000);
        QTRY_COMPARE_WITH_TIMEOUT(text("lblQuestionNumber"), QStringLiteral("1/4"), 5000);
        settle();
        tapChoice(QStringLiteral("18-25 kg"));
        QTRY_VERIFY(itemNamed(window(), "imgCheck"));
        saveScreenshot(window(), QStringLiteral("contests-choice"));
        tap("buttonSubmit");
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "viewResult"), 5000);
        QCOMPARE(text("lblResultTrue"), QStringLiteral("1 Doğru"));
        QCOMPARE(text("lblResultFalse"), QStringLiteral("0 Yanlış"));
        settle();
        saveScreenshot(window(), QStringLiteral("contests-result-panel"));
        tap("closeResultView");

        // A written answer.
        QTRY_COMPARE(text("lblQuestionNumber"), QStringLiteral("2/4"));
        typeText("textAnswer", QStringLiteral("Süne gördük"));
        tapItem(window(), itemNamed(window(), "viewQuestion"));
        settle();
        saveScreenshot(window(), QStringLiteral("contests-text"));
        tap("buttonSubmit");
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "viewResult"), 5000);
        tap("closeResultView");

        // The choice with a text behind it.
        QTRY_COMPARE(text("lblQuestionNumber"), QStringLiteral("3/4"));
        tapChoice(QStringLiteral("Diğer (yazınız)"));
        QTRY_VERIFY(itemNamed(window(), "AnswerTextCell"));
        typeText("textAnswer", QStringLiteral("Geçen güz"));
        tapItem(window(), itemNamed(window(), "viewQuestion"));
        settle();
        saveScreenshot(window(), QStringLiteral("contests-text-choice"));
        tap("buttonSubmit");
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "viewResult"), 5000);
        tap("closeResultView");

        // A photograph from the library.
        QTRY_COMPARE(text("lblQuestionNumber"), QStringLiteral("4/4"));
        QCOMPARE(itemNamed(window(), "buttonSubmit")->property("text").toString(), QStringLiteral("Onayla"));
        tap("addImage");
        QTRY_VERIFY(itemNamed(window(), "alert"));
        tapItem(window(), itemsNamed(itemNamed(window(), "alert"), "alertButton").first());
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "PhotoCell"), 5000);
        settle();
        saveScreenshot(window(), QStringLiteral("contests-picker"));
        tap("PhotoCell");
        QTRY_VERIFY(itemNamed(window(), "buttonRePhoto"));
        settle();
        saveScreenshot(window(), QStringLiteral("contests-photo"));
        tap("buttonSubmit");

        // The flow ends on the list, where the contest now offers its results.
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "QuestionsViewController"), 5000);
        QTRY_COMPARE_WITH_TIMEOUT(action("Sonbahar Ekimi Bilgi Yarışması"), QStringLiteral("SONUÇLAR"), 5000);
        server::Database db(dbDir.filePath(QStringLiteral("service.db")).toStdString());
        const auto answers = db.query(
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
        QTRY_COMPARE(itemsNamed(window()->contentItem(), "ScoreCell").size(), 3);
        QQuickItem* me = itemsNamed(itemsNamed(window()->contentItem(), "ScoreCell").at(1), "lblName").first();
        QCOMPARE(me->property("text").toString(), QString::fromStdString(server::accounts::demoAccount("farmer").fullname));
        QCOMPARE(me->property("color").value<QColor>(), QColor(0, 144, 197));
        settle();
        saveScreenshot(window(), QStringLiteral("contests-winners"));
        tap("goHome");
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "GameViewController"), 5000);

        // The running contest has no draw yet: its end date.
        settle();
        tapItem(window(), game("Sonbahar Ekimi Bilgi Yarışması"));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "viewInfo"), 5000);
        QVERIFY(!itemNamed(window(), "lblCongrats"));
        settle();
        saveScreenshot(window(), QStringLiteral("contests-waiting"));
    }

private:
    QTemporaryDir dbDir;
    QTemporaryDir photos;

    void settle() {
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
        QTest::qWait(400);
    }

    void openContests() {
        startApp();
        signIn(server::accounts::demoAccount("farmer").phone);
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "presentLeftMenuViewController"), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
        tapItem(window(), itemNamed(window(), "presentLeftMenuViewController"));
        QTRY_VERIFY(root()->isMenuVisible());
        QTest::qWait(400);
        QQuickItem* row = nullptr;
        for (QQuickItem* cell : itemsNamed(window()->contentItem(), "Cell"))
            if (cell->property("content").toMap().value("text").toString() == QStringLiteral("Çekiliş")) row = cell;
        QVERIFY(row);
        // The row lies low in the menu: the menu scrolls to it first.
        for (QQuickItem* up = row->parentItem(); up; up = up->parentItem())
            if (up->inherits("QQuickFlickable")) {
                const double bottom = up->property("contentHeight").toDouble() - up->height();
                up->setProperty("contentY", std::max(0.0, std::min(row->y() - 100, bottom)));
                break;
            }
        QTest::qWait(200);
        tapItem(window(), row);
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "GameViewController"), 5000);
        QTRY_VERIFY(!root()->isMenuVisible());
        QTest::qWait(400);
        QCOMPARE(content()->topTitle(), QStringLiteral("Çekiliş"));
    }

    // Typing Turkish letters as the keyboard sends them: each with its text.
    void typeText(const char* field, const QString& typed) {
        QQuickItem* item = nullptr;
        QTRY_VERIFY((item = itemNamed(window(), field)));
        tapItem(window(), item);
        QTRY_VERIFY(item->hasActiveFocus());
        for (QChar c : typed) QTest::sendKeyEvent(QTest::Click, window(), Qt::Key_unknown, QString(c), Qt::NoModifier);
        QTRY_COMPARE(item->property("text").toString(), typed);
    }

    QString text(const char* name) const {
        QQuickItem* item = itemNamed(window(), name);
        return item ? item->property("text").toString() : QString();
    }
    static QString childText(QQuickItem* within, const char* name) {
        const auto found = itemsNamed(within, name);
        return found.isEmpty() ? QString() : found.first()->property("text").toString();
    }
    QQuickItem* game(const QString& name) const {
        for (QQuickItem* cell : itemsNamed(window()->contentItem(), "GameCell"))
            if (childText(cell, "lblContent") == name) return cell;
        return nullptr;
    }
    QString action(const QString& name) const { return game(name) ? childText(game(name), "lblAction") : QString(); }
    void tapChoice(const QString& label) {
        QQuickItem* found = nullptr;
        QTRY_VERIFY(!itemsNamed(window()->contentItem(), "AnswerCell").isEmpty());
        for (QQuickItem* cell : itemsNamed(window()->contentItem(), "AnswerCell"))
            if (childText(cell, "lblAnswer") == label) found = cell;
        QVERIFY2(found, qPrintable(label));
        tapItem(window(), found);
    }
};

EKINORA_GUI_TEST_MAIN(ContestsEndToEnd)
#include "tst_contests_e2e.moc"
