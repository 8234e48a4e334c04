// The parent's side: every registered screen, a batch of runs each in a child process, the endings
// gathered and judged.

#include "Driver.h"
#include "Ekinora.h"
#include "Mutator.h"
#include "ReplyFuzz.h"
#include "platform/Storyboard.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <memory>
#include <vector>

namespace ekinora::fuzz {

namespace {

// The stops the application makes on purpose, by the reason it gives. A reply value read as what it is
// not stops as it did on the phone: a JSON null, number, text, list or object sent a message it does not
// understand, a list read past its end, a forced unwrap of a missing field, a forced cast, a null token
// put in the store, a name cut before its start, an event without its picture; "__NSCFObject" is how
// the rejection's reader names an "errors" that is no dictionary. A missing segue, an
// action a controller lacks or anything else is a fault of ours.
const QList<QRegularExpression>& requiredStops() {
    static const QList<QRegularExpression> list{
        QRegularExpression(QStringLiteral(
            R"(^\-\[(NSNull|__NSCFNumber|__NSCFString|__NSCFObject|__NSArrayI|__NSArrayM|__NSDictionaryI) [A-Za-z:]+\]: unrecognized selector sent to instance$)")),
        QRegularExpression(QStringLiteral(R"(^(\*\*\* )?\-\[__NSArray[IM] (objectAtIndex|replaceObjectAtIndex:withObject|removeObjectsInRange):\]: (index|range) .* beyond bounds)")),
        QRegularExpression(QStringLiteral(R"(^Fatal error: Unexpectedly found nil while unwrapping an Optional value)")),
        QRegularExpression(QStringLiteral(R"(^Fatal error: (Index out of range|Range requires lowerBound <= upperBound)$)")),
        QRegularExpression(QStringLiteral(R"(^Could not cast value to [A-Za-z]+$)")),
        QRegularExpression(QStringLiteral(R"(^Attempt to insert non-property list object <null> for key token$)")),
        QRegularExpression(QStringLiteral(R"(^\-\[__NSCFString substringToIndex:\]: Index \d+ out of bounds; string length 0$)")),
        QRegularExpression(QStringLiteral(R"(^event without "image" added to imageData$)")),
    };
    return list;
}

QString kindOf(const QString& mutation) {
    for (const QString& k : Mutator::kinds())
        if (mutation.startsWith(k)) return k;
    return mutation;
}

// One child process working through a screen's runs; a crash or a hang ends it, and the next child
// starts at the following run.
struct Batch {
    QString screen;
    int next = 0;      // the next run to start
    int current = -1;  // the run in progress
    QString lastStep, lastMutation;
    bool shown = false;
    std::unique_ptr<QProcess> process;
    QByteArray pending;
    QElapsedTimer clock;
};

class Campaign {
public:
    Campaign(const Options& o, Report& r) : options(o), report(r) {}

    void start(Batch& b) {
        b.process = std::make_unique<QProcess>();
        // The screens' warnings stay out of the report unless asked for.
        if (!qEnvironmentVariableIsSet("EKINORA_FUZZ_STDERR")) b.process->setStandardErrorFile(QProcess::nullDevice());
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        if (!env.contains(QStringLiteral("QT_QPA_PLATFORM"))) env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        b.process->setProcessEnvironment(env);
        QStringList args{QStringLiteral("--reply-fuzz-child"), b.screen, QString::number(options.seed), QString::number(b.next),
                         QString::number(options.runsPerScreen - b.next), QString::number(options.stepsPerRun)};
        // EKINORA_FUZZ_WRAP runs each child under a checker ("valgrind -q --error-exitcode=99").
        QStringList wrap = qEnvironmentVariable("EKINORA_FUZZ_WRAP").split(u' ', Qt::SkipEmptyParts);
        if (!wrap.isEmpty()) {
            args.prepend(options.program);
            const QString checker = wrap.takeFirst();
            b.process->start(checker, wrap + args);
        } else {
            b.process->start(options.program, args);
        }
        b.current = -1;
        b.pending.clear();
        b.clock.start();
    }

    void read(Batch& b) {
        b.pending += b.process->readAllStandardOutput();
        int end;
        while ((end = b.pending.indexOf('\n')) >= 0) {
            const QString line = QString::fromUtf8(b.pending.left(end));
            b.pending.remove(0, end + 1);
            line_(b, line);
        }
    }

    void line_(Batch& b, const QString& line) {
        const int space = line.indexOf(u' ');
        const QString word = line.left(space);
        const QString rest = space < 0 ? QString() : line.mid(space + 1);
        if (word == QLatin1String("RUN")) {
            b.current = rest.toInt();
            b.next = b.current + 1;
            b.lastStep.clear();
            b.lastMutation.clear();
        } else if (word == QLatin1String("SHOWN")) {
            b.shown = true;
            reached.insert(rest);
        } else if (word == QLatin1String("REACHED")) {
            reached.insert(rest);
        } else if (word == QLatin1String("STEP")) {
            b.lastStep = rest;
        } else if (word == QLatin1String("MUT")) {
            ++report.mutations;
            ++report.mutationsByKind[kindOf(rest)];
            b.lastMutation = rest;
            b.lastMutation.replace(u'\t', QStringLiteral(" on "));
        } else if (word == QLatin1String("END")) {
            const QString kind = rest.section(u'\t', 0, 0);
            const QString reason = rest.section(u'\t', 1);
            if (kind == QLatin1String("survived")) ended(b, Ending::Survived, {});
            else if (kind == QLatin1String("stop") && stopIsRequired(reason)) {
                ended(b, Ending::RequiredStop, reason);
                ++report.requiredStops[reason];
            } else if (kind == QLatin1String("stop")) ended(b, Ending::UnexpectedStop, reason);
            else ended(b, Ending::Exception, reason);
            b.current = -1;
        }
    }

    void ended(Batch& b, const QString& kind, const QString& reason) {
        ++report.runs;
        ++report.endings[kind];
        if (kind == Ending::Survived || kind == Ending::RequiredStop) return;
        report.faults << Fault{b.screen, kind, reason, b.lastStep, b.lastMutation, b.current};
    }

    // The child has gone: a run it left unfinished ended in a crash.
    void exited(Batch& b, bool hung) {
        read(b);
        if (b.current >= 0) {
            const QString reason = hung ? QStringLiteral("no end within %1 ms").arg(options.batchTimeoutMs)
                                 : b.process->exitStatus() == QProcess::CrashExit
                                     ? QStringLiteral("signal (%1)").arg(b.process->exitCode())
                                     : QStringLiteral("exit code %1").arg(b.process->exitCode());
            ended(b, hung ? Ending::Hang : Ending::Crash, reason);
        } else if (b.next >= options.runsPerScreen && b.process->exitStatus() == QProcess::NormalExit && b.process->exitCode() != 0) {
            // Every run ended, then the child failed: a checker's verdict on the batch.
            ++report.endings[Ending::Crash];
            report.faults << Fault{b.screen, Ending::Crash, QStringLiteral("exit code %1 after the batch").arg(b.process->exitCode()),
                                   b.lastStep, b.lastMutation, b.next - 1};
        } else if (b.next < options.runsPerScreen) {
            // Died before its first run: the batch cannot go on.
            ended(b, Ending::Crash, QStringLiteral("child failed to start: exit code %1").arg(b.process->exitCode()));
            b.next = options.runsPerScreen;
        }
        b.process.reset();
    }

    void runAll(const QStringList& screens) {
        std::vector<Batch> batches(size_t(screens.size()));
        for (int i = 0; i < screens.size(); ++i) batches[size_t(i)].screen = screens.at(i);
        size_t started = 0;
        QList<Batch*> active;
        while (started < batches.size() || !active.isEmpty()) {
            while (active.size() < qMax(1, options.jobs) && started < batches.size()) {
                start(batches[started]);
                active << &batches[started++];
            }
            for (int i = 0; i < active.size(); ++i) {
                Batch& b = *active[i];
                b.process->waitForReadyRead(20);
                read(b);
                const bool hung = b.clock.elapsed() > options.batchTimeoutMs;
                if (hung) {
                    b.process->kill();
                    b.process->waitForFinished(5000);
                }
                if (hung || b.process->state() == QProcess::NotRunning) {
                    exited(b, hung);
                    if (b.next < options.runsPerScreen) start(b);
                    else active.removeAt(i--);
                }
            }
        }
        for (const Batch& b : batches)
            if (b.shown) report.screensCovered << b.screen;
    }

    const Options& options;
    Report& report;
    QSet<QString> reached;
};

} // namespace

bool stopIsRequired(const QString& reason) {
    for (const auto& re : requiredStops())
        if (re.match(reason).hasMatch()) return true;
    return false;
}

QStringList screenIdentifiers() {
    Ekinora::registerScreens();
    return platform::Storyboard::identifiers();
}

Report run(const Options& options) {
    QElapsedTimer clock;
    clock.start();
    Report report;
    report.screensWalked = options.screens.isEmpty() ? screenIdentifiers() : options.screens;
    Campaign campaign(options, report);
    campaign.runAll(report.screensWalked);
    report.controllersReached = QStringList(campaign.reached.begin(), campaign.reached.end());
    report.controllersReached.sort();
    report.seconds = clock.elapsed() / 1000.0;
    return report;
}

QString describe(const Report& r) {
    QStringList lines;
    lines << QStringLiteral("runs: %1, mutations tried: %2, in %3 s").arg(r.runs).arg(r.mutations).arg(r.seconds, 0, 'f', 1);
    for (auto it = r.mutationsByKind.begin(); it != r.mutationsByKind.end(); ++it)
        lines << QStringLiteral("  mutation %1: %2").arg(it.key()).arg(it.value());
    lines << QStringLiteral("screens walked: %1, covered: %2, controllers reached: %3")
                 .arg(r.screensWalked.size()).arg(r.screensCovered.size()).arg(r.controllersReached.size());
    for (const QString& s : r.screensWalked)
        if (!r.screensCovered.contains(s)) lines << QStringLiteral("  not shown: %1").arg(s);
    for (auto it = r.endings.begin(); it != r.endings.end(); ++it)
        lines << QStringLiteral("ending %1: %2").arg(it.key()).arg(it.value());
    for (auto it = r.requiredStops.begin(); it != r.requiredStops.end(); ++it)
        lines << QStringLiteral("  required stop x%1: %2").arg(it.value()).arg(it.key());
    lines << QStringLiteral("unexpected endings: %1").arg(r.faults.size());
    for (const Fault& f : r.faults)
        lines << QStringLiteral("  %1 run %2: %3 %4 (step: %5; last mutation: %6)")
                     .arg(f.screen).arg(f.run).arg(f.kind, f.reason, f.lastStep, f.lastMutation);
    return lines.join(u'\n');
}

bool runChildIfAsked(int argc, char** argv, int* code) {
    if (argc < 7 || qstrcmp(argv[1], "--reply-fuzz-child") != 0) return false;
    BatchOptions o;
    o.screen = QString::fromUtf8(argv[2]);
    o.seed = QByteArray(argv[3]).toULongLong();
    o.first = QByteArray(argv[4]).toInt();
    o.runs = QByteArray(argv[5]).toInt();
    o.steps = QByteArray(argv[6]).toInt();
    *code = runBatch(o);
    return true;
}

} // namespace ekinora::fuzz
