#pragma once

#include <QMap>
#include <QString>
#include <QUrl>
#include <functional>
#include <optional>

namespace ekinora::videos {

// The video service's addresses: its stream lookup and its thumbnails ("/vi/<id>/0.jpg" over the
// image host). They stand under ServiceRoot, where the reference service plays the video service.
QString videoServiceBase();
QString thumbnailHost();
QUrl thumbnailURL(const QString& identifier);

// A video at the service: its stream addresses by quality key.
struct Video {
    QString identifier;
    QString title;
    QMap<QString, QUrl> streamURLs;
};

// The quality key of a live stream.
inline const QString VideoQualityHTTPLiveStreaming = QStringLiteral("HTTPLiveStreaming");

// The first stream present in the order: live stream, 22, 18, 36; an empty address for none.
QUrl preferredStream(const Video& video);

// Asks the video service for a video by its identifier. The completion gets the video, or nothing when
// the service doesn't know it or can't be reached or answers with what isn't a video.
class VideoClient {
public:
    using Completion = std::function<void(const std::optional<Video>& video)>;
    static VideoClient& defaultClient();
    void getVideoWithIdentifier(const QString& identifier, Completion completion);
};

} // namespace ekinora::videos
