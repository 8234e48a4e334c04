#pragma once

// Replies fuzzed on every screen. Each screen of the storyboard's registry is shown in a window of its
// own against the reference service, driven through its controls, and every reply it receives may be
// mutated (keys missing, wrong types, nulls, empty and huge lists, odd texts, no JSON, HTTP 401/500,
// refusals in the envelope, slow answers, dropped connections). A screen's batch of runs goes in a child
// process, so that a crash is recorded and the walk goes on. Seeded: the same seed tries the same
// mutations and the same taps.

#include <QMap>
#include <QString>
#include <QStringList>

namespace ekinora::fuzz {

// How a run ended, as the parent sees it.
namespace Ending {
inline const QString Survived = QStringLiteral("survived");           // the app was still running
inline const QString RequiredStop = QStringLiteral("required stop");  // a stop the app is meant to make
inline const QString UnexpectedStop = QStringLiteral("unexpected stop");
inline const QString Exception = QStringLiteral("uncaught exception");
inline const QString Crash = QStringLiteral("crash");
inline const QString Hang = QStringLiteral("hang");
} // namespace Ending

// Whether the application is meant to stop with this reason (the text it gives Application::terminate).
bool stopIsRequired(const QString& reason);

struct Options {
    quint64 seed = 1;
    int runsPerScreen = 3;
    int stepsPerRun = 8;
    int jobs = 2;
    QStringList screens;   // empty: every registered screen
    QString program;       // the binary that runs a batch (this one); it must call runChildIfAsked
    int batchTimeoutMs = 60000;
};

struct Fault {
    QString screen;
    QString kind;
    QString reason;
    QString lastStep;
    QString lastMutation;
    int run = 0;
};

struct Report {
    int runs = 0;
    int mutations = 0;
    QMap<QString, int> mutationsByKind;
    QStringList screensWalked;
    QStringList screensCovered;    // shown in at least one run
    QStringList controllersReached; // every controller class shown, those reached by taps included
    QMap<QString, int> endings;    // by kind
    QMap<QString, int> requiredStops; // by reason
    QList<Fault> faults;
    double seconds = 0;
};

// The identifiers of every screen the application registers.
QStringList screenIdentifiers();

Report run(const Options& options);
// The figures as lines of text.
QString describe(const Report& report);

// In main(), before anything else: runs a batch and returns true when the arguments ask for one
// (exit code in *code).
bool runChildIfAsked(int argc, char** argv, int* code);

} // namespace ekinora::fuzz
