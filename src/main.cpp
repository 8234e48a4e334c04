#include "Ekinora.h"
#include "platform/Capture.h"
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
    QCommandLineOption cameraSource(QStringLiteral("camera-source"),
                                    QStringLiteral("Pictures or a video of codes to read in place of the camera: a picture, "
                                                   "a folder of pictures shown in turn, or a video file."),
                                    QStringLiteral("PATH"));
    parser.addOptions({serviceBase, settingsDir, cameraSource});
    parser.process(app);
    if (parser.isSet(cameraSource)) ekinora::platform::DevelopmentCamera::install(parser.value(cameraSource));

    ekinora::StartOptions options;
    options.serviceBase = parser.value(serviceBase);
    options.settingsDir = parser.value(settingsDir);
    ekinora::Ekinora ekinora(options);
    ekinora.start();
    return app.exec();
}
