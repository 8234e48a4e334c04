#include "Capture.h"

#include "Platform.h"

#define ZX_USE_UTF8
#include <ZXing/ReadBarcode.h>

#include <QCamera>
#include <QCameraDevice>
#include <QDir>
#include <QFileInfo>
#include <QMediaCaptureSession>
#include <QMediaDevices>
#include <QMediaPlayer>
#include <QPainter>
#include <QThread>
#include <QVideoFrame>
#include <QVideoSink>

namespace ekinora::platform {

namespace {

struct TypeFormat {
    const QString* type;
    ZXing::BarcodeFormat format;
};

const TypeFormat kTypes[] = {
    {&MetadataObjectType::QRCode, ZXing::BarcodeFormat::QRCode},
    {&MetadataObjectType::DataMatrix, ZXing::BarcodeFormat::DataMatrix},
    {&MetadataObjectType::EAN8, ZXing::BarcodeFormat::EAN8},
    {&MetadataObjectType::EAN13, ZXing::BarcodeFormat::EAN13},
    {&MetadataObjectType::PDF417, ZXing::BarcodeFormat::PDF417},
};

QString typeOf(ZXing::BarcodeFormat format) {
    for (const auto& t : kTypes)
        if (t.format == format) return *t.type;
    return {};
}

} // namespace

// ---------------------------------------------------------------------------------------------------
// Reading

CodeReader::CodeReader(const QStringList& types) {
    for (const auto& t : kTypes)
        if (types.contains(*t.type)) m_formats |= int(t.format);
}

QList<MachineReadableCodeObject> CodeReader::read(const QImage& frame) const {
    QList<MachineReadableCodeObject> found;
    if (frame.isNull() || m_formats == 0) return found;
    // The reader works on luminance: a grey frame is read in place, any other is converted once.
    const QImage grey = frame.format() == QImage::Format_Grayscale8 ? frame : frame.convertToFormat(QImage::Format_Grayscale8);
    ZXing::ImageView view(grey.constBits(), grey.width(), grey.height(), ZXing::ImageFormat::Lum,
                          int(grey.bytesPerLine()));
    ZXing::DecodeHints hints;
    ZXing::BarcodeFormats formats;
    for (const auto& t : kTypes)
        if (m_formats & int(t.format)) formats |= t.format;
    hints.setFormats(formats);
    // Turned codes are read (a package is rarely held square to the lens), but without the slow
    // search: it costs four times as much a frame, and the next frame, 33 ms later, is another try.
    hints.setTryHarder(false);
    hints.setTryRotate(true);
    for (const auto& result : ZXing::ReadBarcodes(view, hints)) {
        if (!result.isValid()) continue;
        MachineReadableCodeObject code;
        code.type = typeOf(result.format());
        const auto& bytes = result.bytes();
        if (!bytes.empty()) code.stringValue = QString::fromStdString(result.text());
        else code.stringValue = QString();
        const auto& p = result.position();
        for (int i = 0; i < 4; ++i) code.corners << QPointF(p[i].x, p[i].y);
        code.frameSize = grey.size();
        found << code;
    }
    return found;
}

// ---------------------------------------------------------------------------------------------------
// Sources

namespace {

DevelopmentCamera* s_development = nullptr;

bool isVideoFile(const QString& path) {
    static const QStringList videos{"mp4", "webm", "mkv", "avi", "mov", "ogv"};
    return videos.contains(QFileInfo(path).suffix().toLower());
}

// Frames of the development camera's present picture, at a steady pace on the platform's clock, so
// that tests drive it with their manual clock.
class PictureSource final : public FrameSource {
public:
    explicit PictureSource(QObject* parent) : FrameSource(parent) {}
    ~PictureSource() override { stop(); }
    void start() override {
        if (m_timer) return;
        auto& scheduler = Platform::current().scheduler();
        m_timer = scheduler.every(DevelopmentCamera::framePeriodMs, [this] { emitFrame(); });
        m_turn = scheduler.every(DevelopmentCamera::picturePeriodMs, [] {
            if (auto* camera = DevelopmentCamera::current()) camera->showNext();
        });
    }
    void stop() override {
        if (!m_timer || !Platform::exists()) return;
        Platform::current().scheduler().cancel(m_timer);
        Platform::current().scheduler().cancel(m_turn);
        m_timer = m_turn = 0;
    }
    bool isUsable() const override { return DevelopmentCamera::current() && DevelopmentCamera::current()->isUsable(); }

private:
    void emitFrame() {
        auto* camera = DevelopmentCamera::current();
        if (!camera) return;
        QImage picture = camera->picture();
        if (picture.isNull()) {
            // An empty scene: grey, nothing to read.
            picture = QImage(640, 480, QImage::Format_Grayscale8);
            picture.fill(200);
        }
        emit frameArrived(picture);
    }
    Scheduler::Id m_timer = 0;
    Scheduler::Id m_turn = 0;
};

// Frames of a video file played in a loop, through Qt Multimedia.
class VideoFileSource final : public FrameSource {
public:
    VideoFileSource(const QString& file, QObject* parent) : FrameSource(parent) {
        m_player.setVideoSink(&m_sink);
        m_player.setLoops(QMediaPlayer::Infinite);
        m_player.setSource(QUrl::fromLocalFile(file));
        connect(&m_sink, &QVideoSink::videoFrameChanged, this, [this](const QVideoFrame& f) {
            if (f.isValid()) emit frameArrived(f.toImage());
        });
    }
    void start() override { m_player.play(); }
    void stop() override { m_player.pause(); }
    bool isUsable() const override { return m_player.error() == QMediaPlayer::NoError; }

private:
    QMediaPlayer m_player;
    QVideoSink m_sink;
};

// The camera, through Qt Multimedia.
class CameraSource final : public FrameSource {
public:
    CameraSource(const QCameraDevice& device, QObject* parent) : FrameSource(parent), m_camera(device) {
        m_capture.setCamera(&m_camera);
        m_capture.setVideoSink(&m_sink);
        connect(&m_sink, &QVideoSink::videoFrameChanged, this, [this](const QVideoFrame& f) {
            if (f.isValid()) emit frameArrived(f.toImage());
        });
    }
    void start() override { m_camera.start(); }
    void stop() override { m_camera.stop(); }
    bool isUsable() const override { return m_camera.error() == QCamera::NoError && !m_camera.cameraDevice().isNull(); }

private:
    QCamera m_camera;
    QMediaCaptureSession m_capture;
    QVideoSink m_sink;
};

} // namespace

DevelopmentCamera::DevelopmentCamera(const QString& path) : m_path(path) {
    const QFileInfo info(path);
    if (info.isDir()) {
        const QDir dir(path);
        for (const auto& name : dir.entryList({"*.png", "*.jpg", "*.jpeg"}, QDir::Files, QDir::Name))
            m_pictures << dir.filePath(name);
    } else if (!path.isEmpty() && !isVideoFile(path)) {
        m_pictures << path;
    }
    showNext();
}

DevelopmentCamera* DevelopmentCamera::current() { return s_development; }

void DevelopmentCamera::install(const QString& path) {
    uninstall();
    s_development = new DevelopmentCamera(path);
}

void DevelopmentCamera::uninstall() {
    delete s_development;
    s_development = nullptr;
}

void DevelopmentCamera::show(const QImage& picture) {
    m_picture = picture;
    emit pictureChanged();
}

void DevelopmentCamera::showNext() {
    if (m_pictures.size() < 2 && m_index >= 0) return;
    if (m_pictures.isEmpty()) return;
    m_index = (m_index + 1) % int(m_pictures.size());
    show(QImage(m_pictures.at(m_index)));
}

bool DevelopmentCamera::isVideo() const { return isVideoFile(m_path); }

std::optional<CaptureDevice> CaptureDevice::defaultVideoDevice() {
    if (DevelopmentCamera::current()) return CaptureDevice{Kind::Development, {}};
    const QCameraDevice camera = QMediaDevices::defaultVideoInput();
    if (camera.isNull()) return std::nullopt;
    return CaptureDevice{Kind::Camera, camera.id()};
}

std::unique_ptr<FrameSource> makeDeviceInput(const CaptureDevice& device, QString* error) {
    std::unique_ptr<FrameSource> source;
    if (device.kind == CaptureDevice::Kind::Development) {
        auto* camera = DevelopmentCamera::current();
        if (!camera) {
            if (error) *error = QStringLiteral("The development camera is gone.");
            return nullptr;
        }
        if (camera->isVideo()) source = std::make_unique<VideoFileSource>(camera->path(), nullptr);
        else source = std::make_unique<PictureSource>(nullptr);
    } else {
        QCameraDevice found;
        for (const auto& c : QMediaDevices::videoInputs())
            if (c.id() == device.cameraId) found = c;
        if (found.isNull()) {
            if (error) *error = QStringLiteral("The camera is gone.");
            return nullptr;
        }
        source = std::make_unique<CameraSource>(found, nullptr);
    }
    return source;
}

// ---------------------------------------------------------------------------------------------------
// Output

namespace {

class DecodeWorker final : public QObject {
    Q_OBJECT
public:
    explicit DecodeWorker(const QStringList& types) : m_reader(types) {}
    void setTypes(const QStringList& types) { m_reader = CodeReader(types); }
    void decode(const QImage& frame, quint64 generation) { emit decoded(m_reader.read(frame), generation); }

signals:
    void decoded(const QList<ekinora::platform::MachineReadableCodeObject>& codes, quint64 generation);

private:
    CodeReader m_reader;
};

} // namespace

MetadataOutput::MetadataOutput(QObject* parent) : QObject(parent) {
    qRegisterMetaType<QList<MachineReadableCodeObject>>();
}

MetadataOutput::~MetadataOutput() {
    if (m_thread) {
        m_thread->quit();
        m_thread->wait();
        delete m_worker;
    }
}

void MetadataOutput::setMetadataObjectTypes(const QStringList& types) {
    m_types = types;
    if (m_worker) {
        // The worker reads its types on its own thread.
        QMetaObject::invokeMethod(m_worker, [w = static_cast<DecodeWorker*>(m_worker), types] { w->setTypes(types); },
                                  Qt::QueuedConnection);
    }
}

void MetadataOutput::attach(CaptureSession* session) {
    m_session = session;
    if (m_thread) return;
    m_thread = new QThread(this);
    m_thread->setObjectName(QStringLiteral("code reader"));
    auto* worker = new DecodeWorker(m_types);
    worker->moveToThread(m_thread);
    m_worker = worker;
    connect(this, &MetadataOutput::decodeRequested, worker, &DecodeWorker::decode, Qt::QueuedConnection);
    connect(worker, &DecodeWorker::decoded, this, &MetadataOutput::decoded, Qt::QueuedConnection);
    m_thread->start();
}

void MetadataOutput::frameArrived(const QImage& frame, quint64 generation) {
    if (!m_busy) {
        m_busy = true;
        emit decodeRequested(frame, generation);
        return;
    }
    // Only the newest frame waits: the reader never falls behind the camera.
    m_pending = frame;
    m_pendingGeneration = generation;
}

void MetadataOutput::decodeNext() {
    if (m_pending.isNull() || !m_session || !m_session->isRunning()) {
        m_pending = QImage();
        return;
    }
    m_busy = true;
    const QImage next = std::exchange(m_pending, QImage());
    emit decodeRequested(next, m_pendingGeneration);
}

void MetadataOutput::decoded(const QList<MachineReadableCodeObject>& codes, quint64 generation) {
    m_busy = false;
    ++m_decoded;
    // A frame read before the session was stopped (or stopped and started again) is stale: the delegate
    // has already had its reading and stopped the session.
    const bool current = m_session && m_session->isRunning() && m_session->generation() == generation;
    if (current && !codes.isEmpty() && m_delegate) m_delegate(codes);
    decodeNext();
}

// ---------------------------------------------------------------------------------------------------
// Session

CaptureSession::CaptureSession(QObject* parent) : QObject(parent) {}

CaptureSession::~CaptureSession() {
    if (m_input) m_input->stop();
}

bool CaptureSession::canAddInput(FrameSource* input) const { return !m_input && input && input->isUsable(); }

void CaptureSession::addInput(std::unique_ptr<FrameSource> input) {
    m_input = std::move(input);
    m_input->setParent(nullptr);
    connect(m_input.get(), &FrameSource::frameArrived, this, &CaptureSession::frameArrived);
}

bool CaptureSession::canAddOutput(MetadataOutput* output) const { return !m_output && output; }

void CaptureSession::addOutput(MetadataOutput* output) {
    m_output = output;
    output->setParent(this);
    output->attach(this);
}

void CaptureSession::startRunning() {
    if (m_running) return;
    m_running = true;
    if (m_input) m_input->start();
    emit runningChanged();
}

void CaptureSession::stopRunning() {
    if (!m_running) return;
    m_running = false;
    ++m_generation;
    if (m_input) m_input->stop();
    emit runningChanged();
}

void CaptureSession::frameArrived(const QImage& frame) {
    if (!m_running) return;
    m_lastFrame = frame;
    emit frameShown();
    if (m_output) m_output->frameArrived(frame, m_generation);
}

// ---------------------------------------------------------------------------------------------------
// Preview

VideoPreviewLayer::VideoPreviewLayer(CaptureSession* session, QObject* parent) : QObject(parent), m_session(session) {
    if (session) connect(session, &CaptureSession::frameShown, this, &VideoPreviewLayer::frameChanged);
}

std::optional<QRectF> VideoPreviewLayer::transformedBounds(const MachineReadableCodeObject& code) const {
    if (m_size.isEmpty() || code.frameSize.isEmpty() || code.corners.isEmpty()) return std::nullopt;
    // Aspect fill: the frame is scaled to cover the layer and centred; what overflows is cut.
    const double scale = std::max(m_size.width() / code.frameSize.width(), m_size.height() / code.frameSize.height());
    const QPointF offset((m_size.width() - code.frameSize.width() * scale) / 2,
                         (m_size.height() - code.frameSize.height() * scale) / 2);
    QPolygonF mapped;
    for (const auto& p : code.corners) mapped << p * scale + offset;
    return mapped.boundingRect();
}

CapturePreview::CapturePreview(QQuickItem* parent) : QQuickPaintedItem(parent) {}

void CapturePreview::setPreviewLayer(VideoPreviewLayer* layer) {
    if (m_layer == layer) return;
    disconnect(m_frames);
    m_layer = layer;
    if (layer) {
        layer->setSize(size());
        m_frames = connect(layer, &VideoPreviewLayer::frameChanged, this, [this] { update(); });
    }
    emit layerChanged();
    update();
}

void CapturePreview::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) {
    QQuickPaintedItem::geometryChange(newGeometry, oldGeometry);
    if (m_layer) m_layer->setSize(newGeometry.size());
}

void CapturePreview::paint(QPainter* painter) {
    const QImage frame = m_layer ? m_layer->frame() : QImage();
    if (frame.isNull()) {
        painter->fillRect(boundingRect(), Qt::black);
        return;
    }
    const double scale = std::max(width() / frame.width(), height() / frame.height());
    const QSizeF drawn(frame.width() * scale, frame.height() * scale);
    const QRectF target(QPointF((width() - drawn.width()) / 2, (height() - drawn.height()) / 2), drawn);
    painter->setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter->drawImage(target, frame);
}

// ---------------------------------------------------------------------------------------------------
// Frame view

void FrameView::animateAlpha(double to, int durationMs, int delayMs) {
    removeAllAnimations();
    m_pending = Platform::current().scheduler().after(delayMs, [self = QPointer<FrameView>(this), to, durationMs] {
        if (!self) return;
        self->m_pending = 0;
        self->m_animationMs = durationMs;
        self->setAlpha(to);
        emit self->changed();
    });
}

void FrameView::removeAllAnimations() {
    if (m_pending) Platform::current().scheduler().cancel(m_pending);
    m_pending = 0;
    if (m_animationMs) {
        m_animationMs = 0;
        emit changed();
    }
}

} // namespace ekinora::platform

#include "Capture.moc"
