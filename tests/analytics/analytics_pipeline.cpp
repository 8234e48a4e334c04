// The hit pipeline: the tracker's limiter and sampling on a manual clock, the store's limits, and the
// dispatcher's requests against the reference collector, with batches refused and taken back.

#include "AnalyticsSupport.h"
#include "RAIBatchingDispatcher.h"
#include "RAITrackerImpl.h"

#include <QSignalSpy>
#include <QTemporaryDir>

using namespace ekinora::analytics;
using namespace analyticstest;

namespace {

struct Outcome {
    RAIDispatchResult result = RAIDispatchResult::Error;
    QString error;
};

Outcome dispatchAndWait(RAIBatchingDispatcher& dispatcher) {
    Outcome outcome;
    bool done = false;
    dispatcher.dispatchWithCompletionHandler([&](RAIDispatchResult result, const QString& error) {
        outcome = {result, error};
        done = true;
    });
    for (int waited = 0; !done && waited < 10000; waited += 5) QTest::qWait(5);
    if (!done) outcome.error = "no answer";
    return outcome;
}

Parameters numbered(int sequence, const QString& extra = {}) {
    Parameters hit{{"&t", "event"},       {"&tid", "EKN-0001"}, {"&cid", "client-1"},
                   {"&ec", "test"},       {"&ea", "tap"},       {"&cd1", QString::number(sequence)}};
    if (!extra.isEmpty()) hit.insert("&el", extra);
    return hit;
}

QString text(const Json& value) {
    return value.is_string() ? QString::fromStdString(value.get<std::string>()) : QString::fromStdString(value.dump());
}

QList<int> sequences(const std::vector<Json>& hits) {
    QList<int> out;
    for (const auto& hit : hits) out << std::stoi(hit["parameters"].value("cd1", "0"));
    return out;
}

} // namespace

class PipelineTest : public QObject {
    Q_OBJECT
private:
    std::unique_ptr<Service> service;
    std::unique_ptr<QTemporaryDir> dir;
    std::shared_ptr<ManualClock> clock;

    std::unique_ptr<RAIBatchingDispatcher> makeDispatcher() {
        auto dispatcher = std::make_unique<RAIBatchingDispatcher>(
            dir->filePath("hits.sqlite"), RAIEndpoints::forRoot(QUrl(service->root())), clock);
        dispatcher->setDispatchInterval(0);
        return dispatcher;
    }

private slots:
    void init() {
        service = std::make_unique<Service>();
        dir = std::make_unique<QTemporaryDir>();
        clock = std::make_shared<ManualClock>();
    }
    void cleanup() {
        service.reset();
        dir.reset();
    }

    void limiterLetsABurstThroughThenOneHitEveryTwoSeconds() {
        LogRecorder log;
        auto dispatcher = makeDispatcher();
        RAITrackerImpl tracker("EKN-0001", "client-1", dispatcher.get(), clock);
        for (int i = 0; i < 60; ++i) QVERIFY(tracker.send(numbered(i)));
        QVERIFY(!tracker.send(numbered(60)));
        QCOMPARE(log.count("Excessive tracking detected and throttled."), 1);

        // Sales are never throttled and spend no credit.
        QVERIFY(tracker.send({{"&t", "transaction"}, {"&ti", "T1"}}));
        QVERIFY(tracker.send({{"&t", "item"}, {"&ti", "T1"}, {"&in", "Tohum"}}));

        clock->advance(1.0);
        QVERIFY(!tracker.send(numbered(61)));
        clock->advance(1.0);
        QVERIFY(tracker.send(numbered(62)));
        QVERIFY(!tracker.send(numbered(63)));

        // A long pause refills the burst, but no further than 60.
        clock->advance(3600);
        for (int i = 0; i < 60; ++i) QVERIFY(tracker.send(numbered(100 + i)));
        QVERIFY(!tracker.send(numbered(200)));

        QVERIFY(!tracker.send({{"&ec", "no type"}}));
        QVERIFY(log.has("Bad or missing hit type."));
        QCOMPARE(dispatcher->pendingHitCount(), 60 + 2 + 1 + 60);
    }

    void sampleKeepsTheSameClientsEveryTime() {
        auto dispatcher = makeDispatcher();
        int expected = 0;
        for (int i = 0; i < 200; ++i) {
            const QString client = QString("client-%1").arg(i);
            if (RAIBatchingDispatcher::raHash(client) % 10000 < 2500) ++expected;
            Parameters hit = numbered(i);
            hit["&cid"] = client;
            hit["&sf"] = "25";
            dispatcher->queueDispatch(hit, true);
        }
        QVERIFY(expected > 20 && expected < 90); // the hash spreads clients
        QCOMPARE(dispatcher->pendingHitCount(), expected);

        // A rate that is not wholly a number samples nothing out; 0 drops everything.
        dispatcher->queueDispatch(Parameters{{"&t", "event"}, {"&cid", "x"}, {"&sf", "25%"}}, true);
        dispatcher->queueDispatch(Parameters{{"&t", "event"}, {"&cid", "y"}, {"&sf", "0"}}, true);
        QCOMPARE(dispatcher->pendingHitCount(), expected + 1);

        dispatcher->setOptOut(true);
        dispatcher->queueDispatch(numbered(1), true);
        QCOMPARE(dispatcher->pendingHitCount(), expected + 1);
    }

    void hitsAreNumberedPerTrackingAndClientId() {
        auto dispatcher = makeDispatcher();
        for (int i = 0; i < 3; ++i) dispatcher->queueDispatch(numbered(i), true);
        Parameters other = numbered(9);
        other["&cid"] = "client-2";
        dispatcher->queueDispatch(other, true);
        dispatcher.reset();
        // The numbers go on after a restart.
        dispatcher = makeDispatcher();
        dispatcher->queueDispatch(numbered(3), true);
        QCOMPARE(dispatchAndWait(*dispatcher).result, RAIDispatchResult::Good);
        QStringList numbers;
        for (const auto& hit : service->hits())
            numbers << QString::fromStdString(hit["parameters"]["cid"].get<std::string>() + ":" +
                                              hit["parameters"]["_s"].get<std::string>());
        QCOMPARE(numbers, QStringList({"client-1:1", "client-1:2", "client-1:3", "client-2:1", "client-1:4"}));
    }

    void requestsFollowTheirSize() {
        auto dispatcher = makeDispatcher();
        QSignalSpy announced(dispatcher.get(), &RAIBatchingDispatcher::willDispatch);

        // One small hit: GET, with its time and its wait on the wire.
        dispatcher->queueDispatch(numbered(1), true);
        clock->advance(2.5);
        QCOMPARE(dispatchAndWait(*dispatcher).result, RAIDispatchResult::Good);
        auto hits = service->hits();
        QCOMPARE(hits.size(), size_t(1));
        QCOMPARE(text(hits[0]["method"]), QString("GET"));
        QCOMPARE(text(hits[0]["parameters"]["qt"]), QString("2500"));
        QCOMPARE(text(hits[0]["parameters"]["ht"]), QString::number(qint64(clock->now() * 1000) - 2500));
        QCOMPARE(announced.count(), 1);

        // One large hit: POST to the single-hit address, uncompressed.
        dispatcher->queueDispatch(numbered(2, QString(2100, 'x')), true);
        QCOMPARE(dispatchAndWait(*dispatcher).result, RAIDispatchResult::Good);
        hits = service->hits(hits.back()["id"].get<std::int64_t>());
        QCOMPARE(hits.size(), size_t(1));
        QCOMPARE(text(hits[0]["method"]), QString("POST"));
        QCOMPARE(text(hits[0]["channel"]), QString("single"));
        QCOMPARE(text(hits[0]["encoding"]), QString("identity"));
        QCOMPARE(hits[0]["parameters"]["el"].get<std::string>().size(), size_t(2100));

        // Batches in each compression, one dispatch announced once however many requests it takes.
        const std::pair<unsigned, const char*> compressions[] = {
            {RAICompressionGzip, "gzip"}, {RAICompressionDeflate, "deflate"}, {RAICompressionNone, "identity"}};
        int sequence = 10;
        for (const auto& [strategy, name] : compressions) {
            dispatcher->setCompressionStrategy(strategy);
            for (int i = 0; i < 25; ++i) dispatcher->queueDispatch(numbered(sequence++, "çiftçi & tarla=1"), true);
            const auto before = service->hits().back()["id"].get<std::int64_t>();
            announced.clear();
            QCOMPARE(dispatchAndWait(*dispatcher).result, RAIDispatchResult::Good);
            QCOMPARE(announced.count(), 1);
            hits = service->hits(before);
            QCOMPARE(hits.size(), size_t(25));
            for (const auto& hit : hits) {
                QCOMPARE(text(hit["channel"]), QString("batch"));
                QCOMPARE(text(hit["encoding"]), QString(name));
                QCOMPARE(text(hit["parameters"]["el"]), QString("çiftçi & tarla=1"));
            }
            QCOMPARE(sequences(hits).first(), sequence - 25);
            QCOMPARE(sequences(hits).last(), sequence - 1);
        }
        QCOMPARE(dispatchAndWait(*dispatcher).result, RAIDispatchResult::NoData);
    }

    void refusedBatchFallsBackToSingleHitsUntilTheRetryInterval_data() {
        QTest::addColumn<int>("status");
        QTest::newRow("302") << 302;
        QTest::newRow("404") << 404;
        QTest::newRow("502") << 502;
    }
    void refusedBatchFallsBackToSingleHitsUntilTheRetryInterval() {
        QFETCH(int, status);
        LogRecorder log;
        auto dispatcher = makeDispatcher();
        service->refuseBatches(status);
        for (int i = 1; i <= 3; ++i) dispatcher->queueDispatch(numbered(i), true);

        const Outcome refused = dispatchAndWait(*dispatcher);
        QCOMPARE(refused.result, RAIDispatchResult::Error);
        const QString expected = QString("Hit(s) not dispatched, falling back to non-batching mode: HTTP status %1").arg(status);
        QCOMPARE(refused.error, expected);
        QVERIFY(log.has(expected));
        QVERIFY(dispatcher->serverBatchingDisabled());
        QCOMPARE(dispatcher->pendingHitCount(), 3); // kept
        QVERIFY(service->hits().empty());

        // Until the hour is over, hits go one by one, and a refusing status of a single hit counts as sent.
        clock->advance(3599);
        QCOMPARE(dispatchAndWait(*dispatcher).result, RAIDispatchResult::Good);
        auto hits = service->hits();
        QCOMPARE(sequences(hits), QList<int>({1, 2, 3}));
        for (const auto& hit : hits) QCOMPARE(text(hit["channel"]), QString("single"));

        service->refuseBatches(0);
        for (int i = 4; i <= 6; ++i) dispatcher->queueDispatch(numbered(i), true);
        clock->advance(2);
        QCOMPARE(dispatchAndWait(*dispatcher).result, RAIDispatchResult::Good);
        QVERIFY(!dispatcher->serverBatchingDisabled());
        hits = service->hits(hits.back()["id"].get<std::int64_t>());
        QCOMPARE(sequences(hits), QList<int>({4, 5, 6}));
        for (const auto& hit : hits) QCOMPARE(text(hit["channel"]), QString("batch"));
    }

    void storeDropsOldOversizedAndExcessHits() {
        LogRecorder log;
        auto dispatcher = makeDispatcher();
        // Made 31 days ago: deleted unsent.
        Parameters old = numbered(1);
        old["&ht"] = QString::number(qint64((clock->now() - 31 * 86400) * 1000));
        dispatcher->queueDispatch(old, true);
        // Over the hit size: left out of its batch and deleted with it.
        dispatcher->queueDispatch(numbered(2, QString(8300, 'y')), true);
        dispatcher->queueDispatch(numbered(3), true);
        // Only local keys: nothing to send.
        dispatcher->queueDispatch(Parameters{{"&t", "event"}}, true); // "&t" alone still goes
        dispatcher->queueDispatch(Parameters{{"useSecure", "0"}}, true);
        QCOMPARE(dispatcher->pendingHitCount(), 5);
        dispatcher->setBatchingStrategy(1);
        QCOMPARE(dispatchAndWait(*dispatcher).result, RAIDispatchResult::Good);
        QCOMPARE(dispatcher->pendingHitCount(), 0);
        const auto hits = service->hits();
        QCOMPARE(hits.size(), size_t(2));
        QCOMPARE(sequences(hits), QList<int>({3, 0}));

        // A cap on the queue keeps the newest.
        dispatcher->setMaxHitCount(5);
        for (int i = 10; i < 18; ++i) {
            clock->advance(1);
            dispatcher->queueDispatch(numbered(i), true);
        }
        QCOMPARE(dispatcher->pendingHitCount(), 5);
        QVERIFY(log.has("Deleting excess hits."));
        const auto before = hits.back()["id"].get<std::int64_t>();
        QCOMPARE(dispatchAndWait(*dispatcher).result, RAIDispatchResult::Good);
        QCOMPARE(sequences(service->hits(before)), QList<int>({13, 14, 15, 16, 17}));
    }

    void batchesKeepToTheBodySizeAndOneScheme() {
        auto dispatcher = makeDispatcher();
        dispatcher->setCompressionStrategy(RAICompressionNone);
        dispatcher->setBatchingStrategy(1);
        // Each hit some 1 100 bytes on the wire: seven fit into 8 192.
        for (int i = 1; i <= 10; ++i) dispatcher->queueDispatch(numbered(i, QString(1000, 'z')), true);
        QSignalSpy sent(dispatcher.get(), &RAIBatchingDispatcher::hitsSent);
        QCOMPARE(dispatchAndWait(*dispatcher).result, RAIDispatchResult::Good);
        QCOMPARE(sent.count(), 2);
        QCOMPARE(sent.at(0).at(0).toInt(), 7);
        QCOMPARE(sent.at(1).at(0).toInt(), 3);

        // A secure hit does not ride with plain ones; its endpoint (https) cannot be reached here.
        Parameters secure = numbered(20);
        secure["useSecure"] = "1";
        dispatcher->queueDispatch(numbered(19), true);
        dispatcher->queueDispatch(secure, true);
        dispatcher->queueDispatch(numbered(21), true);
        sent.clear();
        const Outcome outcome = dispatchAndWait(*dispatcher);
        QCOMPARE(sent.at(0).at(0).toInt(), 2); // 19 and 21
        QCOMPARE(outcome.result, RAIDispatchResult::Error);
        QVERIFY(outcome.error.startsWith("Dispatch error: "));
        QCOMPARE(dispatcher->pendingHitCount(), 1); // the secure hit waits for a network
    }

    void timeGapStrategyCutsAtTheLargestPause() {
        auto dispatcher = makeDispatcher();
        dispatcher->setCompressionStrategy(RAICompressionNone);
        // Seven hits fit; the longest pause among them is before the fifth.
        const double gaps[] = {0, 1, 1, 2, 5, 1, 1, 1, 1, 1};
        for (int i = 0; i < 10; ++i) {
            clock->advance(gaps[i]);
            dispatcher->queueDispatch(numbered(i + 1, QString(1000, 'z')), true);
        }
        QSignalSpy sent(dispatcher.get(), &RAIBatchingDispatcher::hitsSent);
        QCOMPARE(dispatchAndWait(*dispatcher).result, RAIDispatchResult::Good);
        QCOMPARE(sent.at(0).at(0).toInt(), 4);
        QCOMPARE(sent.at(1).at(0).toInt(), 6);
    }

    void automaticDispatchRunsOnTheIntervalAndPausesForAManualOne() {
        auto dispatcher = makeDispatcher();
        dispatcher->setDispatchInterval(120);
        dispatcher->queueDispatch(numbered(1), true);
        clock->advance(119);
        QTest::qWait(50);
        QVERIFY(service->hits().empty());
        clock->advance(1);
        QTRY_COMPARE(service->hits().size(), size_t(1));

        // While a manual dispatch with a handler runs, the interval reads -1; it comes back after.
        service->refuseBatches(0);
        dispatcher->queueDispatch(numbered(2), true);
        double during = 0;
        connect(dispatcher.get(), &RAIBatchingDispatcher::willDispatch, dispatcher.get(),
                [&] { during = dispatcher->dispatchInterval(); }, Qt::DirectConnection);
        QCOMPARE(dispatchAndWait(*dispatcher).result, RAIDispatchResult::Good);
        QCOMPARE(during, -1.0);
        QCOMPARE(dispatcher->dispatchInterval(), 120.0);

        // Unreachable: the handler hears there was nothing it could do.
        dispatcher->queueDispatch(numbered(3), true);
        dispatcher->setHostReachable(false);
        QCOMPARE(dispatchAndWait(*dispatcher).result, RAIDispatchResult::NoData);
        QCOMPARE(dispatcher->pendingHitCount(), 1);
    }
};

QTEST_GUILESS_MAIN(PipelineTest)
#include "analytics_pipeline.moc"
