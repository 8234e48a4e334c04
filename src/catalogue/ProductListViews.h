#pragma once

// What the two product lists share: the grid's cell size, the switch between list and grid, and how a
// product's picture address is read.

#include "platform/Controls.h"
#include "platform/Platform.h"
#include "platform/ViewController.h"

#include <QBuffer>
#include <QImageReader>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPointer>
#include <QQmlEngine>
#include <QQuickAsyncImageProvider>
#include <QUrl>
#include <memory>

namespace ekinora::catalogue {

inline constexpr double GridSpacing = 5;
inline constexpr double GridCellHeight = 200;

// Half the collection's width less the spacing between items, by 200.
inline QSizeF gridCellSize(const platform::TableView* collection) {
    return QSizeF(collection->size().width() / 2 - GridSpacing, GridCellHeight);
}

// A nil address counts as "", and a text that is no address as none.
inline QString pictureAddress(const std::optional<QString>& image) {
    const QUrl url(image.value_or(QString()), QUrl::StrictMode);
    return url.isValid() && !url.isRelative() ? url.toString() : QString();
}

// Product pictures, drawn by the lists as "image://productPictures/<address, percent-encoded>". The
// engine's own loader asks for remote pictures pipelined on one connection, and the service answers
// only the first of a pipeline: the others came back late or with another picture's bytes, so a row
// could show a picture of another product. Here each picture is asked for on its own.
class ProductPictureResponse final : public QQuickImageResponse {
public:
    ProductPictureResponse(const QUrl& address, const QSize& requestedSize) {
        // Made on the loader's thread, which runs an event loop: the reply is read there too.
        thread_local std::unique_ptr<QNetworkAccessManager> manager(new QNetworkAccessManager);
        m_reply = manager->get(QNetworkRequest(address));
        connect(m_reply, &QNetworkReply::finished, this, [this, requestedSize] {
            m_reply->deleteLater();
            if (m_reply->error() != QNetworkReply::NoError) {
                m_error = m_reply->errorString();
            } else {
                QByteArray bytes = m_reply->readAll();
                QBuffer buffer(&bytes);
                QImageReader reader(&buffer);
                if (requestedSize.width() > 0 && requestedSize.height() > 0 && reader.size().isValid())
                    reader.setScaledSize(reader.size().scaled(requestedSize, Qt::KeepAspectRatio));
                if (!reader.read(&m_image)) m_error = reader.errorString();
            }
            emit finished();
        });
    }
    ~ProductPictureResponse() override {
        if (!m_reply) return;
        m_reply->disconnect(this);
        m_reply->abort();
        m_reply->deleteLater();
    }
    QQuickTextureFactory* textureFactory() const override { return QQuickTextureFactory::textureFactoryForImage(m_image); }
    QString errorString() const override { return m_error; }
    void cancel() override {
        if (m_reply) m_reply->abort();
    }

private:
    QPointer<QNetworkReply> m_reply;
    QImage m_image;
    QString m_error;
};

class ProductPictureProvider final : public QQuickAsyncImageProvider {
public:
    QQuickImageResponse* requestImageResponse(const QString& id, const QSize& requestedSize) override {
        return new ProductPictureResponse(QUrl(QUrl::fromPercentEncoding(id.toUtf8())), requestedSize);
    }
};

// Once an engine draws the lists: before their views are made.
inline void provideProductPictures() {
    QQmlEngine* engine = platform::Platform::current().qmlEngine();
    if (engine && !engine->imageProvider(QStringLiteral("productPictures")))
        engine->addImageProvider(QStringLiteral("productPictures"), new ProductPictureProvider);
}

// changeGrid: isList true means the grid is on show. The button's picture names the mode that the
// next tap leads to.
inline void changeGrid(bool& isList, platform::TableView* table, platform::TableView* collection,
                       platform::BarButtonItem* button) {
    table->setHidden(!isList);
    collection->setHidden(isList);
    button->setImage(isList ? QStringLiteral("columnList") : QStringLiteral("rowList"));
    isList = !isList;
}

// The right bar button of both lists.
inline platform::BarButtonItem* gridSwitch(platform::ViewController* screen) {
    auto* item = new platform::BarButtonItem(QStringLiteral("changeGridWithSender"), screen);
    item->setImage(QStringLiteral("columnList"));
    item->setTitle(QStringLiteral("Liste ya da ızgara görünümü"));
    return item;
}

} // namespace ekinora::catalogue
