// Drives the analytics pipeline against a collector: queues numbered hits, dispatches them, and
// evaluates tag container events. It is also the process the durability test kills.

#include "Log.h"
#include "RAIBatchingDispatcher.h"
#include "RAITrackerImpl.h"
#include "TagPipeline.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QTextStream>
#include <QTimer>

#include <cstdio>

using namespace ekinora::analytics;

namespace {

void say(const QString& line) {
    std::printf("%s\n", line.toUtf8().constData());
    std::fflush(stdout);
}

unsigned compressionNamed(const QString& name) {
    if (name == QLatin1String("none")) return RAICompressionNone;
    if (name == QLatin1String("deflate")) return RAICompressionDeflate;
    return RAICompressionGzip;
}

int queueHits(RAIBatchingDispatcher& dispatcher, qint64 count, qint64 first) {
    // The limiter lets 60 hits through at once and one every 2 seconds after; its clock moves on
    // 2 seconds a hit so that every numbered hit is kept.
    auto limiterClock = std::make_shared<ManualClock>(Clock::system()->now());
    RAITrackerImpl tracker(QStringLiteral("EKN-0001"), QStringLiteral("ekinora-analytics"), &dispatcher, limiterClock);
    qint64 queued = 0;
    for (qint64 i = 0; i < count; ++i) {
        limiterClock->advance(2.0);
        const bool ok = tracker.send({{QStringLiteral("&t"), QStringLiteral("event")},
                                      {QStringLiteral("&ec"), QStringLiteral("tool")},
                                      {QStringLiteral("&ea"), QStringLiteral("queue")},
                                      {QStringLiteral("&cd1"), QString::number(first + i)}});
        if (ok) ++queued;
        if ((i + 1) % 1000 == 0) dispatcher.pendingHitCount(); // waits for the queue to catch up
    }
    say(QStringLiteral("queued %1 hits, pending %2").arg(queued).arg(dispatcher.pendingHitCount()));
    return 0;
}

int dispatchAll(RAIBatchingDispatcher& dispatcher) {
    qint64 hits = 0, requests = 0;
    QObject::connect(&dispatcher, &RAIBatchingDispatcher::hitsSent, &dispatcher,
                     [&](int count, int status, qint64) {
                         ++requests;
                         if (status >= 200 && status < 300) hits += count;
                     },
                     Qt::DirectConnection);
    RAIDispatchResult result = RAIDispatchResult::Good;
    QString error;
    // One dispatch stops after a refused batch; the next goes on with single hits.
    for (int round = 0; round < 3 && result != RAIDispatchResult::NoData; ++round) {
        QEventLoop loop;
        dispatcher.dispatchWithCompletionHandler([&](RAIDispatchResult r, const QString& e) {
            result = r;
            error = e;
            QMetaObject::invokeMethod(&loop, "quit", Qt::QueuedConnection);
        });
        loop.exec();
        if (result == RAIDispatchResult::Error && !error.startsWith(QLatin1String("Hit(s) not dispatched"))) break;
    }
    say(QStringLiteral("dispatched %1 hits in %2 requests, pending %3%4")
            .arg(hits)
            .arg(requests)
            .arg(dispatcher.pendingHitCount())
            .arg(error.isEmpty() ? QString() : QStringLiteral(" (") + error + QLatin1Char(')')));
    return result == RAIDispatchResult::Error ? 1 : 0;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("ekinora-analytics"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Usage analytics against a collector"));
    parser.addHelpOption();
    parser.addOptions({
        {QStringLiteral("service"), QStringLiteral("The collector's root."), QStringLiteral("url"),
         QStringLiteral("http://127.0.0.1:8470")},
        {QStringLiteral("data"), QStringLiteral("Folder of the hit stores."), QStringLiteral("dir"),
         QDir::tempPath() + QStringLiteral("/ekinora-analytics")},
        {QStringLiteral("compression"), QStringLiteral("none, deflate or gzip."), QStringLiteral("name"),
         QStringLiteral("gzip")},
        {QStringLiteral("from"), QStringLiteral("First sequence number of queued hits."), QStringLiteral("n"),
         QStringLiteral("1")},
        {QStringLiteral("container"), QStringLiteral("Tag container id."), QStringLiteral("id"), QString()},
        {QStringLiteral("quiet"), QStringLiteral("No log lines.")},
    });
    parser.addPositionalArgument(QStringLiteral("command"),
                                 QStringLiteral("queue N | dispatch | status | tags N | event NAME [key=value ...]"));
    parser.process(app);
    const QStringList args = parser.positionalArguments();
    if (args.isEmpty()) parser.showHelp(2);

    const bool quiet = parser.isSet(QStringLiteral("quiet"));
    setLogSink([quiet](const QString& line) {
        if (!quiet) std::fprintf(stderr, "%s\n", line.toUtf8().constData());
    });

    const QString dataDir = parser.value(QStringLiteral("data"));
    QDir().mkpath(dataDir);
    const QUrl root(parser.value(QStringLiteral("service")));
    const QString command = args.first();

    if (command == QLatin1String("event")) {
        if (args.size() < 2) parser.showHelp(2);
        QVariantMap parameters;
        for (const QString& pair : args.mid(2)) {
            const auto eq = pair.indexOf(QLatin1Char('='));
            if (eq > 0) parameters.insert(pair.left(eq), pair.mid(eq + 1));
        }
        return runTagEvent(root, dataDir, parser.value(QStringLiteral("container")), args.at(1), parameters, say);
    }

    if (command == QLatin1String("tags") && args.size() == 2)
        return runTagViews(root, dataDir, parser.value(QStringLiteral("container")),
                           parser.value(QStringLiteral("from")).toInt(), args.at(1).toInt(), say);

    RAIBatchingDispatcher dispatcher(dataDir + QStringLiteral("/hits.sqlite"), RAIEndpoints::forRoot(root));
    dispatcher.setDispatchInterval(0); // this program dispatches when told
    dispatcher.setCompressionStrategy(compressionNamed(parser.value(QStringLiteral("compression"))));

    if (command == QLatin1String("queue") && args.size() == 2)
        return queueHits(dispatcher, args.at(1).toLongLong(), parser.value(QStringLiteral("from")).toLongLong());
    if (command == QLatin1String("dispatch")) return dispatchAll(dispatcher);
    if (command == QLatin1String("status")) {
        say(QStringLiteral("pending %1").arg(dispatcher.pendingHitCount()));
        return 0;
    }
    parser.showHelp(2);
}
