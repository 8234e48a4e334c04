#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/NotificationCenter.h"
#include "platform/ViewController.h"

#include <QJsonArray>
#include <QPointer>
#include <QVariantMap>

namespace ekinora::videos {

class PlayerViewController;

// "Videolar": the company's videos at the video service, a page at a time, each played full screen in
// landscape while the rest of the application stays in portrait.
class VideoViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::TableView, tblVideo)
public:
    explicit VideoViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    QJsonArray arrVideos;
    platform::TableView* tblVideo;
    // Held weakly from its presentation on.
    QPointer<PlayerViewController> playerViewController;

    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    void viewDidAppear(bool animated) override;

    QVariantMap cellForRow(int row) const;
    // tableView:didSelectRowAtIndexPath: the player at once, the streams on their way.
    void playVideo(int row);

public slots:
    void setNotifBadge();
    void getVideos(bool more);
    void scrollViewDidEndDragging(int lastVisibleRow, bool decelerate);
    void restrictRotation(bool restrict);
    void moviePlayerPlaybackDidFinish(const ekinora::platform::Notification& notification);
    void closeView(QObject* sender = nullptr);
    void toBarcodeTapped(QObject* sender = nullptr);
};

} // namespace ekinora::videos
