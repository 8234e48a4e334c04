#pragma once

#include "platform/Controls.h"
#include "platform/ViewController.h"

#include <QImage>
#include <QStringList>
#include <functional>

namespace ekinora::contests {

// The picture picker of the contest screens, presented over them: the photo library (the pictures of
// the user's pictures folder, newest first) or the camera. It hands back the original picture, or
// nothing on a cancel, and is dismissed either way.
class ImagePickerController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by its screen.")
    Q_PROPERTY(bool camera READ isCamera CONSTANT)
    Q_PROPERTY(QStringList photos READ photos CONSTANT)
    Q_PROPERTY(QString captureFolder READ captureFolder CONSTANT)
public:
    enum SourceType { PhotoLibrary = 0, Camera = 1 };
    using Finished = std::function<void(const QImage& picture)>;

    explicit ImagePickerController(SourceType source, Finished finished, std::function<void()> cancelled = {},
                                   QObject* parent = nullptr);
    QUrl viewSource() const override;

    bool isCamera() const { return m_source == Camera; }
    QStringList photos() const { return m_photos; }
    QString captureFolder() const;

    // The folder the library lists; the pictures folder unless set (tests, the demo).
    static void setLibraryFolder(const QString& folder);
    static QString libraryFolder();

    // A picture chosen or taken, by its file: unreadable files are not taken and the picker stays.
    Q_INVOKABLE bool pickFile(const QString& path);
    Q_INVOKABLE void cancel();

private:
    SourceType m_source;
    Finished m_finished;
    std::function<void()> m_cancelled;
    QStringList m_photos;
};

} // namespace ekinora::contests
