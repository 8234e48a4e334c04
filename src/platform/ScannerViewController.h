#pragma once

#include "Capture.h"
#include "ViewController.h"

namespace ekinora::platform {

// The scanner core that every code-reading screen carries: a new capture session on every appearance,
// the camera-unusable alert, reading the first code of a frame, the frame that flashes around it, and
// the session stopped while the screen is away. A screen adds what it does with a code (scanCode) and
// its own result, overlay, header and ways out.
class ScannerViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_NAMED_ELEMENT(ScannerViewController)
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::View, cameraContainerView)
    UI_OUTLET(ekinora::platform::FrameView, qrCodeBounds)
    Q_PROPERTY(ekinora::platform::VideoPreviewLayer* previewLayer READ previewLayer NOTIFY sessionChanged)
    Q_PROPERTY(bool running READ isRunning NOTIFY runningChanged)
public:
    explicit ScannerViewController(QObject* parent = nullptr);
    ~ScannerViewController() override;

    View* cameraContainerView;
    FrameView* qrCodeBounds;
    QString qrString;

    CaptureSession* captureSession() const { return m_session; }
    VideoPreviewLayer* previewLayer() const { return m_previewLayer; }
    bool isRunning() const { return m_session && m_session->isRunning(); }

    void viewWillAppear(bool animated) override;
    void viewDidAppear(bool animated) override;
    void viewWillDisappear(bool animated) override;

    // The metadata delegate: the codes of one frame.
    void metadataFound(const QList<MachineReadableCodeObject>& objects);
    void failed();
    void showQrCodeBounds(const std::optional<QRectF>& rect);

    // On the present session, when there is one.
    void startRunning();
    void stopRunning();

    // The types every scanner recognises: retail barcodes as well as two-dimensional codes.
    static QStringList recognisedTypes();

signals:
    void sessionChanged();
    void runningChanged();

protected:
    // The screen's request for a code that is not empty.
    virtual void scanCode(const QString& code) = 0;

private:
    void replaceSession(CaptureSession* session);
    CaptureSession* m_session = nullptr;
    VideoPreviewLayer* m_previewLayer = nullptr;
};

} // namespace ekinora::platform
