#pragma once

#include <QList>
#include <QString>
#include <QVariantMap>

#include <optional>

namespace ekinora::analytics {

// A hit that a container's rules queued: a whole request, kept until a send succeeds.
struct RTCHit {
    qint64 ID = 0;
    QString URL;
    QString method = QStringLiteral("GET");
    QVariantMap headers;
    QString body;
    double hitTime = 0; // seconds since 1970
    std::optional<double> firstDispatchTime;
    std::optional<double> lastDispatchTime;
    int retryCount = 0;
    QString uniqueId; // empty: none
};

// An event that waits for a container.
struct RTCPendingEvent {
    qint64 ID = 0;
    QString name;
    QString origin;
    QVariantMap parameters;
    double timestamp = 0;
    bool allowPassthrough = false;
};

} // namespace ekinora::analytics
