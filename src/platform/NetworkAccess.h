#pragma once

#include <QQmlNetworkAccessManagerFactory>

namespace ekinora::platform {

// The network access of the views (remote pictures). Qt Quick's image loader asks for remote pictures
// pipelined on one connection; a service that answers only the first request of a pipeline (the
// reference service does) then hands the others late or with another picture's bytes, so a list row
// could show another row's picture. The views' requests go one at a time on each connection.
class ViewNetworkAccessFactory final : public QQmlNetworkAccessManagerFactory {
public:
    QNetworkAccessManager* create(QObject* parent) override;
};

} // namespace ekinora::platform
