#include "ProcessSetup.h"

#include <QByteArray>
#include <QtGlobal>
#include <QtWebEngineQuick/qtwebenginequickglobal.h>
#include <unistd.h>

namespace ekinora::platform {

void prepareProcess() {
    if (geteuid() == 0) qputenv("QTWEBENGINE_DISABLE_SANDBOX", QByteArray("1"));
    QtWebEngineQuick::initialize();
}

} // namespace ekinora::platform
