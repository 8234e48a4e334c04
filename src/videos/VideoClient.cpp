#include "VideoClient.h"

#include "platform/Foundation.h"
#include "platform/Platform.h"
#include "service/ServiceRoots.h"

#include <QJsonObject>

namespace ekinora::videos {

using namespace platform;

QString videoServiceBase() { return service::Roots::ServiceRoot + QStringLiteral("/video-service"); }
QString thumbnailHost() { return service::Roots::ServiceRoot + QStringLiteral("/static/videos"); }
QUrl thumbnailURL(const QString& identifier) {
    return QUrl(thumbnailHost() + stringWithFormat(QStringLiteral("/vi/%@/0.jpg"), {identifier}));
}

QUrl preferredStream(const Video& video) {
    for (const QString& key : {VideoQualityHTTPLiveStreaming, QStringLiteral("22"), QStringLiteral("18"), QStringLiteral("36")})
        if (video.streamURLs.contains(key)) return video.streamURLs.value(key);
    return {};
}

VideoClient& VideoClient::defaultClient() {
    static VideoClient client;
    return client;
}

void VideoClient::getVideoWithIdentifier(const QString& identifier, Completion completion) {
    HttpRequest request;
    request.url = (videoServiceBase() + QStringLiteral("/get_video_info?video_id=")).toUtf8() +
                  QUrl::toPercentEncoding(identifier);
    Platform::current().http().send(request, {}, [identifier, completion](const HttpResponse& response) {
        if (!response.transportOk || response.statusCode != 200) return completion(std::nullopt);
        const Json body = decodeJson(response.body);
        const Json streams = body.isObject() ? body.toObject().value(QStringLiteral("streamURLs")) : Json();
        if (!streams.isObject()) return completion(std::nullopt);
        Video video{identifier, body.toObject().value(QStringLiteral("title")).toString(), {}};
        const QJsonObject byQuality = streams.toObject();
        for (auto it = byQuality.begin(); it != byQuality.end(); ++it)
            if (it->isString()) video.streamURLs.insert(it.key(), QUrl(it->toString()));
        completion(video);
    });
}

} // namespace ekinora::videos
