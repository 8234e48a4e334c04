#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QPair>
#include <functional>

class QNetworkAccessManager;

namespace ekinora::platform {

using HeaderList = QList<QPair<QByteArray, QByteArray>>;

struct HttpRequest {
    QByteArray method = "GET";
    QByteArray url; // the address exactly as it goes out
    HeaderList headers;
    QByteArray body;
    int timeoutMs = 0; // 0: the transport's default

    void setHeader(const QByteArray& name, const QByteArray& value);
    void removeHeader(const QByteArray& name);
    bool hasHeader(const QByteArray& name) const;
    QByteArray header(const QByteArray& name) const;
};

struct HttpResponse {
    bool transportOk = false; // false: no network, time-out, refused connection, TLS failure
    int statusCode = 0;
    HeaderList headers;
    QByteArray body;
    QByteArray url;
    QString errorText;

    QByteArray header(const QByteArray& name) const;
    // The MIME type of "Content-Type" without its parameters, lower case; empty when absent.
    QByteArray mimeType() const;
    bool isRedirect() const;
};

// Decides the request that follows a redirection. It receives the request that the transport proposes
// (see HttpClient::proposedRedirect) and returns the one to send.
using RedirectBlock = std::function<HttpRequest(const HttpRequest& proposed, const HttpResponse& redirection)>;
using ResponseHandler = std::function<void(const HttpResponse&)>;

// The transport. Replies arrive on the main thread, through the event loop.
class HttpClient : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    virtual void send(const HttpRequest& request, RedirectBlock redirect, ResponseHandler done) = 0;

    // What the platform's session does by default on a redirection: the same request at the new address,
    // except that 303, and 301 or 302 after a POST, become a GET without a body or its headers.
    static HttpRequest proposedRedirect(const HttpRequest& original, const HttpResponse& redirection);
    static constexpr int MaxRedirects = 16;
};

// The transport over QNetworkAccessManager. Redirections are never followed by Qt: each one is rebuilt
// here, through the caller's block when there is one.
class QtHttpClient final : public HttpClient {
    Q_OBJECT
public:
    explicit QtHttpClient(QObject* parent = nullptr);
    void send(const HttpRequest& request, RedirectBlock redirect, ResponseHandler done) override;

private:
    void sendHop(const HttpRequest& request, RedirectBlock redirect, ResponseHandler done, int hops);
    QNetworkAccessManager* m_manager;
};

} // namespace ekinora::platform
