#include "SaleRequests.h"

#include "platform/Platform.h"
#include "service/ServiceCall.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace ekinora::sale {

using namespace platform;

void sendDealerCommand(ViewController* screen, const QString& pathLiteral, const QByteArray& method,
                       const service::Parameters& body, std::function<void(const Reply&)> handle) {
    const auto headers = service::InlineRequest::bearerHeaders();
    service::InlineRequest::request(service::InlineRequest::url(pathLiteral), method, body,
                                    service::InlineRequest::Encoding::Json, headers,
                                    [keep = strong(screen), handle = std::move(handle)](const Reply& reply) { handle(reply); });
}

bool hasNoBody(const Reply& reply) { return reply.data.isEmpty(); }

std::optional<Json> treeOf(const Reply& reply) {
    QJsonParseError error{};
    const QJsonDocument doc = QJsonDocument::fromJson("[" + reply.data + "]", &error);
    if (reply.data.trimmed().isEmpty() || error.error != QJsonParseError::NoError || doc.array().size() != 1) return std::nullopt;
    return doc.array().at(0);
}

Json at(const Json& tree, std::initializer_list<QString> keys) {
    Json node = tree;
    for (const QString& key : keys) {
        if (!node.isObject()) return nullObject();
        node = node.toObject().value(key);
        if (node.isUndefined()) return nullObject();
    }
    return node;
}

QString textOf(const Json& node) {
    switch (node.type()) {
    case QJsonValue::Null:
    case QJsonValue::Undefined: return QStringLiteral("null");
    case QJsonValue::Bool: return node.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    case QJsonValue::Double: return description(node);
    case QJsonValue::String: return node.toString();
    case QJsonValue::Array: return QString::fromUtf8(QJsonDocument(node.toArray()).toJson());
    case QJsonValue::Object: return QString::fromUtf8(QJsonDocument(node.toObject()).toJson());
    }
    return QStringLiteral("null");
}

bool isWarning(const Json& tree) {
    const Json type = at(tree, {QStringLiteral("message"), QStringLiteral("type")});
    return type.isString() && type.toString() == QStringLiteral("warning");
}

QString withoutRegisteredMark(QString name) { return name.remove(QStringLiteral("<sup>&reg;</sup>")); }

void dismissEverything() {
    const auto presented = Platform::current().window().presentedControllers();
    if (presented.isEmpty()) return;
    if (ViewController* presenter = presented.first()->presentingViewController())
        presenter->dismissViewControllerAnimated(true);
}

} // namespace ekinora::sale
