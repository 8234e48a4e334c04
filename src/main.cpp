#include "Ekinora.h"
#include "platform/ProcessSetup.h"

#include <QCommandLineParser>
#include <QGuiApplication>

int main(int argc, char** argv) {
    ekinora::platform::prepareProcess();
    QGuiApplication app(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("Ekinora"));
    QGuiApplication::setApplicationVersion(ekinora::Ekinora::version());

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Ekinora"));
    parser.addHelpOption();
    parser.addVersionOption();
    QCommandLineOption serviceBase(QStringLiteral("service-base"), QStringLiteral("Service address (http://host:port)."),
                                   QStringLiteral("URL"));
    QCommandLineOption settingsDir(QStringLiteral("settings-dir"), QStringLiteral("Directory of store.ini."),
                                   QStringLiteral("DIR"));
    parser.addOptions({serviceBase, settingsDir});
    parser.process(app);

    ekinora::StartOptions options;
    options.serviceBase = parser.value(serviceBase);
    options.settingsDir = parser.value(settingsDir);
    ekinora::Ekinora ekinora(options);
    ekinora.start();
    return app.exec();
}
