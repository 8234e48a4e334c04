#pragma once

#include "CropEditor.h"

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/ViewController.h"

#include <QJsonArray>
#include <QSizeF>
#include <QStringList>
#include <QVariantMap>

namespace ekinora::farms {

// "Tarlalarım": the farmer's farms as cards, at most three, and the crop editor to add, update or
// delete a farm with its crop and up to three products. The screen checks nothing itself: what the
// service refuses comes back as its message.
class FarmsViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::TableView, collFarms)
    UI_OUTLET(ekinora::platform::Label, lblProductAlert)
    UI_OUTLET(ekinora::platform::LayoutConstraint, constCollTopMargin)
public:
    explicit FarmsViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    // State.
    QJsonArray arrFarms; // collFarms
    platform::Json selectedProduceID{QJsonValue::Undefined};

    // Views.
    platform::TableView* collFarms;
    platform::Label* lblProductAlert;
    platform::LayoutConstraint* constCollTopMargin;
    CropEditor* cropEditor() const { return m_cropEditor; }
    QList<platform::ViewController*> childViewControllers() const override { return {m_cropEditor}; }

    void viewDidLoad() override;
    void viewDidAppear(bool animated) override;

    void getFarms();

    // The farm list's data source and delegate. A cell is a map with its "reuseIdentifier" and its
    // controls' values by name.
    int numberOfItems();
    QVariantMap farmCell(int row) const;
    QSizeF farmCellSize(int row, double listWidth) const;
    void didSelectFarm(int row);

public slots:
    void setNotifBadge();

private:
    void openFarm(int row);
    void sendFarm(bool update);
    void deleteFarm();

    CropEditor* m_cropEditor;
};

} // namespace ekinora::farms
