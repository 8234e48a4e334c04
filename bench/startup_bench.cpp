// Prints how long the app takes from process start to its first drawn frame, and its resident memory
// then. Runs on the offscreen platform against an address where nothing answers, so that only the app
// is measured. Usage: startup_bench [runs]
#include "Ekinora.h"
#include "platform/Platform.h"
#include "platform/ProcessSetup.h"

#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <cstdio>

static long residentKiB() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return -1;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:")) return line.mid(6).trimmed().split(' ').value(0).toLong();
    return -1;
}

int main(int argc, char** argv) {
    QElapsedTimer sinceStart;
    sinceStart.start();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    ekinora::platform::prepareProcess();
    QGuiApplication app(argc, argv);
    QTemporaryDir dir;
    ekinora::StartOptions options;
    options.serviceBase = QStringLiteral("http://127.0.0.1:9");
    options.settingsDir = dir.path();
    ekinora::Ekinora ekinora(options);
    ekinora.platform().application().setEchoLog(false);
    ekinora.start();
    QQuickWindow* window = ekinora.platform().window().quickWindow();
    if (!window) {
        std::fprintf(stderr, "no window\n");
        return 1;
    }
    bool drawn = false;
    QObject::connect(window, &QQuickWindow::frameSwapped, &app, [&] { drawn = true; });
    while (!drawn && sinceStart.elapsed() < 10000) QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    const qint64 ms = sinceStart.elapsed();
    std::printf("cold start to first frame: %lld ms (budget 400 ms)\n", static_cast<long long>(ms));
    std::printf("resident memory at rest: %.1f MB (budget 120 MB)\n", residentKiB() / 1024.0);
    return 0;
}
