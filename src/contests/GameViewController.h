#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/ViewController.h"

#include <QJsonArray>
#include <QVariantMap>

namespace ekinora::contests {

// "Çekiliş": the contests, each with what the farmer can do with it now (enter, or see the results),
// and the way into the questions or the results.
class GameViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::TableView, tblGame)
    UI_OUTLET(ekinora::platform::ImageView, imgInfoBack)
    UI_OUTLET(ekinora::platform::Label, lblInfoBack)
public:
    explicit GameViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    QJsonArray arrGames;

    platform::TableView* tblGame;
    platform::ImageView* imgInfoBack;
    platform::Label* lblInfoBack;

    void viewDidLoad() override;
    void viewDidAppear(bool animated) override;
    void viewDidDisappear(bool animated) override;
    void prepareForSegue(const platform::StoryboardSegue& segue, QObject* sender) override;

    // Appends the next page when given a sender, the first page otherwise.
    void getGames(QObject* sender);
    // A "GameCell" as the list draws it.
    QVariantMap gameCell(int row) const;
    void didSelectRow(int row);

    // The end of a drag on the list: the next page when the last row is in sight and the list will
    // go on moving.
    Q_INVOKABLE void scrollViewDidEndDragging(int lastVisibleRow, bool willDecelerate);

public slots:
    void setNotifBadge();
};

} // namespace ekinora::contests
