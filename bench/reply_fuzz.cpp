// Replies fuzzed on every screen, the long run: mutations tried, screens covered, endings by kind and
// every unexpected ending with the step and the reply before it.
//   reply_fuzz [--seed N] [--runs RUNS_PER_SCREEN] [--steps STEPS] [--jobs N] [--screen ID]...
// A run is repeated alone with: reply_fuzz --reply-fuzz-child SCREEN SEED RUN 1 STEPS

#include "ReplyFuzz.h"
#include "platform/ProcessSetup.h"

#include <QGuiApplication>
#include <cstdio>

int main(int argc, char** argv) {
    ekinora::platform::prepareProcess();
    qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QGuiApplication app(argc, argv);
    int code = 0;
    if (ekinora::fuzz::runChildIfAsked(argc, argv, &code)) return code;

    ekinora::fuzz::Options options;
    options.seed = 20261123;
    options.runsPerScreen = 40;
    options.program = QCoreApplication::applicationFilePath();
    options.batchTimeoutMs = 240000;
    const QStringList args = app.arguments();
    for (int i = 1; i + 1 < args.size(); i += 2) {
        const QString key = args.at(i), value = args.at(i + 1);
        if (key == "--seed") options.seed = value.toULongLong();
        else if (key == "--runs") options.runsPerScreen = value.toInt();
        else if (key == "--steps") options.stepsPerRun = value.toInt();
        else if (key == "--jobs") options.jobs = value.toInt();
        else if (key == "--screen") options.screens << value;
    }
    const ekinora::fuzz::Report report = ekinora::fuzz::run(options);
    std::printf("seed %llu, %d runs a screen, %d steps a run\n%s\n", static_cast<unsigned long long>(options.seed),
                options.runsPerScreen, options.stepsPerRun, qPrintable(ekinora::fuzz::describe(report)));
    return report.faults.isEmpty() ? 0 : 1;
}
