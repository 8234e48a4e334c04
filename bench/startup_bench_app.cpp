// The app as startup_bench starts it: what the application's main does, and the measuring. Prints one
// line of figures. Usage: startup_bench_app signin|home <service address> <settings folder>
#include "Ekinora.h"
#include "platform/Platform.h"
#include "platform/ProcessSetup.h"
#include "startup_bench_probe.h"

#include <QGuiApplication>
#include <QPointer>
#include <QQuickWindow>

namespace {

int runApp(const QString& mode, const QString& base, const QString& settings, int argc, char** argv) {
    const double atMain = startup::sinceProcessStart();
    ekinora::platform::prepareProcess();
    QGuiApplication app(argc, argv);
    const double atApplication = startup::sinceProcessStart();
    ekinora::StartOptions options;
    options.serviceBase = base;
    options.settingsDir = settings;
    ekinora::Ekinora ekinora(options);
    ekinora.platform().application().setEchoLog(false);
    const double atBuilt = startup::sinceProcessStart();
    ekinora.start();
    const double atStarted = startup::sinceProcessStart();
    QQuickWindow* window = ekinora.platform().window().quickWindow();
    if (!window) return 1;

    // The splash is the home's full-window picture; the screen under it is the sign-in or the home.
    const QString screen = mode == QLatin1String("home") ? QStringLiteral("ViewController") : QStringLiteral("txtLoginPhone");
    QPointer<QQuickItem> splash;
    bool splashSeen = false;
    startup::FrameProbe probe(window);
    const int first = probe.watch([] { return true; });
    const int splashDrawn = probe.watch([&] {
        if (!splash) splash = startup::findItem(window->contentItem(), QStringLiteral("imgLoading"));
        splashSeen = splashSeen || splash;
        return splash && splash->isVisible() && splash->property("status").toInt() == 1; // Image.Ready
    });
    const int uncovered = probe.watch([&] {
        return splashSeen && (!splash || !splash->isVisible()) && startup::findItem(window->contentItem(), screen, true);
    });
    startup::waitUntil([&] { return probe.at(uncovered) >= 0; }, 10000);
    const startup::Memory then = startup::memoryNow();
    // Settled: the screen's first replies are in and its indicator has gone (at the sign-in, a second
    // after the conditions' text), and a little more for what they bring.
    startup::waitUntil([&] { return ekinora.platform().window().hudCount() == 0; }, 5000);
    startup::waitUntil([] { return false; }, 500);
    const startup::Memory settled = startup::memoryNow();
    startup::report({{"main", atMain},
                     {"application", atApplication},
                     {"built", atBuilt},
                     {"started", atStarted},
                     {"first", probe.at(first)},
                     {"firstCpu", probe.processorAt(first)},
                     {"uncoveredCpu", probe.processorAt(uncovered)},
                     {"splash", probe.at(splashDrawn)},
                     {"uncovered", probe.at(uncovered)},
                     {"app", then.appMB},
                     {"tree", then.treeMB},
                     {"helpers", then.helpers},
                     {"engine", then.webEngine ? 1 : 0},
                     {"settledApp", settled.appMB},
                     {"settledTree", settled.treeMB},
                     {"settledHelpers", settled.helpers},
                     {"settledEngine", settled.webEngine ? 1 : 0}});
    return probe.at(uncovered) < 0 ? 1 : 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 4) return 2;
    return runApp(QString::fromLocal8Bit(argv[1]), QString::fromLocal8Bit(argv[2]), QString::fromLocal8Bit(argv[3]), argc, argv);
}
