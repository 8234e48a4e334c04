#include "MyQrCodeViewController.h"

#include "LoyaltyRequests.h"
#include "service/InlineRequest.h"
#include "service/ServiceCall.h"
#include "service/ServiceRoots.h"

#include <ZXing/BitMatrix.h>
#include <ZXing/MultiFormatWriter.h>

#include <QBuffer>
#include <cmath>

namespace ekinora::loyalty {

using namespace platform;

MyQrCodeViewController::MyQrCodeViewController(QObject* parent)
    : ViewController(parent), qrImage(makeControl<ImageView>("qrImage")) {
    setTitle(QStringLiteral("QR Kodum"));
}

QUrl MyQrCodeViewController::viewSource() const {
    return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Loyalty/MyQrCodeView.qml"));
}

void MyQrCodeViewController::viewDidLoad() { loadQrCode(); }

void MyQrCodeViewController::loadQrCode() {
    const QString token = service::InlineRequest::forcedToken();
    // This command takes the token without "Bearer ".
    sendWithBareToken(service::Roots::ServiceBase + QStringLiteral("/?do=farmer/qr-code"), token,
                      [self = strong(this)](const Reply& reply) {
                          // No body, or one that is not JSON: the image stays as it is and nothing is said.
                          if (!reply.hasBody) return;
                          const auto tree = parseBody(reply.body, true);
                          if (!tree) return;
                          service::log(QStringLiteral("qr-code reply: %1").arg(textOf(*tree)));
                          // A missing code reads as "null", and that is what the picture then says.
                          self->show(self->generateQRCode(textOf(sub(*tree, {QStringLiteral("data"), QStringLiteral("qrCode")}))));
                      });
}

QImage MyQrCodeViewController::generateQRCode(const QString& text) const {
    for (QChar c : text)
        if (c.unicode() > 0x7f) return {}; // no lossless ASCII form: no input for the code
    ZXing::BitMatrix matrix;
    try {
        matrix = ZXing::MultiFormatWriter(ZXing::BarcodeFormat::QRCode).encode(text.toStdString(), 0, 0);
    } catch (const std::exception&) {
        return {};
    }
    if (matrix.width() <= 0 || matrix.height() <= 0) return {};
    QImage modules(matrix.width(), matrix.height(), QImage::Format_Grayscale8);
    for (int y = 0; y < matrix.height(); ++y)
        for (int x = 0; x < matrix.width(); ++x) modules.setPixel(x, y, matrix.get(x, y) ? qRgb(0, 0, 0) : qRgb(255, 255, 255));
    // Each direction scaled on its own, so that the code fills the view also when it is not square.
    const QSizeF frame = qrImage->frameSize();
    const int w = int(std::lround(frame.width())), h = int(std::lround(frame.height()));
    if (w <= 0 || h <= 0) return {};
    return modules.scaled(w, h, Qt::IgnoreAspectRatio, Qt::FastTransformation);
}

// The image view takes addresses: a drawn picture goes as a PNG data address.
void MyQrCodeViewController::show(const QImage& image) {
    m_shown = image;
    if (image.isNull()) {
        qrImage->setImageUrl(QUrl());
        return;
    }
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    qrImage->setImageUrl(QUrl(QStringLiteral("data:image/png;base64,") + QString::fromLatin1(png.toBase64())));
}

void MyQrCodeViewController::closeButtonTapped(QObject*) { dismissViewControllerAnimated(true); }

} // namespace ekinora::loyalty
