#include "RAIRequestBuilder.h"

#include <cmath>
#include <zlib.h>

namespace ekinora::analytics {

namespace {

QByteArray compress(const QByteArray& data, int windowBits) {
    z_stream stream{};
    if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, windowBits, 8, Z_DEFAULT_STRATEGY) != Z_OK) return {};
    QByteArray out;
    out.resize(int(deflateBound(&stream, uLong(data.size())) + 32));
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.constData()));
    stream.avail_in = uInt(data.size());
    stream.next_out = reinterpret_cast<Bytef*>(out.data());
    stream.avail_out = uInt(out.size());
    const int rc = deflate(&stream, Z_FINISH);
    const auto written = stream.total_out;
    deflateEnd(&stream);
    if (rc != Z_STREAM_END) return {};
    out.resize(int(written));
    return out;
}

} // namespace

QByteArray RAIRequest::header(const QByteArray& name) const {
    for (const auto& [key, value] : headers)
        if (key.compare(name, Qt::CaseInsensitive) == 0) return value;
    return {};
}

QByteArray RAIRequestBuilder::gzip(const QByteArray& data) {
    return compress(data, 15 + 16);
}

QByteArray RAIRequestBuilder::deflate(const QByteArray& data) {
    return compress(data, 15);
}

QByteArray RAIRequestBuilder::parametersForHit(const RAIHit& hit, double now) const {
    QByteArray out;
    auto add = [&out](const QString& key, const QString& value) {
        if (!out.isEmpty()) out += '&';
        out += QUrl::toPercentEncoding(key);
        out += '=';
        out += QUrl::toPercentEncoding(value);
    };
    for (auto it = hit.parameters.begin(); it != hit.parameters.end(); ++it) {
        if (!it.key().startsWith(QLatin1Char('&')) || it.key() == QLatin1String("&ht") || it.key() == QLatin1String("&qt"))
            continue;
        add(it.key().mid(1), it.value());
    }
    if (out.isEmpty()) return out;
    const auto hitTimeMs = qulonglong(std::llround(hit.timestamp * 1000.0));
    add(QStringLiteral("ht"), QString::number(hitTimeMs));
    const double queuedMs = std::floor((now - hit.timestamp) * 1000.0);
    if (queuedMs >= 1) add(QStringLiteral("qt"), QString::number(qulonglong(queuedMs)));
    return out;
}

RAIRequest RAIRequestBuilder::requestGetUrl(const QUrl& url, const QByteArray& payload) const {
    RAIRequest request;
    request.method = "GET";
    request.url = QUrl(QString::fromUtf8(url.toEncoded() + '?' + payload), QUrl::StrictMode);
    request.headers.append({"User-Agent", userAgent});
    return request;
}

RAIRequest RAIRequestBuilder::baseRequest(const QUrl& url) const {
    RAIRequest request;
    request.method = "POST";
    request.url = url;
    request.noCache = true;
    request.headers.append({"Content-Type", QStringLiteral("%1; charset=%2").arg(QStringLiteral("text/plain"), QStringLiteral("UTF-8")).toUtf8()});
    request.headers.append({"User-Agent", userAgent});
    return request;
}

RAIRequest RAIRequestBuilder::requestPostUrl(const QUrl& url, const QByteArray& payload, unsigned compression) const {
    RAIRequest request = baseRequest(url);
    if (compression == RAICompressionGzip) {
        request.body = gzip(payload);
        request.headers.append(qMakePair(QByteArray("Content-Encoding"), QByteArray("gzip")));
    } else if (compression == RAICompressionDeflate) {
        request.body = deflate(payload);
        request.headers.append(qMakePair(QByteArray("Content-Encoding"), QByteArray("deflate")));
    } else {
        request.body = payload;
    }
    request.headers.append({"Content-Length", QByteArray::number(request.body.size())});
    return request;
}

} // namespace ekinora::analytics
