#include "ImagePickerController.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QImageReader>
#include <QStandardPaths>
#include <algorithm>

namespace ekinora::contests {

namespace {
QString& folderOverride() {
    static QString folder;
    return folder;
}
} // namespace

ImagePickerController::ImagePickerController(SourceType source, Finished finished, std::function<void()> cancelled,
                                             QObject* parent)
    : ViewController(parent), m_source(source), m_finished(std::move(finished)), m_cancelled(std::move(cancelled)) {
    setTitle(source == Camera ? QStringLiteral("Fotoğraf Çek") : QStringLiteral("Fotoğraf Seç"));
    if (source == PhotoLibrary) {
        QList<QFileInfo> found;
        QDirIterator it(libraryFolder(), {QStringLiteral("*.jpg"), QStringLiteral("*.jpeg"), QStringLiteral("*.png"),
                                          QStringLiteral("*.JPG"), QStringLiteral("*.JPEG"), QStringLiteral("*.PNG")},
                        QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext() && found.size() < 200) found << QFileInfo(it.next());
        std::sort(found.begin(), found.end(), [](const QFileInfo& a, const QFileInfo& b) { return a.lastModified() > b.lastModified(); });
        for (const auto& f : found) m_photos << f.absoluteFilePath();
    }
}

QUrl ImagePickerController::viewSource() const {
    return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Contests/ImagePickerView.qml"));
}

QString ImagePickerController::captureFolder() const {
    return QStandardPaths::writableLocation(QStandardPaths::TempLocation);
}

void ImagePickerController::setLibraryFolder(const QString& folder) { folderOverride() = folder; }

QString ImagePickerController::libraryFolder() {
    if (!folderOverride().isEmpty()) return folderOverride();
    return QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
}

bool ImagePickerController::pickFile(const QString& path) {
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QImage picture = reader.read();
    if (picture.isNull()) return false;
    auto finished = m_finished;
    dismissViewControllerAnimated(true, [finished, picture] {
        if (finished) finished(picture);
    });
    return true;
}

void ImagePickerController::cancel() {
    auto cancelled = m_cancelled;
    dismissViewControllerAnimated(true, [cancelled] {
        if (cancelled) cancelled();
    });
}

} // namespace ekinora::contests
