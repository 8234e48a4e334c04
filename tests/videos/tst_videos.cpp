// Videos against scripted replies and a scripted video service: the player comes at once and the
// interface turns while the lookup runs, the stream is chosen by quality, and portrait comes back at
// the end, but not when the video can't be had.

#include "FakePlatform.h"
#include "platform/NavigationController.h"
#include "platform/Storyboard.h"
#include "service/AppDelegate.h"
#include "videos/DeviceOrientation.h"
#include "videos/PlayerViewController.h"
#include "videos/VideoClient.h"
#include "videos/VideoViewController.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTest>

using namespace ekinora;
using namespace ekinora::testing;
using videos::DeviceOrientation;

namespace {
const QString Lookup = QStringLiteral("/video-service/get_video_info");
QJsonObject feed(const QJsonArray& videos) { return QJsonObject{{"status", 200}, {"data", QJsonObject{{"videos", videos}}}}; }
QJsonObject video(const QString& hash) { return QJsonObject{{"title", "Damla sulama"}, {"youtubeVideoHash", hash}}; }
} // namespace

class VideosTest : public QObject {
    Q_OBJECT
    QObject* owner = nullptr; // the application object: the platform and its delegate side by side
    FakePlatform* fake = nullptr;
    service::AppDelegate* delegate = nullptr;
    platform::NavigationController* nav = nullptr;
    videos::VideoViewController* screen = nullptr;

    bool portraitOnly() const { return fake->platform->application().supportedInterfaceOrientations() == 2; }

private slots:
    void init() {
        owner = new QObject;
        fake = new FakePlatform;
        fake->platform->setParent(owner);
        delegate = new service::AppDelegate(owner);
        fake->store->setString("token", "tok");
        platform::Storyboard::clear();
        nav = new platform::NavigationController;
        screen = new videos::VideoViewController;
        nav->setViewControllers({screen});
        fake->platform->window().setRootViewController(nav);
        fake->http->on("videos", jsonReply(feed({video("Ab1"), video("Zz9")})));
        fake->platform->window().makeKeyAndVisible();
        fake->run(0);
    }
    void cleanup() {
        delete fake;
        delete owner;
        platform::Storyboard::clear();
    }

    void theFeedPagesWithItsFlagAndThumbnails() {
        QCOMPARE(screen->tblVideo->numberOfRows(), 2);
        QVERIFY(screen->tblVideo->cellForRow(0).values.value("imgScreen").toString().endsWith("/static/videos/vi/Ab1/0.jpg"));
        QVERIFY(portraitOnly());
        screen->scrollViewDidEndDragging(1, true);
        fake->run(0);
        QCOMPARE(queryValues(fake->http->requestsFor("videos").at(1), "ptoken"), QStringList{"1"});
        QCOMPARE(screen->tblVideo->numberOfRows(), 4);
    }

    void playsInLandscapeAndComesBackInPortrait() {
        fake->http->on(Lookup, jsonReply(QJsonObject{{"streamURLs", QJsonObject{{"36", "http://h/s36.mp4"}, {"18", "http://h/s18.mp4"}}}}));
        screen->tblVideo->selectRow(1);
        // Before the answer: the player is up and the interface turns.
        auto* player = screen->playerViewController.data();
        QVERIFY(player && fake->platform->window().presentedControllers().contains(player));
        QVERIFY(!player->player());
        QVERIFY(DeviceOrientation::current().interfaceIsLandscape());
        QVERIFY(player->landscape());
        fake->run(0);
        QCOMPARE(QUrl::fromEncoded(fake->http->requestsFor(Lookup).at(0).url).query(), QStringLiteral("video_id=Zz9"));
        QCOMPARE(player->player()->url(), QUrl("http://h/s18.mp4"));
        QVERIFY(player->player()->isPlaying());

        // The end restores portrait while the player is still up, once.
        player->player()->reachedEnd();
        QVERIFY(portraitOnly());
        QVERIFY(!DeviceOrientation::current().interfaceIsLandscape());
        QVERIFY(fake->platform->window().presentedControllers().contains(player));
        QCOMPARE(fake->platform->notificationCenter().observerCount(videos::PlayerItemDidPlayToEndTimeNotification), 0);
        player->close();
        // Leaving before the end: the list appears again in portrait.
        screen->tblVideo->selectRow(0);
        fake->run(0);
        QVERIFY(!portraitOnly());
        screen->playerViewController->close();
        QVERIFY(fake->platform->window().presentedControllers().isEmpty());
        QVERIFY(portraitOnly());
    }

    void aVideoTheServiceCantFindClosesThePlayer() {
        fake->http->on(Lookup, jsonReply(QJsonObject{{"error", "Video bulunamadı."}}, 404));
        screen->tblVideo->selectRow(0);
        fake->run(0);
        QVERIFY(fake->platform->window().presentedControllers().isEmpty());
        // Nothing brings portrait back on this path: rotation stays free.
        QVERIFY(!portraitOnly());
    }

    void streamsByQualityOrder() {
        videos::Video v;
        QCOMPARE(videos::preferredStream(v), QUrl()); // none of the four: an empty address
        v.streamURLs = {{"36", QUrl("u36")}, {"5", QUrl("u5")}};
        QCOMPARE(videos::preferredStream(v), QUrl("u36"));
        v.streamURLs.insert("22", QUrl("u22"));
        v.streamURLs.insert("18", QUrl("u18"));
        QCOMPARE(videos::preferredStream(v), QUrl("u22"));
        v.streamURLs.insert(videos::VideoQualityHTTPLiveStreaming, QUrl("hls"));
        QCOMPARE(videos::preferredStream(v), QUrl("hls"));
    }
};

QTEST_GUILESS_MAIN(VideosTest)
#include "tst_videos.moc"
