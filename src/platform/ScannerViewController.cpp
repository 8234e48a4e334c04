#include "ScannerViewController.h"

#include "AlertController.h"
#include "Platform.h"

namespace ekinora::platform {

ScannerViewController::ScannerViewController(QObject* parent)
    : ViewController(parent), cameraContainerView(makeControl<View>("cameraContainerView")),
      qrCodeBounds(makeControl<FrameView>("qrCodeBounds")) {
    // 100 x 100 at the origin, drawn over the code that was just read.
    qrCodeBounds->setFrame(QRectF(0, 0, 100, 100));
    qrCodeBounds->setBorderWidth(3.0);
    qrCodeBounds->setCornerRadius(7.0);
    qrCodeBounds->setBorderColor(QColor::fromRgbF(0.24313725490196078, 0.5607843137254902, 0.7529411764705882, 1.0));
}

ScannerViewController::~ScannerViewController() { replaceSession(nullptr); }

QStringList ScannerViewController::recognisedTypes() {
    return {MetadataObjectType::QRCode, MetadataObjectType::DataMatrix, MetadataObjectType::EAN8,
            MetadataObjectType::EAN13, MetadataObjectType::PDF417};
}

void ScannerViewController::replaceSession(CaptureSession* session) {
    if (m_session) {
        m_session->stopRunning();
        m_session->deleteLater();
    }
    if (m_previewLayer) m_previewLayer->deleteLater();
    m_previewLayer = nullptr;
    m_session = session;
    if (session) connect(session, &CaptureSession::runningChanged, this, &ScannerViewController::runningChanged);
    emit sessionChanged();
    emit runningChanged();
}

void ScannerViewController::viewWillAppear(bool animated) {
    ViewController::viewWillAppear(animated);
    if (m_session && !m_session->isRunning()) m_session->startRunning();
}

void ScannerViewController::viewWillDisappear(bool animated) {
    ViewController::viewWillDisappear(animated);
    if (m_session && m_session->isRunning()) m_session->stopRunning();
}

// Every appearance builds a new session in place of the old one.
void ScannerViewController::viewDidAppear(bool animated) {
    ViewController::viewDidAppear(animated);
    auto* session = new CaptureSession(this);
    replaceSession(session);

    const auto device = CaptureDevice::defaultVideoDevice();
    if (!device) return; // no camera: the screen stays blank, nothing is said

    QString error;
    auto input = makeDeviceInput(*device, &error);
    if (!input) {
        failed();
        return;
    }
    if (!session->canAddInput(input.get())) {
        failed();
        return;
    }
    session->addInput(std::move(input));

    auto* output = new MetadataOutput;
    if (!session->canAddOutput(output)) {
        delete output;
        failed();
        return;
    }
    session->addOutput(output);
    output->setMetadataObjectsDelegate([this](const QList<MachineReadableCodeObject>& objects) { metadataFound(objects); });
    output->setMetadataObjectTypes(recognisedTypes());

    m_previewLayer = new VideoPreviewLayer(session, this);
    m_previewLayer->videoGravity = QStringLiteral("AVLayerVideoGravityResizeAspectFill");
    emit sessionChanged();

    qrCodeBounds->removeAllAnimations();
    qrCodeBounds->setAlpha(0.0);
    session->startRunning();
}

// Said for every failure to use the camera, also one that is not about permission.
void ScannerViewController::failed() {
    auto* alert = AlertController::alertControllerWithTitle(QStringLiteral("Uyarı"),
                                                            QStringLiteral("Kamera Erişimine İzin Vermek İçin Ayarlara Gidin"));
    alert->addAction(QStringLiteral("Ayarlar"), AlertController::Default,
                     [] { Platform::current().application().openURL(QUrl(QStringLiteral("app-settings:"))); });
    presentViewController(alert, true);
    replaceSession(nullptr);
}

void ScannerViewController::metadataFound(const QList<MachineReadableCodeObject>& objects) {
    if (objects.isEmpty()) return;
    // Only the first code of a frame counts.
    const MachineReadableCodeObject& first = objects.first();
    if (!first.stringValue) return;
    qrString = *first.stringValue;
    if (!qrString.isEmpty()) {
        scanCode(qrString);
    } else {
        stopRunning();
        auto* alert = AlertController::alertControllerWithTitle(QStringLiteral("Uyarı"), QStringLiteral("Geçerli bir qr kodu giriniz"));
        alert->addAction(QStringLiteral("Tekrar Dene"), AlertController::Default, [this] { startRunning(); });
        presentViewController(alert, true);
    }
    // The session stops on the same thread that delivered the code: one request per reading.
    stopRunning();
    showQrCodeBounds(m_previewLayer ? m_previewLayer->transformedBounds(first) : std::nullopt);
}

void ScannerViewController::showQrCodeBounds(const std::optional<QRectF>& rect) {
    if (!rect) return;
    qrCodeBounds->removeAllAnimations();
    qrCodeBounds->setAlpha(1.0);
    qrCodeBounds->setFrame(*rect);
    qrCodeBounds->animateAlpha(0.0, 200, 1000);
}

void ScannerViewController::startRunning() {
    if (m_session) m_session->startRunning();
}

void ScannerViewController::stopRunning() {
    if (m_session) m_session->stopRunning();
}

} // namespace ekinora::platform
