// The tag container: found by each strategy in turn, evaluated by its script, its hits kept in the
// tag hit store and sent by the scheduler's cycles; the bridge's hits through the tracker.

#include "AnalyticsSupport.h"
#include "RAIBatchingDispatcher.h"
#include "RAITrackerImpl.h"
#include "RTCContainerLoader.h"
#include "RTCDiglagi.h"
#include "RTCDispatchScheduler.h"
#include "RTCHitStore.h"
#include "RTCJSExportedInstructions.h"
#include "RTCNetReachability.h"
#include "RTCRuntime.h"

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>

using namespace ekinora::analytics;
using namespace analyticstest;

namespace {

const QString ContainerId = "EKN-0001";

struct Loaded {
    QByteArray data;
    QString error;
    QStringList attempted;
};

Loaded load(const QString& id, const QString& base, const QString& library, std::shared_ptr<Clock> clock) {
    Loaded loaded;
    bool done = false;
    RTCContainerLoader loader(
        id,
        [&](const QByteArray& data, const QString& error) {
            loaded.data = data;
            loaded.error = error;
            done = true;
        },
        {base, library, clock});
    loader.start();
    for (int waited = 0; !done && waited < 10000; waited += 5) QTest::qWait(5);
    loaded.attempted = loader.attempted();
    return loaded;
}

QList<RTCHit> storedHits(RTCHitStore& store, bool notRecentlyTried = false) {
    QList<RTCHit> hits;
    bool done = false;
    auto callback = [&](const QList<RTCHit>& found) {
        hits = found;
        done = true;
    };
    if (notRecentlyTried) store.fetchNotRecentlyAttemptedHitsWithLimit(100, callback);
    else store.fetchHitsWithLimit(100, callback);
    store.sync();
    return hits;
}

} // namespace

class ContainerTest : public QObject {
    Q_OBJECT
private:
    std::unique_ptr<Service> service;
    std::unique_ptr<QTemporaryDir> dir;
    std::shared_ptr<ManualClock> clock;
    QString tagBase() const { return service->root() + "/tags"; }

private slots:
    void init() {
        service = std::make_unique<Service>();
        dir = std::make_unique<QTemporaryDir>();
        clock = std::make_shared<ManualClock>(double(QDateTime::currentSecsSinceEpoch()));
        RTCNetReachability::setSource({});
    }
    void cleanup() {
        RTCNetReachability::setSource({});
        service.reset();
        dir.reset();
    }

    void containerIsFoundByEachStrategyInTurn() {
        LogRecorder log;
        // Nothing saved: the network, and the download is saved.
        Loaded loaded = load(ContainerId, tagBase(), dir->path(), clock);
        QCOMPARE(loaded.attempted, QStringList({"network"}));
        QVERIFY(loaded.data.contains(service->root().toUtf8() + "/collect")); // the service's own address
        const QString saved = dir->filePath("Application Support/Reipri/TagContainer/v5resourceEKN-0001");
        QVERIFY(QFile::exists(saved));

        // Saved less than 12 hours ago: the file alone.
        clock->advance(43000);
        loaded = load(ContainerId, tagBase(), dir->path(), clock);
        QCOMPARE(loaded.attempted, QStringList({"Attempting to load saved version of container EKN-0001"}));
        QVERIFY(!loaded.data.isEmpty());

        // Older: the network first, then the file if need be.
        clock->advance(300);
        loaded = load(ContainerId, tagBase(), dir->path(), clock);
        QCOMPARE(loaded.attempted, QStringList({"Attempting to load container EKN-0001 from network"}));
        RTCNetReachability::setSource([] { return int(RTCNetReachability::NotReachable); });
        clock->advance(86400);
        loaded = load(ContainerId, tagBase(), dir->path(), clock);
        QCOMPARE(loaded.attempted, QStringList({"Attempting to load container EKN-0001 from network",
                                                "Attempting to load saved version of container EKN-0001"}));
        QVERIFY(log.has("Network not reachable while loading container EKN-0001"));
        QVERIFY(!loaded.data.isEmpty());

        // No network and nothing saved: the bundled default.
        QTemporaryDir empty;
        loaded = load(ContainerId, tagBase(), empty.path(), clock);
        QCOMPARE(loaded.attempted, QStringList({"network", "Attempting to load default version of container EKN-0001"}));
        QVERIFY(loaded.data.contains("http://127.0.0.1:8470/collect"));

        // An unknown container: the service has none (404), nor has the bundle.
        RTCNetReachability::setSource({});
        loaded = load("EKN-9999", tagBase(), empty.path(), clock);
        QVERIFY(loaded.data.isEmpty());
        QCOMPARE(loaded.error, QString("No container resources found"));
        QVERIFY(log.has("Can not retrieve container from network. Response: 404"));
        QVERIFY(log.lines().filter("Loading container resource failed: ").size() == 1);
    }

    void previewLinkLoadsItsContainerWithoutSavingIt() {
        RTCContainerLoader::processURL(QUrl("https://example.com/preview?id=EKN-0001&rtc_auth=a&rtc_preview=b"));
        QVERIFY(RTCContainerLoader::previewQuery(ContainerId).isEmpty()); // not a preview link
        RTCContainerLoader::processURL(QUrl("tagcontainer.c.ekinora://preview/p?id=EKN-0001&rtc_auth=ab12&rtc_preview=env-3"));
        QCOMPARE(RTCContainerLoader::previewQuery(ContainerId), QString("id=EKN-0001&rtc_auth=ab12&rtc_preview=env-3"));

        const Loaded loaded = load(ContainerId, tagBase(), dir->path(), clock);
        QCOMPARE(loaded.attempted, QStringList({"Attempting to load preview container for EKN-0001"}));
        QVERIFY(!loaded.data.isEmpty());
        QVERIFY(!QFile::exists(dir->filePath("Application Support/Reipri/TagContainer/v5resourceEKN-0001")));

        RTCContainerLoader::processURL(QUrl("tagcontainer.c.ekinora://preview/p?id=EKN-0001&rtc_preview="));
        QVERIFY(RTCContainerLoader::previewQuery(ContainerId).isEmpty());
    }

    void scriptEventProducesItsHitsAndTheSchedulerSendsThem() {
        LogRecorder log;
        const QByteArray resource = load(ContainerId, tagBase(), dir->path(), Clock::system()).data;
        QVERIFY(!resource.isEmpty());
        RAIBatchingDispatcher dispatcher(dir->filePath("hits.sqlite"), RAIEndpoints::forRoot(QUrl(service->root())));
        dispatcher.setDispatchInterval(0);
        RTCHitStore store(dir->filePath("tags"));
        SerialQueue queue("RTCDispatchScheduler");
        RTCDispatchScheduler scheduler(queue, store);
        RTCDiglagi diglagi([&](const QString& trackingId) {
            return std::make_shared<RAITrackerImpl>(trackingId, "client-1", &dispatcher);
        });
        RTCRuntime runtime(ContainerId, resource, &store, &scheduler, &diglagi);
        QVERIFY(runtime.isReady());

        QVERIFY(!runtime.evaluateEvent("package_scanned", {{"code", "KX1234"}, {"user", "hasan"}}));
        QVERIFY(log.has("Processing logged event: package_scanned with parameters: {code = KX1234; user = hasan}"));
        QTRY_COMPARE(scheduler.state(), int(RTCDispatchScheduler::WaitingForDelayedDispatch));
        std::vector<Json> hits;
        QTRY_VERIFY((hits = service->hits()).size() == 1);
        const Json& scan = hits[0]["parameters"];
        QCOMPARE(scan["uh"].get<std::string>(), std::string("aGFzYW4"));   // base64url, no padding
        QCOMPARE(scan["ub"].get<std::string>(), std::string("686173616e")); // base16
        QCOMPARE(scan["sealed"].get<std::string>().size(), size_t(32));    // one AES block, in base16
        QCOMPARE(scan["tuid"].get<std::string>(), std::string("scan-KX1234"));
        QVERIFY(storedHits(store).isEmpty());

        // The event's tag went through the tracker too.
        bool done = false;
        dispatcher.dispatchWithCompletionHandler([&](RAIDispatchResult, const QString&) { done = true; });
        QTRY_VERIFY(done);
        hits = service->hits(hits.back()["id"].get<std::int64_t>());
        QCOMPARE(hits.size(), size_t(1));
        QCOMPARE(hits[0]["parameters"]["ea"].get<std::string>(), std::string("okutma"));

        // The same code again: its unique id went out already.
        runtime.evaluateEvent("package_scanned", {{"code", "KX1234"}, {"user", "hasan"}});
        QVERIFY(storedHits(store).isEmpty());

        // A rule that does not hold queues nothing; a debug event is prevented; passthrough follows.
        QStringList measured;
        runtime.allowPassthrough = true;
        runtime.sendMeasurementWithEventName = [&](const QString& name, const QVariantMap&) { measured << name; };
        QVERIFY(!runtime.evaluateEvent("package_scanned", {{"code", "kısa"}}));
        QVERIFY(runtime.evaluateEvent("screen_view", {{"screen", "Giriş"}, {"hitId", "v1"}, {"debug", "1"}}));
        QCOMPARE(measured, QStringList({"package_scanned"}));
        QCOMPARE(storedHits(store).size(), 1); // the prevented view still queued its hit

        RTCRuntime broken(ContainerId, "[1, 2]", &store, &scheduler);
        QVERIFY(!broken.isReady());
        QVERIFY(log.has("Expected resource to be a JSON dictionary. Check the format of the default container. "
                        "Container ignored."));
    }

    void schedulerCyclesAndRetriesAFailedHitAfterTheDelay() {
        LogRecorder log;
        RTCHitStore store(dir->filePath("tags"), clock);
        SerialQueue queue("RTCDispatchScheduler");
        int backgroundTasks = 0, ended = 0;
        RTCDispatchScheduler scheduler(queue, store, clock,
                                       {[&](std::function<void()>) { return qint64(++backgroundTasks); },
                                        [&](qint64) { ++ended; }});

        // An empty store: a look, then the wait for the delayed dispatch.
        scheduler.start();
        QTRY_COMPARE(scheduler.state(), int(RTCDispatchScheduler::WaitingForDelayedDispatch));
        QTRY_COMPARE(ended, 1);

        store.addHitWithURLString(service->root() + "/collect?v=1&t=event&ec=a&tuid=ok-1", "ok-1");
        store.addHitWithURLString(service->root() + "/nowhere?tuid=bad-1", QString());
        store.sync();
        // Nothing goes before the 120 seconds are up.
        clock->advance(119);
        QTest::qWait(50);
        QVERIFY(service->hits().empty());
        clock->advance(1);
        QTRY_COMPARE(service->hits().size(), size_t(1));
        QTRY_COMPARE(scheduler.state(), int(RTCDispatchScheduler::WaitingForDelayedDispatch));

        // The failed hit stays, marked, and rests for 120 seconds.
        QList<RTCHit> left = storedHits(store);
        QTRY_VERIFY((left = storedHits(store)).size() == 1 && left[0].retryCount == 1);
        const double firstTry = *left[0].firstDispatchTime;
        QVERIFY(storedHits(store, true).isEmpty());
        clock->advance(120);
        QTRY_VERIFY((left = storedHits(store)).size() == 1 && left[0].retryCount == 2);
        QCOMPARE(*left[0].firstDispatchTime, firstTry);
        QCOMPARE(*left[0].lastDispatchTime, clock->now());

        // In the background the delay ends without a look; the foreground starts one at once.
        QTRY_COMPARE(scheduler.state(), int(RTCDispatchScheduler::WaitingForDelayedDispatch));
        scheduler.applicationWillResignActive();
        QTRY_VERIFY(scheduler.appInBackground());
        clock->advance(240);
        QTest::qWait(50);
        QCOMPARE(storedHits(store)[0].retryCount, 2);
        QVERIFY(log.has("RTCDispatchScheduler ignored beginCycle. App is not in foreground."));
        scheduler.applicationWillEnterForeground();
        QTRY_COMPARE(storedHits(store)[0].retryCount, 3);
        QVERIFY(backgroundTasks >= 4);
        QTRY_COMPARE(ended, backgroundTasks);
    }

    void pendingEventsKeepOnlyTheRecentOnes() {
        RTCHitStore store(dir->path(), clock);
        store.addPendingEvent({0, "purchase", "app", {{"transactionId", "T9"}}, clock->now(), true});
        store.addPendingEvent({0, "stale", QString(), {}, clock->now() - 2 * 86400, false});
        QList<RTCPendingEvent> events;
        store.fetchPendingEventsToCallback([&](const QList<RTCPendingEvent>& found) { events = found; });
        store.sync();
        QCOMPARE(events.size(), 1);
        QCOMPARE(events[0].parameters.value("transactionId").toString(), QString("T9"));
        QVERIFY(events[0].allowPassthrough);
        store.clearPendingEvents();
        store.fetchPendingEventsToCallback([&](const QList<RTCPendingEvent>& found) { events = found; });
        store.sync();
        QVERIFY(events.isEmpty());
    }

    void bridgeBuildsTransactionItemAndCommerceHits() {
        LogRecorder log;
        RAIBatchingDispatcher dispatcher(dir->filePath("hits.sqlite"), RAIEndpoints::forRoot(QUrl(service->root())), clock);
        dispatcher.setDispatchInterval(0);
        int opened = 0;
        RTCDiglagi diglagi([&](const QString& trackingId) {
            ++opened;
            return std::make_shared<RAITrackerImpl>(trackingId, "client-1", &dispatcher, clock);
        });
        const QVariantMap sale{
            {"transactionId", "S-42"},
            {"transactionTotal", 1250.5},
            {"transactionProducts",
             QVariantList{QVariantMap{{"name", "Mısır tohumu"}, {"sku", "MT-1"}, {"price", 500}, {"quantity", 2}},
                          QVariantMap{{"name", "Kanola"}, {"sku", "KN-7"}}}}};
        diglagi.sendTag({{"type", "transaction"}, {"trackingId", "EKN-0001"}, {"fields", QVariantMap{}}}, sale);

        // A nameless item: nothing at all goes.
        QVariantMap nameless = sale;
        nameless["transactionProducts"] = QVariantList{QVariantMap{{"sku", "X"}}};
        diglagi.sendTag({{"type", "transaction"}, {"fields", QVariantMap{}}}, nameless);
        QVERIFY(log.has("Diglagi requires transaction items to have names."));
        diglagi.sendTag({{"type", "transaction"}, {"fields", QVariantMap{}}}, {{"transactionProducts", 3}});
        QVERIFY(log.has("Diglagi cannot find transactionId in current event data."));
        diglagi.sendTag({{"type", "transaction"}, {"fields", QVariantMap{}}}, {{"transactionId", "S"}, {"transactionProducts", 3}});
        QVERIFY(log.has("Diglagi error parsing transactionProducts in currentEventData."));

        const QVariantMap ecommerce{
            {"currencyCode", "TRY"},
            {"impressions", QVariantList{QVariantMap{{"id", "P1"}, {"name", "Herbisit"}, {"list", "Arama"}, {"position", 1}},
                                         QVariantMap{{"id", "P2"}, {"list", "Arama"}, {"dimension3", "Konya"}}}},
            {"promoClick", QVariantMap{{"promotions", QVariantList{QVariantMap{{"id", "K1"}, {"name", "Bahar"}}}}}},
            {"detail", QVariantMap{{"actionField", QVariantMap{{"list", "Katalog"}}},
                                   {"products", QVariantList{QVariantMap{{"id", "P1"}, {"metric2", 4}}}}}}};
        diglagi.sendTag({{"type", "ecommerce"}, {"useEcommerceDataLayer", true},
                         {"fields", QVariantMap{{"&ec", "katalog"}, {"&aip", "FALSE"}}}},
                        {{"ecommerce", ecommerce}});
        diglagi.sendTag({{"type", "event"}}, {});
        QVERIFY(log.has("Diglagi tag requires a dictionary of fields."));
        diglagi.sendTag({{"type", "banner"}, {"fields", QVariantMap{}}}, {});
        QVERIFY(log.has("Diglagi tag type malformed. Tag should be an event, view, or ecommerce type."));
        QCOMPARE(opened, 6);

        bool done = false;
        dispatcher.dispatchWithCompletionHandler([&](RAIDispatchResult, const QString&) { done = true; });
        QTRY_VERIFY(done);
        const auto hits = service->hits();
        QCOMPARE(hits.size(), size_t(4));
        auto p = [&](int i, const char* key) { return QString::fromStdString(hits[i]["parameters"].value(key, "-")); };
        QCOMPARE(p(0, "t"), QString("transaction"));
        QCOMPARE(p(0, "tr"), QString("1250.5"));
        QCOMPARE(p(1, "t") + p(1, "ti") + p(1, "in") + p(1, "iq"), QString("itemS-42Mısır tohumu2"));
        QCOMPARE(p(2, "in") + p(2, "ic"), QString("KanolaKN-7"));
        QCOMPARE(p(3, "cu") + p(3, "pa") + p(3, "pal") + p(3, "pr1id") + p(3, "pr1cm2"), QString("TRYdetailKatalogP14"));
        QCOMPARE(p(3, "il1nm") + p(3, "il1pi1nm") + p(3, "il1pi2id") + p(3, "il1pi2cd3"), QString("AramaHerbisitP2Konya"));
        QCOMPARE(p(3, "promo1id") + p(3, "promo1nm") + p(3, "promoa"), QString("K1Baharclick"));
        QCOMPARE(p(3, "aip"), QString("-")); // "FALSE" turns anonymising off: the field is left out
    }

    void encodingAndEncryptionInstructions() {
        LogRecorder log;
        RTCJSExportedInstructions instructions(ContainerId, nullptr, nullptr);
        QCOMPARE(instructions.encodeString("çiftçi?", "text", "base64url", false), QString("w6dpZnTDp2k_"));
        QCOMPARE(instructions.encodeString("w6dpZnTDp2k_", "base64url", "base16", true), QString("c3a7696674c3a7693f"));
        QCOMPARE(instructions.encodeString("ab", "text", "base64", true), QString("YWI="));
        QCOMPARE(instructions.encodeString("ab", "text", "text", true), QString());
        QVERIFY(log.has("Unsupported encode string output format: text"));
        QCOMPARE(instructions.encodeString("ab", "rot13", "base16", true), QString());
        QVERIFY(log.has("Unsupported encode string input format: rot13"));

        const QString key16 = "000102030405060708090a0b0c0d0e0f", iv16 = "0f0e0d0c0b0a09080706050403020100";
        const QString key24 = key16 + "1011121314151617", iv8 = "0001020304050607";
        QCOMPARE(instructions.encryptString("AES/CBC", key16, iv16, "hasan", "text", "base16").size(), 32);
        QCOMPARE(instructions.encryptString("AES/CTR", key16, iv16, "hasan", "text", "base16").size(), 10);
        QCOMPARE(instructions.encryptString("DESede/CBC", key24, iv8, "hasan", "text", "base16").size(), 16);
        QCOMPARE(instructions.encryptString("Blowfish/ECB", key16, "", "hasan", "text", "base16").size(), 16);
        QCOMPARE(instructions.encryptString("RC4/RC4", key16, "", "hasan", "text", "base16").size(), 10);
        // The same input and key give the same cipher text; another key another.
        QCOMPARE(instructions.encryptString("AES", key16, iv16, "x", "text", "base64"),
                 instructions.encryptString("AES/CBC", key16, iv16, "x", "text", "base64"));
        QVERIFY(instructions.encryptString("AES/CBC", key16, iv16, "x", "text", "base64") !=
                instructions.encryptString("AES/CBC", iv16, key16, "x", "text", "base64"));
        QCOMPARE(instructions.encryptString("ROT13/CBC", key16, iv16, "x", "text", "base16"), QString());
        QVERIFY(log.has("Unsupported encryption algorithm: ROT13"));
        QCOMPARE(instructions.encryptString("AES/GCM", key16, iv16, "x", "text", "base16"), QString());
        QVERIFY(log.has("Unsupported cipher mode: GCM"));
    }
};

QTEST_GUILESS_MAIN(ContainerTest)
#include "analytics_container.moc"
