#pragma once

#include <QList>
#include <QMap>
#include <QString>

namespace ekinora::analytics {

// A hit's parameters. Keys that begin with "&" go on the wire; the others ("useSecure") stay here.
using Parameters = QMap<QString, QString>;

struct RAIHit {
    qint64 hitId = 0;
    Parameters parameters;
    double timestamp = 0; // the hit time, seconds since 1970
};

} // namespace ekinora::analytics
