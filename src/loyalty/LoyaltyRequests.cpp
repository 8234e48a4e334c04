#include "LoyaltyRequests.h"

#include "platform/Platform.h"
#include "service/RequestFrame.h"
#include "service/ServiceRoots.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace ekinora::loyalty {

using namespace platform;

std::optional<QString> percentEncodedForQuery(const QString& text) {
    if (!text.isValidUtf16()) return std::nullopt;
    // Unreserved characters are never encoded; these are the query's other allowed ones.
    return QString::fromLatin1(text.toUtf8().toPercentEncoding("!$&'()*+,;=:@/?"));
}

QString scanAddress(const QString& token, const QString& code) {
    const QString assembled = service::Roots::ServiceBase +
                              QStringLiteral("/?do=agricultural-pesticide-code/scan&bearer=Bearer%20") + token +
                              QStringLiteral("&serialNumber=") + code;
    const auto encoded = percentEncodedForQuery(assembled);
    if (!encoded) fatal(QStringLiteral("Fatal error: Unexpectedly found nil while unwrapping an Optional value (scan URL)"));
    return *encoded;
}

namespace {

void send(HttpRequest request, const ReplyHandler& done) {
    Platform::current().http().send(request, {}, [done](const HttpResponse& r) {
        Reply reply;
        reply.hasBody = r.transportOk && !r.body.isEmpty();
        reply.body = r.body;
        done(reply);
    });
}

} // namespace

void sendScan(const QString& token, const QString& code, ReplyHandler done) {
    HttpRequest request;
    request.url = scanAddress(token, code).toUtf8();
    request.headers = service::RequestFrame::defaultHeaders();
    request.setHeader("Authorization", ("Bearer " + token).toUtf8());
    send(request, done);
}

void sendWithBareToken(const QString& url, const QString& token, ReplyHandler done) {
    HttpRequest request;
    request.url = url.toUtf8();
    request.headers = service::RequestFrame::defaultHeaders();
    request.setHeader("Authorization", token.toUtf8());
    request.timeoutMs = 60000;
    send(request, done);
}

Json sub(const Json& value, const QString& key) {
    if (!value.isObject()) return nil();
    const QJsonObject object = value.toObject();
    return object.contains(key) ? object.value(key) : nil();
}

Json sub(const Json& value, std::initializer_list<QString> keys) {
    Json node = value;
    for (const QString& key : keys) node = sub(node, key);
    return node;
}

QString textOf(const Json& value) {
    switch (value.type()) {
    case QJsonValue::String: return value.toString();
    case QJsonValue::Bool: return value.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    case QJsonValue::Double: {
        const double d = value.toDouble();
        if (d == double(qint64(d)) && std::abs(d) < 1e15) return QString::number(qint64(d));
        return QString::number(d, 'g', 15);
    }
    case QJsonValue::Object: return QString::fromUtf8(QJsonDocument(value.toObject()).toJson(QJsonDocument::Indented)).trimmed();
    case QJsonValue::Array: return QString::fromUtf8(QJsonDocument(value.toArray()).toJson(QJsonDocument::Indented)).trimmed();
    default: return QStringLiteral("null");
    }
}

std::optional<Json> parseBody(const QByteArray& body, bool fragmentsAllowed) {
    if (!fragmentsAllowed) {
        const Json tree = decodeJson(body);
        if (isNil(tree)) return std::nullopt;
        return tree;
    }
    QJsonParseError error{};
    const QJsonDocument doc = QJsonDocument::fromJson("[" + body + "]", &error);
    if (body.trimmed().isEmpty() || error.error != QJsonParseError::NoError || doc.array().size() != 1) return std::nullopt;
    return doc.array().at(0);
}

QString loyaltyProductName(const QString& name) {
    QString plain = name;
    plain.remove(QStringLiteral("<sup>&reg;</sup>"));
    return plain;
}

} // namespace ekinora::loyalty
