// The scanner core: the reader on every code type (turned and damaged ones too), and a scanning screen
// on the development camera: one request per reading, re-arming, the camera-unusable path, the frame
// around the code.

#include "FakePlatform.h"
#include "platform/AlertController.h"
#include "platform/ScannerViewController.h"

#include <ZXing/BitMatrix.h>
#include <ZXing/MultiFormatWriter.h>

#include <QPainter>
#include <QTest>

using namespace ekinora;
using namespace ekinora::platform;
using namespace ekinora::testing;

namespace {

// A printed code on a light page of 640 x 480, as a camera frame would hold it.
QImage codeFrame(ZXing::BarcodeFormat format, const std::string& text, int turn = 0) {
    const bool linear = format == ZXing::BarcodeFormat::EAN13 || format == ZXing::BarcodeFormat::EAN8;
    const bool wide = linear || format == ZXing::BarcodeFormat::PDF417;
    const int w = wide ? 300 : 200, h = linear ? 120 : (wide ? 100 : 200);
    const auto matrix = ZXing::MultiFormatWriter(format).setMargin(10).encode(text, w, h);
    QImage code(matrix.width(), matrix.height(), QImage::Format_Grayscale8);
    for (int y = 0; y < matrix.height(); ++y)
        for (int x = 0; x < matrix.width(); ++x) code.setPixel(x, y, matrix.get(x, y) ? qRgb(0, 0, 0) : qRgb(255, 255, 255));
    QImage frame(640, 480, QImage::Format_Grayscale8);
    frame.fill(230);
    QPainter p(&frame);
    p.translate(320, 240);
    p.rotate(turn);
    p.drawImage(QPointF(-code.width() / 2.0, -code.height() / 2.0), code);
    return frame;
}

class Scanner : public ScannerViewController {
public:
    QStringList codes;

protected:
    void scanCode(const QString& code) override { codes << code; }
};

} // namespace

class ScannerTest : public QObject {
    Q_OBJECT
    std::unique_ptr<FakePlatform> fake;
    QList<QUrl> opened;

    Scanner* show() {
        auto* screen = new Scanner;
        fake->platform->window().setRootViewController(screen);
        fake->platform->window().makeKeyAndVisible();
        fake->run(0);
        return screen;
    }
    // Frames until the reader has had a few of them.
    void film(Scanner* screen, int frames = 3) {
        auto* output = screen->captureSession()->output();
        const int before = output->framesDecoded();
        for (int i = 0; i < frames * 4 && output->framesDecoded() < before + frames; ++i) {
            fake->clock->advance(DevelopmentCamera::framePeriodMs);
            QTest::qWait(20);
        }
    }

private slots:
    void init() {
        fake = std::make_unique<FakePlatform>();
        opened.clear();
        fake->platform->application().setUrlOpener([this](const QUrl& url) {
            opened << url;
            return true;
        });
        DevelopmentCamera::install(QString());
    }
    void cleanup() {
        fake.reset();
        DevelopmentCamera::uninstall();
    }

    void readsEveryTypeTurnedAndDamaged() {
        const CodeReader reader(ScannerViewController::recognisedTypes());
        struct Case {
            ZXing::BarcodeFormat format;
            std::string text;
            QString type;
        };
        const QList<Case> cases{{ZXing::BarcodeFormat::QRCode, "EKN-QR-000123", MetadataObjectType::QRCode},
                                {ZXing::BarcodeFormat::DataMatrix, "EKN-DM-42", MetadataObjectType::DataMatrix},
                                {ZXing::BarcodeFormat::EAN13, "8690000012343", MetadataObjectType::EAN13},
                                {ZXing::BarcodeFormat::EAN8, "96385074", MetadataObjectType::EAN8},
                                {ZXing::BarcodeFormat::PDF417, "EKN-PDF-7", MetadataObjectType::PDF417}};
        for (const auto& c : cases) {
            // The PDF417 reader reads quarter turns only; the others any slant.
            for (int turn : {0, 90, 180, 17}) {
                if (turn == 17 && c.type == MetadataObjectType::PDF417) continue;
                const auto found = reader.read(codeFrame(c.format, c.text, turn));
                QVERIFY2(found.size() == 1, qPrintable(c.type + QString::number(turn)));
                QCOMPARE(found.first().type, c.type);
                QCOMPARE(*found.first().stringValue, QString::fromStdString(c.text));
                QCOMPARE(found.first().frameSize, QSize(640, 480));
            }
        }
        // A QR code with a smudge over a corner of its data is still read (error correction).
        QImage smudged = codeFrame(ZXing::BarcodeFormat::QRCode, "EKN-QR-000123");
        QPainter(&smudged).fillRect(QRect(360, 250, 14, 14), Qt::black);
        QCOMPARE(*reader.read(smudged).value(0).stringValue, QStringLiteral("EKN-QR-000123"));
        // An empty scene, and a type that was not asked for.
        QImage blank(640, 480, QImage::Format_Grayscale8);
        blank.fill(230);
        QVERIFY(reader.read(blank).isEmpty());
        QVERIFY(CodeReader({MetadataObjectType::QRCode}).read(codeFrame(ZXing::BarcodeFormat::EAN13, "8690000012343")).isEmpty());
    }

    void oneRequestPerReadingThenRearm() {
        auto* screen = show();
        QVERIFY(screen->isRunning());
        DevelopmentCamera::current()->show(codeFrame(ZXing::BarcodeFormat::QRCode, "PKG-1"));
        film(screen);
        QTRY_COMPARE(screen->codes, QStringList{"PKG-1"});
        QCOMPARE(screen->qrString, QStringLiteral("PKG-1"));
        QVERIFY(!screen->isRunning());
        // The code stays in view: nothing more is read while the session is stopped.
        for (int i = 0; i < 5; ++i) fake->clock->advance(DevelopmentCamera::framePeriodMs);
        QTest::qWait(50);
        QCOMPARE(screen->codes.size(), 1);

        // Leaving stops the session; coming back builds a new one that runs.
        auto* first = screen->captureSession();
        screen->disappear(false);
        QVERIFY(!screen->isRunning());
        screen->appear(false);
        QVERIFY(screen->captureSession() != first && screen->isRunning());
    }

    void emptyCodeAndFrameAroundIt() {
        auto* screen = show();
        screen->previewLayer()->setSize(QSizeF(390, 600));
        // A 640 x 480 frame fills 390 x 600 by height: scale 1.25, 205 points cut on the left.
        MachineReadableCodeObject empty{MetadataObjectType::QRCode, QString(), QPolygonF({{200, 100}, {300, 100}, {300, 200}, {200, 200}}), {640, 480}};
        screen->metadataFound({empty});
        QVERIFY(screen->codes.isEmpty() && !screen->isRunning());
        auto* alert = fake->alert();
        QVERIFY(alert);
        QCOMPARE(alert->message(), QStringLiteral("Geçerli bir qr kodu giriniz"));
        QCOMPARE(screen->qrCodeBounds->frame(), QRectF(45, 125, 125, 125));
        QCOMPARE(screen->qrCodeBounds->alpha(), 1.0);
        fake->clock->advance(999);
        QCOMPARE(screen->qrCodeBounds->alpha(), 1.0);
        fake->clock->advance(1);
        QCOMPARE(screen->qrCodeBounds->alpha(), 0.0);
        alert->tapButton(0);
        QVERIFY(screen->isRunning());
        // A code without text is passed over.
        screen->metadataFound({MachineReadableCodeObject{MetadataObjectType::QRCode, std::nullopt, {}, {}}});
        QVERIFY(screen->isRunning());
    }

    void unusableAndMissingCamera() {
        DevelopmentCamera::current()->setUsable(false);
        auto* screen = show();
        auto* alert = fake->alert();
        QVERIFY(alert);
        QCOMPARE(alert->title(), QStringLiteral("Uyarı"));
        QCOMPARE(alert->message(), QStringLiteral("Kamera Erişimine İzin Vermek İçin Ayarlara Gidin"));
        QCOMPARE(alert->buttonTitles(), QStringList{"Ayarlar"});
        alert->tapButton(0);
        QCOMPARE(opened, QList<QUrl>{QUrl("app-settings:")});
        QVERIFY(!screen->captureSession());

        // No camera at all (this machine has none): nothing is said and nothing runs.
        fake.reset();
        DevelopmentCamera::uninstall();
        fake = std::make_unique<FakePlatform>();
        auto* blank = show();
        QVERIFY(!fake->alert());
        QVERIFY(!blank->isRunning());
    }
};

QTEST_MAIN(ScannerTest)
#include "tst_scanner.moc"
