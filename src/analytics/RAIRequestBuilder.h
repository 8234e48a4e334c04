#pragma once

#include "RAIHit.h"

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QUrl>

namespace ekinora::analytics {

// A request as the builder decides it, before it meets the network.
struct RAIRequest {
    QByteArray method; // "GET" or "POST"
    QUrl url;
    QList<QPair<QByteArray, QByteArray>> headers;
    QByteArray body;
    bool noCache = false;

    QByteArray header(const QByteArray& name) const;
};

enum RAICompression : unsigned { RAICompressionNone = 0, RAICompressionDeflate = 1, RAICompressionGzip = 2 };

class RAIRequestBuilder {
public:
    QByteArray userAgent = "Ekinora-Analytics/1.0";

    // The wire form of a hit: its "&" keys with their values, percent-encoded, plus "&ht" (the hit
    // time in milliseconds since 1970) and "&qt" (milliseconds since the hit was made, when at least 1).
    QByteArray parametersForHit(const RAIHit& hit, double now) const;

    RAIRequest requestGetUrl(const QUrl& url, const QByteArray& payload) const;
    // Compressed by the strategy; a failed compression leaves the body empty.
    RAIRequest requestPostUrl(const QUrl& url, const QByteArray& payload, unsigned compression) const;
    RAIRequest baseRequest(const QUrl& url) const;

    static QByteArray gzip(const QByteArray& data);
    static QByteArray deflate(const QByteArray& data); // zlib format, as HTTP's "deflate" means
};

} // namespace ekinora::analytics
