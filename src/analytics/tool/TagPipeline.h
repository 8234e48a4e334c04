#pragma once

#include <QString>
#include <QUrl>
#include <QVariantMap>

#include <functional>

namespace ekinora::analytics {

// Loads a tag container by its strategies, evaluates one event and sends what its rules queued:
// the tag hits through the scheduler and the bridge's hits through the dispatcher.
int runTagEvent(const QUrl& root, const QString& dataDir, QString containerId, const QString& eventName,
                const QVariantMap& parameters, const std::function<void(const QString&)>& say);

// Evaluates `count` screen views numbered first.., each queuing a tag hit with its own unique id, and
// starts the scheduler again after each cycle until every tag hit has gone.
int runTagViews(const QUrl& root, const QString& dataDir, QString containerId, int first, int count,
                const std::function<void(const QString&)>& say);

} // namespace ekinora::analytics
