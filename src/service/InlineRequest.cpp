#include "InlineRequest.h"

#include "LocalStore.h"
#include "ServiceRoots.h"
#include "platform/Platform.h"

#include <QJsonDocument>

namespace ekinora::service {

using namespace platform;

QString InlineRequest::forcedToken() {
    const QString token = LocalStore::token();
    if (token.isNull()) fatal(QStringLiteral("Fatal error: Unexpectedly found nil while unwrapping an Optional value (token)"));
    return token;
}

HeaderList InlineRequest::bearerHeaders() { return {{"Authorization", ("Bearer " + forcedToken()).toUtf8()}}; }

QString InlineRequest::url(const QString& pathLiteral) { return Roots::ServiceBase + pathLiteral; }

namespace {

void deliver(const HttpResponse& r, const InlineRequest::Handler& handler) {
    InlineRequest::Response out;
    out.transportOk = r.transportOk;
    out.statusCode = r.statusCode;
    out.data = r.body;
    if (r.transportOk) {
        if (r.body.isEmpty() && (r.statusCode == 204 || r.statusCode == 205)) {
            out.jsonSuccess = true;
            out.json = nullObject();
        } else {
            // Fragments are allowed here, unlike the older frame.
            QJsonParseError error{};
            const QJsonDocument doc = QJsonDocument::fromJson("[" + r.body + "]", &error);
            if (!r.body.trimmed().isEmpty() && error.error == QJsonParseError::NoError && doc.array().size() == 1) {
                out.jsonSuccess = true;
                out.json = doc.array().at(0);
            }
        }
    }
    handler(out);
}

} // namespace

void InlineRequest::request(const QString& url, const QByteArray& method, const Parameters& parameters,
                            Encoding encoding, const HeaderList& headers, Handler handler) {
    HttpRequest request;
    request.method = method;
    request.headers = RequestFrame::defaultHeaders();
    for (const auto& h : headers) request.setHeader(h.first, h.second);
    if (encoding == Encoding::Json) {
        request.url = url.toUtf8();
        if (!parameters.isEmpty()) {
            request.body = RequestFrame::jsonBody(parameters);
            if (!request.hasHeader("Content-Type")) request.setHeader("Content-Type", "application/json");
        }
    } else if (method == "GET" || method == "HEAD" || method == "DELETE") {
        request.url = RequestFrame::appendQuery(url, RequestFrame::queryString(parameters));
    } else {
        request.url = url.toUtf8();
        request.body = RequestFrame::queryString(parameters);
        if (!request.hasHeader("Content-Type"))
            request.setHeader("Content-Type", "application/x-www-form-urlencoded; charset=utf-8");
    }
    Platform::current().http().send(request, {}, [handler = std::move(handler)](const HttpResponse& r) { deliver(r, handler); });
}

void InlineRequest::urlRequest(const QString& url, Handler handler) {
    HttpRequest request;
    request.method = "GET";
    request.url = url.toUtf8();
    request.timeoutMs = 60000;
    Platform::current().http().send(request, {}, [handler = std::move(handler)](const HttpResponse& r) { deliver(r, handler); });
}

} // namespace ekinora::service
