#pragma once

#include "RequestFrame.h"

namespace ekinora::service {

// The inline requests of the catalogue and loyalty screens: the same root, token and envelope, sent
// straight from the screen without a request class.
class InlineRequest {
public:
    enum class Encoding { Url, Json };

    struct Response {
        bool transportOk = false;
        int statusCode = 0;
        QByteArray data;
        // responseJSON: the decoded body on success; nil when the body is not JSON (a failure).
        bool jsonSuccess = false;
        Json json;
    };
    using Handler = std::function<void(const Response&)>;

    // The stored token; a missing token is a programming fault here and stops the application.
    static QString forcedToken();
    // "Authorization": "Bearer " and the token.
    static platform::HeaderList bearerHeaders();

    // ServiceBase followed by the path literal ("/?do=dealer/agricultural-pesticide-list").
    static QString url(const QString& pathLiteral);

    // A request with its parameters encoded in the query (Url, for GET) or the body (Url form for other
    // verbs, Json for any verb: a GET with a JSON body is possible and is sent as it is).
    static void request(const QString& url, const QByteArray& method, const Parameters& parameters, Encoding encoding,
                        const platform::HeaderList& headers, Handler handler);
    // A hand-built request: full literal URL, GET, 60 seconds.
    static void urlRequest(const QString& url, Handler handler);
};

} // namespace ekinora::service
