#include "HttpClient.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrl>

namespace ekinora::platform {

namespace {

QByteArray findHeader(const HeaderList& headers, const QByteArray& name) {
    for (const auto& h : headers)
        if (h.first.compare(name, Qt::CaseInsensitive) == 0) return h.second;
    return {};
}

} // namespace

void HttpRequest::setHeader(const QByteArray& name, const QByteArray& value) {
    for (auto& h : headers)
        if (h.first.compare(name, Qt::CaseInsensitive) == 0) {
            h.second = value;
            return;
        }
    headers.append({name, value});
}

void HttpRequest::removeHeader(const QByteArray& name) {
    headers.removeIf([&](const auto& h) { return h.first.compare(name, Qt::CaseInsensitive) == 0; });
}

bool HttpRequest::hasHeader(const QByteArray& name) const {
    for (const auto& h : headers)
        if (h.first.compare(name, Qt::CaseInsensitive) == 0) return true;
    return false;
}

QByteArray HttpRequest::header(const QByteArray& name) const { return findHeader(headers, name); }

QByteArray HttpResponse::header(const QByteArray& name) const { return findHeader(headers, name); }

QByteArray HttpResponse::mimeType() const {
    QByteArray type = header("Content-Type");
    const int semicolon = type.indexOf(';');
    if (semicolon >= 0) type.truncate(semicolon);
    return type.trimmed().toLower();
}

bool HttpResponse::isRedirect() const {
    return transportOk && (statusCode == 301 || statusCode == 302 || statusCode == 303 || statusCode == 307 ||
                           statusCode == 308) &&
           !header("Location").isEmpty();
}

HttpRequest HttpClient::proposedRedirect(const HttpRequest& original, const HttpResponse& redirection) {
    HttpRequest next = original;
    const QUrl base = QUrl::fromEncoded(original.url);
    next.url = base.resolved(QUrl::fromEncoded(redirection.header("Location"))).toEncoded();
    const int code = redirection.statusCode;
    const bool toGet = (code == 303 && original.method != "HEAD") ||
                       ((code == 301 || code == 302) && original.method == "POST");
    if (toGet) {
        next.method = "GET";
        next.body.clear();
        next.removeHeader("Content-Type");
        next.removeHeader("Content-Length");
    }
    return next;
}

QtHttpClient::QtHttpClient(QObject* parent) : HttpClient(parent), m_manager(new QNetworkAccessManager(this)) {
    m_manager->setRedirectPolicy(QNetworkRequest::ManualRedirectPolicy);
}

void QtHttpClient::send(const HttpRequest& request, RedirectBlock redirect, ResponseHandler done) {
    sendHop(request, std::move(redirect), std::move(done), 0);
}

void QtHttpClient::sendHop(const HttpRequest& request, RedirectBlock redirect, ResponseHandler done, int hops) {
    QNetworkRequest qreq(QUrl::fromEncoded(request.url, QUrl::TolerantMode));
    qreq.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    qreq.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    for (const auto& h : request.headers) qreq.setRawHeader(h.first, h.second);
    if (request.timeoutMs > 0) qreq.setTransferTimeout(request.timeoutMs);
    QNetworkReply* reply = request.body.isEmpty() && (request.method == "GET" || request.method == "HEAD")
                               ? (request.method == "GET" ? m_manager->get(qreq) : m_manager->head(qreq))
                               : m_manager->sendCustomRequest(qreq, request.method, request.body);
    connect(reply, &QNetworkReply::finished, this,
            [this, reply, request, redirect = std::move(redirect), done = std::move(done), hops]() mutable {
                reply->deleteLater();
                HttpResponse response;
                const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
                response.statusCode = status.isValid() ? status.toInt() : 0;
                // An HTTP error status is still a reply; only a missing one is a transport failure.
                response.transportOk = status.isValid();
                response.url = request.url;
                response.body = reply->readAll();
                for (const auto& pair : reply->rawHeaderPairs()) response.headers.append(pair);
                if (!response.transportOk) response.errorText = reply->errorString();
                if (response.isRedirect() && hops < MaxRedirects) {
                    HttpRequest next = proposedRedirect(request, response);
                    if (redirect) next = redirect(next, response);
                    sendHop(next, std::move(redirect), std::move(done), hops + 1);
                    return;
                }
                done(response);
            });
}

} // namespace ekinora::platform
