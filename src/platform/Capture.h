#pragma once

#include <QtQml/qqmlregistration.h>

#include "Controls.h"

#include <QImage>
#include <QPointer>
#include <QPolygonF>
#include <QQuickPaintedItem>
#include <QRectF>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>

class QThread;

namespace ekinora::platform {

// Code reading, as the phone's capture session gives it: a device, an input made from it, a session
// that runs frames from the input to a metadata output, and a preview layer that shows them. Frames
// come from the camera through Qt Multimedia, or, only when asked for, from a development source of
// still pictures or a video file; the same reader decodes both.

// The code types a metadata output can be asked to recognise.
namespace MetadataObjectType {
inline const QString QRCode = QStringLiteral("org.iso.QRCode");
inline const QString DataMatrix = QStringLiteral("org.iso.DataMatrix");
inline const QString EAN8 = QStringLiteral("org.gs1.EAN-8");
inline const QString EAN13 = QStringLiteral("org.gs1.EAN-13");
inline const QString PDF417 = QStringLiteral("org.iso.PDF417");
} // namespace MetadataObjectType

// One code found in a frame: its type, its text (none for content that is not text) and its corners in
// the frame's pixels.
struct MachineReadableCodeObject {
    QString type;
    std::optional<QString> stringValue;
    QPolygonF corners;
    QSize frameSize;
};

// Decodes frames. Safe to call from any thread: it holds nothing but the types it looks for.
class CodeReader {
public:
    explicit CodeReader(const QStringList& types);
    // Every code of the asked types in the frame, in the reader's order.
    QList<MachineReadableCodeObject> read(const QImage& frame) const;

private:
    int m_formats = 0;
};

// Where frames come from. Emits frames only while running.
class FrameSource : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    virtual void start() = 0;
    virtual void stop() = 0;
    // False when the source cannot be used (a camera refused or gone).
    virtual bool isUsable() const { return true; }

signals:
    void frameArrived(const QImage& frame);
};

// Stands in for the camera when asked for (the demo's option, the tests): a picture, a folder of
// pictures shown in turn, or a video file played in a loop. There is one per process, or none.
class DevelopmentCamera : public QObject {
    Q_OBJECT
public:
    static DevelopmentCamera* current();
    // Path of a picture, a folder of pictures or a video file; an empty path shows an empty scene until
    // a picture is shown.
    static void install(const QString& path);
    static void uninstall();

    QString path() const { return m_path; }
    // What is in front of the lens now; a null picture shows an empty scene.
    void show(const QImage& picture);
    void showFile(const QString& file) { show(QImage(file)); }
    QImage picture() const { return m_picture; }
    // An unusable camera refuses to be used as an input (a camera whose permission was withdrawn).
    void setUsable(bool usable) { m_usable = usable; }
    bool isUsable() const { return m_usable; }
    // The next picture of a folder (the demo turns them every few seconds).
    void showNext();
    bool isVideo() const;

    static constexpr int framePeriodMs = 100;
    static constexpr int picturePeriodMs = 4000;

signals:
    void pictureChanged();

private:
    explicit DevelopmentCamera(const QString& path);
    QString m_path;
    QStringList m_pictures;
    int m_index = -1;
    QImage m_picture;
    bool m_usable = true;
};

// AVCaptureDevice: the default video device, or none when the machine has no camera and no
// development camera was asked for.
struct CaptureDevice {
    enum class Kind { Camera, Development };
    Kind kind = Kind::Camera;
    QByteArray cameraId;
    static std::optional<CaptureDevice> defaultVideoDevice();
};

// AVCaptureDeviceInput: a frame source for a device. Null with an error text when the device refuses.
std::unique_ptr<FrameSource> makeDeviceInput(const CaptureDevice& device, QString* error);

class CaptureSession;

// AVCaptureMetadataOutput: decodes the session's frames off the main thread and hands the codes found
// to its delegate on the main thread. While a frame is being decoded newer frames replace each other,
// so the reader always works on the latest one and never falls behind.
class MetadataOutput : public QObject {
    Q_OBJECT
public:
    using Delegate = std::function<void(const QList<MachineReadableCodeObject>&)>;
    explicit MetadataOutput(QObject* parent = nullptr);
    ~MetadataOutput() override;

    void setMetadataObjectsDelegate(Delegate delegate) { m_delegate = std::move(delegate); }
    void setMetadataObjectTypes(const QStringList& types);
    QStringList metadataObjectTypes() const { return m_types; }

    // Frames decoded so far (diagnostics and tests).
    int framesDecoded() const { return m_decoded; }

signals:
    void decodeRequested(const QImage& frame, quint64 generation);

private:
    friend class CaptureSession;
    void attach(CaptureSession* session);
    void frameArrived(const QImage& frame, quint64 generation);
    void decoded(const QList<MachineReadableCodeObject>& codes, quint64 generation);
    void decodeNext();

    Delegate m_delegate;
    QStringList m_types;
    QPointer<CaptureSession> m_session;
    QThread* m_thread = nullptr;
    QObject* m_worker = nullptr;
    bool m_busy = false;
    QImage m_pending;
    quint64 m_pendingGeneration = 0;
    int m_decoded = 0;
};

// AVCaptureSession. Starting and stopping happen on the main thread; every stop begins a new
// generation, and a code decoded from a frame of an earlier generation is dropped, so that once the
// delegate has stopped the session no further reading reaches it.
class CaptureSession : public QObject {
    Q_OBJECT
public:
    explicit CaptureSession(QObject* parent = nullptr);
    ~CaptureSession() override;

    bool canAddInput(FrameSource* input) const;
    void addInput(std::unique_ptr<FrameSource> input);
    bool canAddOutput(MetadataOutput* output) const;
    void addOutput(MetadataOutput* output);

    bool isRunning() const { return m_running; }
    void startRunning();
    void stopRunning();
    quint64 generation() const { return m_generation; }

    FrameSource* input() const { return m_input.get(); }
    MetadataOutput* output() const { return m_output; }
    QImage lastFrame() const { return m_lastFrame; }

signals:
    void runningChanged();
    void frameShown();

private:
    void frameArrived(const QImage& frame);
    std::unique_ptr<FrameSource> m_input;
    MetadataOutput* m_output = nullptr;
    bool m_running = false;
    quint64 m_generation = 1;
    QImage m_lastFrame;
};

// AVCaptureVideoPreviewLayer: shows the session's frames filling its frame (aspect fill) and maps a
// code's corners from the frame's pixels to its own points.
class VideoPreviewLayer : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(AVCaptureVideoPreviewLayer)
    QML_UNCREATABLE("Made by its screen.")
public:
    explicit VideoPreviewLayer(CaptureSession* session, QObject* parent = nullptr);

    CaptureSession* session() const { return m_session; }
    QImage frame() const { return m_session ? m_session->lastFrame() : QImage(); }
    // Written by the view that shows the layer.
    QSizeF size() const { return m_size; }
    void setSize(const QSizeF& size) { m_size = size; }
    QString videoGravity = QStringLiteral("AVLayerVideoGravityResizeAspectFill");

    // transformedMetadataObjectForMetadataObject: the code's bounds in the layer's points; none while
    // the layer has no size.
    std::optional<QRectF> transformedBounds(const MachineReadableCodeObject& code) const;

signals:
    void frameChanged();

private:
    QPointer<CaptureSession> m_session;
    QSizeF m_size;
};

// The item that draws a preview layer.
class CapturePreview : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(ekinora::platform::VideoPreviewLayer* previewLayer READ previewLayer WRITE setPreviewLayer NOTIFY layerChanged)
public:
    explicit CapturePreview(QQuickItem* parent = nullptr);
    VideoPreviewLayer* previewLayer() const { return m_layer; }
    void setPreviewLayer(VideoPreviewLayer* layer);
    void paint(QPainter* painter) override;

signals:
    void layerChanged();

protected:
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;

private:
    QPointer<VideoPreviewLayer> m_layer;
    QMetaObject::Connection m_frames;
};

// A view that code places at a frame and fades: the flashing frame around a code just read.
class FrameView : public ekinora::platform::View {
    Q_OBJECT
    QML_NAMED_ELEMENT(UIFrameView)
    QML_UNCREATABLE("Made by its screen.")
    Q_PROPERTY(QRectF frame READ frame WRITE setFrame NOTIFY changed)
    // How long the running change of alpha takes, for the view's animation; 0: at once.
    Q_PROPERTY(int alphaAnimationMs READ alphaAnimationMs NOTIFY changed)
public:
    using View::View;
    QRectF frame() const { return m_frame; }
    void setFrame(const QRectF& f) { set(m_frame, f); }
    int alphaAnimationMs() const { return m_animationMs; }

    // animateWithDuration:delay:options:animations: on alpha.
    void animateAlpha(double to, int durationMs, int delayMs);
    // removeAllAnimations: a waiting or running change of alpha is dropped; alpha stays as it is.
    void removeAllAnimations();

private:
    QRectF m_frame;
    int m_animationMs = 0;
    quint64 m_pending = 0;
};

} // namespace ekinora::platform
