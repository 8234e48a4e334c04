#include "NetworkAccess.h"

#include <QNetworkAccessManager>
#include <QNetworkRequest>

namespace ekinora::platform {

namespace {

class UnpipelinedAccessManager final : public QNetworkAccessManager {
public:
    using QNetworkAccessManager::QNetworkAccessManager;

protected:
    QNetworkReply* createRequest(Operation op, const QNetworkRequest& original, QIODevice* data) override {
        QNetworkRequest request(original);
        request.setAttribute(QNetworkRequest::HttpPipeliningAllowedAttribute, false);
        return QNetworkAccessManager::createRequest(op, request, data);
    }
};

} // namespace

QNetworkAccessManager* ViewNetworkAccessFactory::create(QObject* parent) { return new UnpipelinedAccessManager(parent); }

} // namespace ekinora::platform
