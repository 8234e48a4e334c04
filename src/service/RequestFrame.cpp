#include "RequestFrame.h"

#include "LocalStore.h"
#include "ServiceRoots.h"
#include "platform/Platform.h"

#include <algorithm>

namespace ekinora::service {

using namespace platform;

void RequestFrame::add(Parameters& parameters, const QString& key, const Json& value) {
    if (!value.isUndefined()) parameters.append({key, value});
}

void RequestFrame::addBearer(Parameters& parameters) {
    const QString token = LocalStore::token();
    if (!token.isNull()) parameters.append({QStringLiteral("bearer"), token});
}

QString RequestFrame::commandUrl(const QString& doParam) {
    return stringWithFormat(QStringLiteral("%@/?do=%@"), {Roots::ServiceBase, doParam});
}

QByteArray RequestFrame::percentEscaped(const QString& text) {
    // Unreserved characters, "/" and "?" stay; everything else is escaped as UTF-8.
    return text.toUtf8().toPercentEncoding("/?", QByteArray(), '%');
}

namespace {

// One key and value of a query, flattened: arrays as "key[]", objects as "key[member]".
void flatten(const QString& key, const Json& value, QList<QPair<QString, Json>>& out) {
    if (value.isObject()) {
        const QJsonObject o = value.toObject();
        QStringList members = o.keys();
        std::sort(members.begin(), members.end());
        for (const QString& m : members) flatten(key + u'[' + m + u']', o.value(m), out);
    } else if (value.isArray()) {
        for (const auto& e : value.toArray()) flatten(key + QStringLiteral("[]"), e, out);
    } else {
        out.append({key, value});
    }
}

} // namespace

QByteArray RequestFrame::queryString(const Parameters& parameters) {
    Parameters sorted = parameters;
    std::stable_sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    QList<QByteArray> pairs;
    for (const auto& [key, value] : sorted) {
        QList<QPair<QString, Json>> flat;
        flatten(key, value, flat);
        for (const auto& [k, v] : flat) {
            if (v.isNull() || v.isUndefined()) pairs << percentEscaped(k);
            else pairs << percentEscaped(k) + '=' + percentEscaped(description(v));
        }
    }
    return pairs.join('&');
}

QByteArray RequestFrame::appendQuery(const QString& url, const QByteArray& query) {
    QByteArray out = url.toUtf8();
    if (query.isEmpty()) return out;
    out += url.contains(u'?') ? '&' : '?';
    return out + query;
}

QByteArray RequestFrame::jsonBody(const Parameters& parameters) {
    QJsonObject o;
    for (const auto& [key, value] : parameters) o.insert(key, value);
    return encodeJson(o);
}

HeaderList RequestFrame::defaultHeaders() {
    return {{"Accept-Language", "tr-TR;q=1"},
            {"User-Agent", "Ekinora/" + Platform::current().application().bundleShortVersion().toUtf8() + " (Qt; Linux)"}};
}

HttpRequest RequestFrame::redirectedRequest(const HttpRequest& proposed) {
    HttpRequest plain;
    plain.method = "GET";
    plain.url = proposed.url;
    plain.setHeader("Authorization", stringWithFormat(QStringLiteral("Bearer %@"), {LocalStore::token()}).toUtf8());
    return plain;
}

void RequestFrame::deliver(const HttpResponse& response, const Callback& success, const Callback& fail) {
    if (!response.transportOk) {
        fail(nil());
        return;
    }
    static const QList<QByteArray> acceptable = {"application/json", "text/json", "text/javascript"};
    const bool statusOk = response.statusCode >= 200 && response.statusCode < 300;
    const QByteArray mime = response.mimeType();
    const bool typeOk = acceptable.contains(mime) || (mime.isEmpty() && response.body.isEmpty());
    if (!statusOk || !typeOk) {
        // The failing body travels with the error; the caller gets it decoded.
        fail(response.body.isEmpty() ? nil() : decodeJson(response.body));
        return;
    }
    if (response.body.isEmpty() || response.body == " ") {
        success(nil());
        return;
    }
    const Json decoded = decodeJson(response.body);
    if (decoded.isUndefined()) fail(nil());
    else success(decoded);
}

void RequestFrame::send(const FrameSpec& spec, const QString& url, const Parameters& parameters, Callback success,
                        Callback fail) {
    HttpRequest request;
    request.method = spec.verb;
    request.headers = defaultHeaders();
    if (spec.contentType) request.setHeader("Content-Type", "application/json; charset=UTF-8");
    if (spec.authorization)
        request.setHeader("Authorization", stringWithFormat(QStringLiteral("Bearer %@"), {LocalStore::token()}).toUtf8());
    // The JSON serializer: parameters in the query for GET, HEAD and DELETE, else a JSON body.
    if (spec.verb == "GET" || spec.verb == "HEAD" || spec.verb == "DELETE") {
        request.url = appendQuery(url, queryString(parameters));
    } else {
        request.url = url.toUtf8();
        request.body = jsonBody(parameters);
        if (!request.hasHeader("Content-Type")) request.setHeader("Content-Type", "application/json");
    }
    RedirectBlock redirect;
    if (spec.redirectBlock)
        redirect = [](const HttpRequest& proposed, const HttpResponse&) { return redirectedRequest(proposed); };
    Platform::current().http().send(request, redirect,
                                    [success = std::move(success), fail = std::move(fail)](const HttpResponse& r) {
                                        deliver(r, success, fail);
                                    });
}

} // namespace ekinora::service
