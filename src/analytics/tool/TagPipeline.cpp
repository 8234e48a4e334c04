#include "TagPipeline.h"

#include "RAIBatchingDispatcher.h"
#include "RAITrackerImpl.h"
#include "RTCContainerLoader.h"
#include "RTCDiglagi.h"
#include "RTCDispatchScheduler.h"
#include "RTCHitStore.h"
#include "RTCRuntime.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>
#include <QTimer>

#include <atomic>

namespace ekinora::analytics {

namespace {

QByteArray loadContainer(const QUrl& root, const QString& dataDir, const QString& containerId,
                         const std::function<void(const QString&)>& say) {
    QByteArray resource;
    QString loadError;
    QEventLoop loop;
    RTCContainerLoader loader(
        containerId,
        [&](const QByteArray& data, const QString& error) {
            resource = data;
            loadError = error;
            QMetaObject::invokeMethod(&loop, "quit", Qt::QueuedConnection);
        },
        {root.toString(QUrl::StripTrailingSlash) + QStringLiteral("/tags"), dataDir});
    loader.start();
    loop.exec();
    if (resource.isEmpty()) say(QStringLiteral("container %1 not loaded: %2").arg(containerId, loadError));
    else say(QStringLiteral("container %1 loaded, %2 bytes").arg(containerId).arg(resource.size()));
    return resource;
}

} // namespace

int runTagViews(const QUrl& root, const QString& dataDir, QString containerId, int first, int count,
                const std::function<void(const QString&)>& say) {
    if (containerId.isEmpty()) containerId = RTCContainerLoader::defaultContainerId();
    const QByteArray resource = loadContainer(root, dataDir, containerId, say);
    if (resource.isEmpty()) return 1;

    RTCHitStore hitStore(dataDir + QStringLiteral("/tags"));
    SerialQueue schedulerQueue(QStringLiteral("RTCDispatchScheduler"));
    RTCDispatchScheduler scheduler(schedulerQueue, hitStore);
    RTCRuntime runtime(containerId, resource, &hitStore, &scheduler);
    std::atomic<int> sent{0};
    scheduler.onHitsSent = [&](int ok, int) { sent += ok; };
    for (int i = first; i < first + count; ++i)
        runtime.evaluateEvent(QStringLiteral("screen_view"),
                              {{QStringLiteral("screen"), QStringLiteral("Ekran%1").arg(i)},
                               {QStringLiteral("hitId"), QStringLiteral("view-%1").arg(i)}});
    hitStore.sync();
    say(QStringLiteral("tag hits queued %1").arg(count));

    // A cycle sends at most one fetch; the next look would wait 120 seconds, so start it at once.
    for (;;) {
        while (scheduler.state() == RTCDispatchScheduler::Dispatching) QThread::msleep(5);
        bool left = false;
        QEventLoop fetched;
        hitStore.fetchHitsWithLimit(1, [&](const QList<RTCHit>& hits) {
            left = !hits.isEmpty();
            QMetaObject::invokeMethod(&fetched, "quit", Qt::QueuedConnection);
        });
        fetched.exec();
        if (!left) break;
        scheduler.start();
        QThread::msleep(5);
    }
    say(QStringLiteral("tag hits sent %1").arg(sent.load()));
    return 0;
}

int runTagEvent(const QUrl& root, const QString& dataDir, QString containerId, const QString& eventName,
                const QVariantMap& parameters, const std::function<void(const QString&)>& say) {
    if (containerId.isEmpty()) containerId = RTCContainerLoader::defaultContainerId();

    const QByteArray resource = loadContainer(root, dataDir, containerId, say);
    if (resource.isEmpty()) return 1;

    RAIBatchingDispatcher dispatcher(dataDir + QStringLiteral("/hits.sqlite"), RAIEndpoints::forRoot(root));
    dispatcher.setDispatchInterval(0);
    RTCHitStore hitStore(dataDir + QStringLiteral("/tags"));
    SerialQueue schedulerQueue(QStringLiteral("RTCDispatchScheduler"));
    RTCDispatchScheduler scheduler(schedulerQueue, hitStore);
    RTCDiglagi diglagi([&dispatcher](const QString& trackingId) {
        return std::make_shared<RAITrackerImpl>(trackingId, QStringLiteral("ekinora-analytics"), &dispatcher);
    });
    RTCRuntime runtime(containerId, resource, &hitStore, &scheduler, &diglagi);

    int sent = 0, failed = 0;
    QEventLoop cycle;
    scheduler.onHitsSent = [&](int ok, int bad) {
        sent += ok;
        failed += bad;
    };
    const bool prevented = runtime.evaluateEvent(eventName, parameters);
    say(QStringLiteral("event %1 %2").arg(eventName, prevented ? QStringLiteral("prevented") : QStringLiteral("evaluated")));

    // The scheduler ends its cycle waiting for the delayed dispatch.
    QTimer poll;
    int waited = 0;
    QObject::connect(&poll, &QTimer::timeout, &cycle, [&] {
        hitStore.sync();
        const bool idle = scheduler.state() == RTCDispatchScheduler::WaitingForDelayedDispatch ||
                          scheduler.state() == RTCDispatchScheduler::NotStarted;
        if ((idle && waited >= 2) || ++waited > 300) cycle.quit();
    });
    poll.start(20);
    cycle.exec();
    say(QStringLiteral("tag hits sent %1, failed %2").arg(sent).arg(failed));

    int tracked = 0;
    QObject::connect(&dispatcher, &RAIBatchingDispatcher::hitsSent, &dispatcher,
                     [&](int count, int status, qint64) {
                         if (status >= 200 && status < 300) tracked += count;
                     },
                     Qt::DirectConnection);
    QEventLoop dispatched;
    dispatcher.dispatchWithCompletionHandler(
        [&](RAIDispatchResult, const QString&) { QMetaObject::invokeMethod(&dispatched, "quit", Qt::QueuedConnection); });
    dispatched.exec();
    say(QStringLiteral("tracker hits dispatched %1").arg(tracked));
    return 0;
}

} // namespace ekinora::analytics
