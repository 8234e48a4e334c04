// Usage analytics in figures: hits persisted a second, hits dispatched a second to the reference
// collector (in-process), bytes on the wire a hit with and without compression, and the resident
// memory with 10 000 hits queued. Budget: 10 000 hits persisted and dispatched, none lost or doubled.

#include "RAIBatchingDispatcher.h"
#include "Log.h"
#include "core/Server.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>

using namespace ekinora::analytics;

namespace {

long residentKb() {
    QFile status("/proc/self/status");
    if (!status.open(QIODevice::ReadOnly)) return -1;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:")) return line.mid(6).trimmed().split(' ').first().toLong();
    return -1;
}

Parameters hit(int sequence) {
    return {{"&t", "event"},
            {"&v", "1"},
            {"&tid", "EKN-0001"},
            {"&cid", "5f0c2d1e-7a44-4e43-9d0b-3b1f2a9c8e71"},
            {"&ec", "katalog"},
            {"&ea", "urun_detay"},
            {"&el", QString("Herbisit %1 SC").arg(sequence % 37)},
            {"&cd", "ProductDetailViewController"},
            {"&an", "Ekinora"},
            {"&av", "1.4.0"},
            {"&ul", "tr-tr"},
            {"&sr", "390x844"},
            {"&cd1", QString::number(sequence)}};
}

struct Dispatched {
    double seconds = 0;
    qint64 hits = 0, bytes = 0, requests = 0;
};

Dispatched dispatchAll(RAIBatchingDispatcher& dispatcher) {
    Dispatched out;
    QObject::connect(&dispatcher, &RAIBatchingDispatcher::hitsSent, &dispatcher,
                     [&](int count, int status, qint64 bytes) {
                         if (status < 200 || status > 299) return;
                         out.hits += count;
                         out.bytes += bytes;
                         ++out.requests;
                     },
                     Qt::DirectConnection);
    QElapsedTimer timer;
    timer.start();
    QEventLoop loop;
    dispatcher.dispatchWithCompletionHandler(
        [&](RAIDispatchResult, const QString&) { QMetaObject::invokeMethod(&loop, "quit", Qt::QueuedConnection); });
    loop.exec();
    out.seconds = timer.nsecsElapsed() / 1e9;
    return out;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    setLogSink([](const QString&) {});
    const int count = argc > 1 ? std::atoi(argv[1]) : 10000;
    QTemporaryDir dir;

    const long before = residentKb();
    ekinora::server::Server service({});
    // The collector is started before the measurements, so its memory is in both readings.
    service.start();
    const QUrl root(QString::fromStdString(service.baseUrl()));
    const long withService = residentKb();

    RAIBatchingDispatcher gzipDispatcher(dir.filePath("gzip.sqlite"), RAIEndpoints::forRoot(root));
    gzipDispatcher.setDispatchInterval(0);
    QElapsedTimer timer;
    timer.start();
    // Handed over as an app would, a few at a time: every hundredth waits until it is saved.
    for (int i = 0; i < count; ++i) gzipDispatcher.queueDispatch(hit(i), i % 100 == 99);
    gzipDispatcher.pendingHitCount(); // waits until all are saved
    const double persistSeconds = timer.nsecsElapsed() / 1e9;
    const long queued = residentKb();

    const Dispatched gzip = dispatchAll(gzipDispatcher);

    RAIBatchingDispatcher plainDispatcher(dir.filePath("plain.sqlite"), RAIEndpoints::forRoot(root));
    plainDispatcher.setDispatchInterval(0);
    plainDispatcher.setCompressionStrategy(RAICompressionNone);
    for (int i = 0; i < count; ++i) plainDispatcher.queueDispatch(hit(i));
    plainDispatcher.pendingHitCount();
    const Dispatched plain = dispatchAll(plainDispatcher);

    std::printf("analytics, %d hits\n", count);
    std::printf("  persisted:            %8.0f hits/s (%.2f s)\n", count / persistSeconds, persistSeconds);
    std::printf("  dispatched (gzip):    %8.0f hits/s (%.2f s, %lld requests)\n", gzip.hits / gzip.seconds,
                gzip.seconds, static_cast<long long>(gzip.requests));
    std::printf("  dispatched (plain):   %8.0f hits/s (%.2f s, %lld requests)\n", plain.hits / plain.seconds,
                plain.seconds, static_cast<long long>(plain.requests));
    std::printf("  on the wire, gzip:    %8.1f bytes/hit\n", double(gzip.bytes) / std::max<qint64>(1, gzip.hits));
    std::printf("  on the wire, plain:   %8.1f bytes/hit\n", double(plain.bytes) / std::max<qint64>(1, plain.hits));
    std::printf("  resident: %ld kB at start, %ld kB with the collector, %ld kB with %d hits queued (+%ld kB)\n",
                before, withService, queued, count, queued - withService);
    std::printf("  delivered: %lld + %lld of %d + %d\n", static_cast<long long>(gzip.hits),
                static_cast<long long>(plain.hits), count, count);
    return gzip.hits == count && plain.hits == count ? 0 : 1;
}
