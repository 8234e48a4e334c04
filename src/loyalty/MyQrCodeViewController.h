#pragma once

#include "platform/Controls.h"
#include "platform/ViewController.h"

#include <QImage>

namespace ekinora::loyalty {

// The farmer's own QR code, the one a dealer reads to record a sale or a gift to him.
class MyQrCodeViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::ImageView, qrImage)
public:
    explicit MyQrCodeViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    platform::ImageView* qrImage;

    void viewDidLoad() override;
    void loadQrCode();
    // The code of an ASCII text, stretched in each direction to qrImage's present frame; a null image for
    // any other text or a code that cannot be made.
    QImage generateQRCode(const QString& text) const;
    // The image now shown (null when none).
    QImage shownImage() const { return m_shown; }

public slots:
    void closeButtonTapped(QObject* sender = nullptr);

private:
    void show(const QImage& image);
    QImage m_shown;
};

} // namespace ekinora::loyalty
