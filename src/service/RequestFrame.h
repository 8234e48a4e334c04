#pragma once

#include "platform/Foundation.h"
#include "platform/HttpClient.h"

#include <QList>
#include <QPair>
#include <functional>

namespace ekinora::service {

using platform::Json;

// A request's parameters in the order its class lists them; only set (non-nil) values are present.
using Parameters = QList<QPair<QString, Json>>;
using Callback = std::function<void(const Json&)>;

// How one request class goes out: its verb, whether it sets "Content-Type" and "Authorization", and
// whether it installs the redirect block. The request classes are this table's rows.
struct FrameSpec {
    QByteArray verb;
    bool contentType;
    bool authorization;
    bool redirectBlock;
};

class RequestFrame {
public:
    // Adds the key only when the value is set: nil leaves it out, an empty text is sent.
    static void add(Parameters& parameters, const QString& key, const Json& value);
    // Adds "bearer" with the stored token, last, only when a token is stored.
    static void addBearer(Parameters& parameters);

    // "%@/?do=%@" with ServiceBase and the command.
    static QString commandUrl(const QString& doParam);

    // Builds the request of one operation (URL, serializer, headers, redirect block) and sends it.
    // success gets the decoded reply unchanged; fail gets the decoded error body or nil, never the error.
    static void send(const FrameSpec& spec, const QString& url, const Parameters& parameters, Callback success,
                     Callback fail);

    // The parts of send, for the other request helpers.
    // The query string of a GET: keys in ascending order, each value percent-escaped.
    static QByteArray queryString(const Parameters& parameters);
    static QByteArray appendQuery(const QString& url, const QByteArray& query);
    static QByteArray jsonBody(const Parameters& parameters);
    static QByteArray percentEscaped(const QString& text);
    static platform::HeaderList defaultHeaders();
    // The redirected request: a plain request to the proposed URL with the token read again.
    static platform::HttpRequest redirectedRequest(const platform::HttpRequest& proposed);
    // The reply as the JSON response serializer judges it: a success with the decoded object, or a
    // failure with the decoded failing body (nil when there is none or it is not JSON).
    static void deliver(const platform::HttpResponse& response, const Callback& success, const Callback& fail);
};

} // namespace ekinora::service
