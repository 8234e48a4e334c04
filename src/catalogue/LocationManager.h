#pragma once

#include <QObject>

namespace ekinora::catalogue {

// The filter screen's location manager: made with the screen and never asked for anything. The app
// reads no position on the desktop; the representative search goes by the account instead.
class LocationManager : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
};

} // namespace ekinora::catalogue
