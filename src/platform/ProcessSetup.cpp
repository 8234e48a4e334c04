#include "ProcessSetup.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QQuickWindow>
#include <QtGlobal>
#include <unistd.h>

namespace ekinora::platform {

void prepareProcess() {
    if (geteuid() == 0) qputenv("QTWEBENGINE_DISABLE_SANDBOX", QByteArray("1"));
    // The web engine is not linked: its library (150 MB, half a million relocations) comes with its QML
    // module when a web view is first shown. Qt WebEngine accepts being loaded late when the process
    // already shares one OpenGL context between its windows and draws Qt Quick with OpenGL, which is
    // what its own initialisation would have set here.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QQuickWindow::setGraphicsApi(QSGRendererInterface::OpenGL);
}

} // namespace ekinora::platform
