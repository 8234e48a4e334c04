#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/ViewController.h"

#include <QJsonArray>
#include <QVariantMap>

namespace ekinora::contests {

// "Çekiliş Sonucu": the winners of a contest, the message for this farmer and his congratulation when
// he won; before the draw, the day the contest ends.
class ResultViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::TableView, tblScores)
    UI_OUTLET(ekinora::platform::View, viewInfo)
    UI_OUTLET(ekinora::platform::Label, lblInfo)
    UI_OUTLET(ekinora::platform::Label, lblCongrats)
    UI_OUTLET(ekinora::platform::Label, lblScoreMessage)
    UI_OUTLET(ekinora::platform::LayoutConstraint, constTblHeight)
public:
    explicit ResultViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    platform::Json gameID{QJsonValue::Undefined};
    QJsonArray arrScores;
    qint64 currentUserID = 0;

    platform::TableView* tblScores;
    platform::View* viewInfo;
    platform::Label *lblInfo, *lblCongrats, *lblScoreMessage;
    platform::LayoutConstraint* constTblHeight;

    void viewDidLoad() override;
    void getScores();
    QVariantMap scoreCell(int row) const;

    // "%0.2ld:%0.2ld": minutes within the hour, then seconds.
    static QString stringFromTimeInterval(double seconds);

public slots:
    void goHome(QObject* sender = nullptr);
};

} // namespace ekinora::contests
