#include "VideoPickerController.h"

#include "platform/Platform.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QMediaPlayer>
#include <QPointer>
#include <QStandardPaths>
#include <QTimer>
#include <QVideoFrame>
#include <QVideoSink>
#include <algorithm>

namespace ekinora::conversations {

namespace {
QString& folderOverride() {
    static QString folder;
    return folder;
}
} // namespace

VideoPickerController::VideoPickerController(Finished finished, QObject* parent)
    : ViewController(parent), m_finished(std::move(finished)) {
    setTitle(QStringLiteral("Video Seç"));
    QList<QFileInfo> found;
    QDirIterator it(libraryFolder(), {QStringLiteral("*.mp4"), QStringLiteral("*.mov"), QStringLiteral("*.m4v"), QStringLiteral("*.avi"),
                                      QStringLiteral("*.MP4"), QStringLiteral("*.MOV"), QStringLiteral("*.M4V"), QStringLiteral("*.AVI")},
                    QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext() && found.size() < 200) found << QFileInfo(it.next());
    std::sort(found.begin(), found.end(), [](const QFileInfo& a, const QFileInfo& b) { return a.lastModified() > b.lastModified(); });
    for (const auto& f : found) m_videos << f.absoluteFilePath();
}

QUrl VideoPickerController::viewSource() const {
    return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Conversations/VideoPickerView.qml"));
}

void VideoPickerController::setLibraryFolder(const QString& folder) { folderOverride() = folder; }

QString VideoPickerController::libraryFolder() {
    if (!folderOverride().isEmpty()) return folderOverride();
    return QStandardPaths::writableLocation(QStandardPaths::MoviesLocation);
}

void VideoPickerController::frameAtHalf(const QUrl& video, QObject* context, std::function<void(const QImage&)> done) {
    auto* player = new QMediaPlayer(context);
    auto* sink = new QVideoSink(player);
    player->setVideoSink(sink);
    auto finished = std::make_shared<bool>(false);
    auto finish = [player, finished, done](const QImage& frame) {
        if (*finished) return;
        *finished = true;
        player->stop();
        player->deleteLater();
        done(frame);
    };
    QObject::connect(player, &QMediaPlayer::mediaStatusChanged, player, [player](QMediaPlayer::MediaStatus status) {
        if (status == QMediaPlayer::LoadedMedia) {
            player->setPosition(player->duration() / 2);
            player->play();
        }
    });
    QObject::connect(sink, &QVideoSink::videoFrameChanged, player, [player, finish](const QVideoFrame& frame) {
        // The frame shown once the half-way position is reached.
        if (player->duration() > 0 && player->position() >= player->duration() / 2 - 100 && frame.isValid())
            finish(frame.toImage());
    });
    QObject::connect(player, &QMediaPlayer::errorOccurred, player, [finish] { finish(QImage()); });
    QTimer::singleShot(8000, player, [finish] { finish(QImage()); });
    player->setSource(video);
}

void VideoPickerController::pickFile(const QString& path) {
    if (m_busy) return;
    m_busy = true;
    emit busyChanged();
    const QUrl url = QUrl::fromLocalFile(path);
    QPointer<VideoPickerController> self(this);
    frameAtHalf(url, this, [self, url](const QImage& frame) {
        if (!self) return;
        self->m_busy = false;
        emit self->busyChanged();
        auto finished = self->m_finished;
        self->dismissViewControllerAnimated(true, [finished, url, frame] {
            if (finished) finished(url, frame);
        });
    });
}

void VideoPickerController::cancel() { dismissViewControllerAnimated(true); }

} // namespace ekinora::conversations
