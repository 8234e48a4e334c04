#pragma once

#include "platform/ViewController.h"

#include <QImage>
#include <QStringList>
#include <QUrl>
#include <functional>

namespace ekinora::conversations {

// The video picker of the conversation screens: the videos of the user's videos folder (MP4, QuickTime,
// AVI, M4V), newest first. A chosen video comes back by its file with the frame at half of its
// duration, which stands for it as its preview; nothing is read of the video beyond that frame.
class VideoPickerController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by its screen.")
    Q_PROPERTY(QStringList videos READ videos CONSTANT)
    Q_PROPERTY(bool busy READ busy NOTIFY busyChanged)
public:
    using Finished = std::function<void(const QUrl& video, const QImage& frame)>;

    explicit VideoPickerController(Finished finished, QObject* parent = nullptr);
    QUrl viewSource() const override;

    QStringList videos() const { return m_videos; }
    bool busy() const { return m_busy; }

    static void setLibraryFolder(const QString& folder);
    static QString libraryFolder();

    // The frame at half of the video's duration; a null picture when the video cannot be decoded.
    static void frameAtHalf(const QUrl& video, QObject* context, std::function<void(const QImage&)> done);

    // A video chosen by its file: its frame is taken, then the picker closes and hands both back.
    Q_INVOKABLE void pickFile(const QString& path);
    Q_INVOKABLE void cancel();

signals:
    void busyChanged();

private:
    Finished m_finished;
    QStringList m_videos;
    bool m_busy = false;
};

} // namespace ekinora::conversations
