// Reading codes from camera frames: the time to decode one 640 x 480 frame holding a code of each type
// and one holding none (median and worst over a few hundred frames), and how many frames a second the
// scanner keeps up with when frames arrive faster than it reads them. Budget: 10 ms a frame, aim 3 ms.

#include "platform/Capture.h"
#include "platform/ScannerViewController.h"

#include <ZXing/BitMatrix.h>
#include <ZXing/MultiFormatWriter.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPainter>
#include <algorithm>
#include <cstdio>

using namespace ekinora::platform;

namespace {

QImage frameWith(ZXing::BarcodeFormat format, const std::string& text, int turn) {
    QImage frame(640, 480, QImage::Format_Grayscale8);
    frame.fill(225);
    if (format == ZXing::BarcodeFormat::None) return frame;
    const bool linear = format == ZXing::BarcodeFormat::EAN13;
    const auto m = ZXing::MultiFormatWriter(format).setMargin(10).encode(text, linear ? 300 : 180, linear ? 120 : 180);
    QImage code(m.width(), m.height(), QImage::Format_Grayscale8);
    for (int y = 0; y < m.height(); ++y)
        for (int x = 0; x < m.width(); ++x) code.setPixel(x, y, m.get(x, y) ? qRgb(20, 20, 20) : qRgb(250, 250, 250));
    QPainter p(&frame);
    p.translate(300, 260);
    p.rotate(turn);
    p.drawImage(QPointF(-code.width() / 2.0, -code.height() / 2.0), code);
    return frame;
}

void timeOne(const char* label, const QImage& frame, int runs) {
    const CodeReader reader(ScannerViewController::recognisedTypes());
    std::vector<double> ms;
    int found = 0;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer t;
        t.start();
        found += int(reader.read(frame).size());
        ms.push_back(t.nsecsElapsed() / 1e6);
    }
    std::sort(ms.begin(), ms.end());
    std::printf("%-34s median %6.2f ms   worst %6.2f ms   read %d/%d   (budget 10 ms, aim 3 ms)\n", label, ms[ms.size() / 2],
                ms.back(), found, runs);
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const int runs = 300;
    std::printf("Decoding one 640 x 480 frame, %d runs each\n", runs);
    timeOne("QR code, upright", frameWith(ZXing::BarcodeFormat::QRCode, "EKN-0000123456", 0), runs);
    timeOne("QR code, turned 30 degrees", frameWith(ZXing::BarcodeFormat::QRCode, "EKN-0000123456", 30), runs);
    timeOne("EAN-13, upright", frameWith(ZXing::BarcodeFormat::EAN13, "8690000012343", 0), runs);
    timeOne("EAN-13, turned 90 degrees", frameWith(ZXing::BarcodeFormat::EAN13, "8690000012343", 90), runs);
    timeOne("Data Matrix", frameWith(ZXing::BarcodeFormat::DataMatrix, "EKN-DM-42", 0), runs);
    timeOne("no code", frameWith(ZXing::BarcodeFormat::None, "", 0), runs);

    // Frames offered as fast as they come (the output keeps only the newest while it reads): how many
    // the reader gets through in two seconds, with a code in none of them so that nothing stops it.
    CaptureSession session;
    auto* output = new MetadataOutput;
    session.addOutput(output);
    output->setMetadataObjectTypes(ScannerViewController::recognisedTypes());
    const QImage blank = frameWith(ZXing::BarcodeFormat::None, "", 0);
    QElapsedTimer clock;
    clock.start();
    int offered = 0;
    // The session is fed directly: no camera on this machine.
    struct Feeder : FrameSource {
        void start() override {}
        void stop() override {}
        void push(const QImage& f) { emit frameArrived(f); }
    };
    auto feeder = std::make_unique<Feeder>();
    auto* feed = feeder.get();
    session.addInput(std::move(feeder));
    session.startRunning();
    while (clock.elapsed() < 2000) {
        feed->push(blank);
        ++offered;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    }
    const double seconds = clock.elapsed() / 1000.0;
    std::printf("Scanner keeping up: %.0f frames read a second off the main thread (%d offered; a camera gives 30)\n",
                output->framesDecoded() / seconds, offered);
    return 0;
}
