#include "VideoViewController.h"

#include "DeviceOrientation.h"
#include "PlayerViewController.h"
#include "VideoClient.h"
#include "notifications/Bell.h"
#include "platform/Platform.h"
#include "service/Replies.h"
#include "service/ServiceCall.h"
#include "service/WSRequest.h"

namespace ekinora::videos {

using namespace platform;

VideoViewController::VideoViewController(QObject* parent) : ViewController(parent), tblVideo(makeControl<TableView>("tblVideo")) {
    setTitle(QStringLiteral("Videolar"));
    notifications::Bell::install(this);
    addSegue(QStringLiteral("toBarcodeVC"), SegueKind::Present, QStringLiteral("barcodeVC"));
    tblVideo->setDataSource([this](int) { return int(arrVideos.size()); },
                            [this](int, int row) {
                                const double width = tblVideo->size().width();
                                return cellRow(cellForRow(row), QSizeF(width, width * 9 / 16 + 64));
                            });
    tblVideo->setDidSelectRow([this](int, int row) { playVideo(row); });
}

QUrl VideoViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Videos/VideoView.qml")); }

void VideoViewController::viewDidLoad() {
    arrVideos = QJsonArray();
    getVideos(false);
}

void VideoViewController::viewWillAppear(bool) {
    DeviceOrientation::current().setOrientation(DeviceOrientation::Portrait);
    restrictRotation(true);
}

void VideoViewController::viewDidAppear(bool) {
    setNotifBadge();
    notifications::Bell::observe(this);
}

void VideoViewController::setNotifBadge() { notifications::Bell::setNotifBadge(this); }

void VideoViewController::restrictRotation(bool restrict) { DeviceOrientation::setRestrictRotation(restrict); }

void VideoViewController::getVideos(bool more) {
    service::ScreenCall call(this, QStringLiteral("getVideos"), service::ScreenCall::WithHud);
    service::WSRequest request;
    request.doParam = QStringLiteral("videos");
    if (more) request.pageToken = true;
    request.requestData(call.done([this](const Json& response) {
                            service::log(description(response));
                            for (const Json& video : service::listOf(path(response, {QStringLiteral("data"), QStringLiteral("videos")})))
                                arrVideos.append(video);
                            tblVideo->reloadData();
                        }),
                        call.failed());
}

// Nothing guards a page on its way: each drag to the end asks again.
void VideoViewController::scrollViewDidEndDragging(int lastVisibleRow, bool decelerate) {
    if (lastVisibleRow >= int(arrVideos.size()) - 1 && decelerate) getVideos(true);
}

QVariantMap VideoViewController::cellForRow(int row) const {
    const Json video = arrVideos.at(row);
    return {{QStringLiteral("reuseIdentifier"), QStringLiteral("VideoCell")},
            {QStringLiteral("lblTitle"), stringOrNull(member(video, QStringLiteral("title")))},
            {QStringLiteral("imgScreen"), thumbnailURL(description(member(video, QStringLiteral("youtubeVideoHash")))).toString()}};
}

void VideoViewController::playVideo(int row) {
    auto* player = new PlayerViewController;
    // The list appears again when the user closes the player, and its appearance brings portrait back.
    player->userDidClose = [self = QPointer<VideoViewController>(this)] {
        if (self) self->viewWillAppear(true);
    };
    presentViewController(player, true);
    playerViewController = player;
    const QString identifier = description(member(arrVideos.at(row), QStringLiteral("youtubeVideoHash")));
    VideoClient::defaultClient().getVideoWithIdentifier(identifier, [self = strong(this)](const std::optional<Video>& video) {
        VideoViewController* screen = self.get();
        if (!video) {
            // The rotation stays free: nothing brings portrait back on this path.
            if (screen->playerViewController) screen->playerViewController->dismissViewControllerAnimated(true);
            return;
        }
        if (!screen->playerViewController) return;
        auto* avPlayer = new Player(preferredStream(*video));
        screen->playerViewController->setPlayer(avPlayer);
        avPlayer->play();
        Platform::current().notificationCenter().addObserver(screen, QStringLiteral("moviePlayerPlaybackDidFinish"),
                                                             PlayerItemDidPlayToEndTimeNotification, avPlayer->currentItem());
    });
    // Landscape while the answer is on its way.
    restrictRotation(false);
    DeviceOrientation::current().setOrientation(DeviceOrientation::LandscapeLeft);
}

void VideoViewController::moviePlayerPlaybackDidFinish(const Notification& notification) {
    DeviceOrientation::current().setOrientation(DeviceOrientation::Portrait);
    restrictRotation(true);
    Platform::current().notificationCenter().removeObserver(this, notification.name);
}

void VideoViewController::closeView(QObject*) { dismissViewControllerAnimated(true); }

void VideoViewController::toBarcodeTapped(QObject* sender) { performSegueWithIdentifier(QStringLiteral("toBarcodeVC"), sender); }

} // namespace ekinora::videos
