// A short walk of every screen with fuzzed replies: no screen may end the application other than where
// it is meant to stop, and every registered screen must come up.

#include "ReplyFuzz.h"
#include "platform/ProcessSetup.h"

#include <QGuiApplication>
#include <QTest>

using namespace ekinora;

class ReplyFuzzTest : public QObject {
    Q_OBJECT
private slots:
    void stopsAreJudgedByTheirReason() {
        QVERIFY(fuzz::stopIsRequired("-[NSNull objectForKey:]: unrecognized selector sent to instance"));
        QVERIFY(fuzz::stopIsRequired("Fatal error: Unexpectedly found nil while unwrapping an Optional value (id)"));
        QVERIFY(fuzz::stopIsRequired("-[__NSArrayI objectAtIndex:]: index 3 beyond bounds [0 .. 1]"));
        // Faults of ours, whatever the reply.
        QVERIFY(!fuzz::stopIsRequired("Receiver (NewsViewController) has no segue with identifier 'x'"));
        QVERIFY(!fuzz::stopIsRequired("-[LoginViewController dropDownListDelegateMethod:]: unrecognized selector sent to instance"));
    }

    void everyScreenSurvivesFuzzedReplies() {
        fuzz::Options options;
        options.seed = 20261123;
        options.runsPerScreen = 2;
        options.stepsPerRun = 6;
        options.program = QCoreApplication::applicationFilePath();
        const fuzz::Report report = fuzz::run(options);
        qInfo().noquote() << fuzz::describe(report);
        QVERIFY(report.screensWalked.contains("PopupViewController"));
        QCOMPARE(report.screensCovered, report.screensWalked);
        QVERIFY(report.mutations > report.screensWalked.size());
        QVERIFY2(report.faults.isEmpty(), qPrintable(fuzz::describe(report)));
    }
};

int main(int argc, char** argv) {
    ekinora::platform::prepareProcess();
    QGuiApplication app(argc, argv);
    int code = 0;
    if (fuzz::runChildIfAsked(argc, argv, &code)) return code;
    ReplyFuzzTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_reply_fuzz.moc"
