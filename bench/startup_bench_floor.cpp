// The floor of the start-up benchmark: a bare Qt Quick Controls window (Material, as the app) of the
// app's size, started the same way and measured the same way. Started by startup_bench.
#include "startup_bench_probe.h"

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QQuickWindow>

int main(int argc, char** argv) {
    const double atMain = startup::sinceProcessStart();
    QGuiApplication app(argc, argv);
    QQuickStyle::setStyle(QStringLiteral("Material"));
    QQmlApplicationEngine engine;
    engine.loadData("import QtQuick\nimport QtQuick.Controls\n"
                    "ApplicationWindow { width: 390; height: 844; visible: true; color: \"white\" }");
    auto* window = engine.rootObjects().isEmpty() ? nullptr : qobject_cast<QQuickWindow*>(engine.rootObjects().first());
    if (!window) return 1;
    startup::FrameProbe probe(window);
    const int first = probe.watch([] { return true; });
    startup::waitUntil([&] { return probe.at(first) >= 0; }, 10000);
    const startup::Memory then = startup::memoryNow();
    startup::report({{"main", atMain}, {"first", probe.at(first)}, {"firstCpu", probe.processorAt(first)}, {"app", then.appMB}, {"tree", then.treeMB}});
    return probe.at(first) < 0 ? 1 : 0;
}
