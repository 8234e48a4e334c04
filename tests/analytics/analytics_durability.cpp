// Nothing lost, little doubled: 10 000 numbered hits queued by the command-line driver, which is
// killed (SIGKILL) in the middle of dispatching them, then started again to finish. The same for tag
// hits, whose unique ids keep a hit that went out from going out again.

#include "AnalyticsSupport.h"

#include <QProcess>
#include <QTemporaryDir>

#include <csignal>
#include <map>

using namespace analyticstest;

namespace {

QStringList toolArguments(const Service& service, const QTemporaryDir& dir, const QStringList& command) {
    return QStringList{"--service", service.root(), "--data", dir.path(), "--quiet"} + command;
}

QString runTool(const Service& service, const QTemporaryDir& dir, const QStringList& command) {
    QProcess tool;
    tool.start(EKINORA_ANALYTICS_TOOL, toolArguments(service, dir, command));
    if (!tool.waitForFinished(60000)) return "did not finish";
    return QString::fromUtf8(tool.readAllStandardOutput()).trimmed();
}

// Starts the driver and kills it once the collector holds at least `atLeast` new hits.
void killWhenCollected(const Service& service, const QTemporaryDir& dir, const QStringList& command,
                       size_t atLeast, size_t* collectedAtKill) {
    QProcess tool;
    tool.start(EKINORA_ANALYTICS_TOOL, toolArguments(service, dir, command));
    QVERIFY(tool.waitForStarted());
    std::int64_t last = 0;
    size_t seen = 0;
    while (seen < atLeast && tool.state() == QProcess::Running) {
        const auto hits = service.hits(last);
        if (!hits.empty()) last = hits.back()["id"].get<std::int64_t>();
        seen += hits.size();
        QTest::qWait(2);
    }
    QVERIFY2(tool.state() == QProcess::Running, "the driver finished before it could be killed");
    QCOMPARE(::kill(pid_t(tool.processId()), SIGKILL), 0);
    QVERIFY(tool.waitForFinished(5000));
    QCOMPARE(tool.exitStatus(), QProcess::CrashExit);
    *collectedAtKill = seen;
}

} // namespace

class DurabilityTest : public QObject {
    Q_OBJECT
private slots:
    void queuedHitsSurviveAKillDuringDispatch() {
        Service service;
        QTemporaryDir dir;
        QCOMPARE(runTool(service, dir, {"queue", "10000"}), QString("queued 10000 hits, pending 10000"));

        size_t atKill = 0;
        killWhenCollected(service, dir, {"dispatch"}, 3000, &atKill);
        QVERIFY(atKill < 10000);

        const QString finished = runTool(service, dir, {"dispatch"});
        QVERIFY2(finished.endsWith("pending 0"), qPrintable(finished));

        std::map<int, int> seen;
        for (const auto& hit : service.hits()) ++seen[std::stoi(hit["parameters"]["cd1"].get<std::string>())];
        QCOMPARE(seen.size(), size_t(10000));
        QCOMPARE(seen.begin()->first, 1);
        QCOMPARE(seen.rbegin()->first, 10000);
        // Repeats: only the batch that was on the wire when the process died (20 hits at most), in
        // one run of consecutive numbers.
        QList<int> repeated;
        for (const auto& [sequence, count] : seen) {
            QVERIFY(count <= 2);
            if (count == 2) repeated << sequence;
        }
        QVERIFY2(repeated.size() <= 20, qPrintable(QString::number(repeated.size())));
        if (!repeated.isEmpty()) QCOMPARE(repeated.last() - repeated.first() + 1, int(repeated.size()));
    }

    void tagHitsGoOutOnceByTheirUniqueIds() {
        Service service;
        QTemporaryDir dir;
        size_t atKill = 0;
        killWhenCollected(service, dir, {"tags", "400"}, 60, &atKill);

        // Running the same 400 views again queues only what had not gone out.
        const QString finished = runTool(service, dir, {"tags", "400"});
        QVERIFY2(finished.contains("tag hits sent"), qPrintable(finished));

        std::map<std::string, int> seen;
        for (const auto& hit : service.hits()) {
            const auto& parameters = hit["parameters"];
            if (parameters.contains("tuid")) ++seen[parameters["tuid"].get<std::string>()];
        }
        QCOMPARE(seen.size(), size_t(400));
        int repeats = 0;
        for (const auto& [id, count] : seen) repeats += count - 1;
        // At most the hits one sender had on the wire (a fetch of 40).
        QVERIFY2(repeats <= 40, qPrintable(QString::number(repeats)));

        // A third run finds every id sent already and queues nothing.
        const auto before = service.hits().size();
        QVERIFY(runTool(service, dir, {"tags", "400"}).contains("tag hits sent 0"));
        QCOMPARE(service.hits().size(), before);
    }
};

QTEST_GUILESS_MAIN(DurabilityTest)
#include "analytics_durability.moc"
