#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/ViewController.h"

#include <QJsonArray>
#include <QSizeF>
#include <QStringList>
#include <QVariantMap>

namespace ekinora::farms {

// "Tarlalarım": the farmer's farms as cards, at most three, and one panel to add, update or delete a
// farm with its crop and up to three products. The screen checks nothing itself: what the service
// refuses comes back as its message.
class FarmsViewController : public platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::TableView, collFarms)
    UI_OUTLET(ekinora::platform::TableView, collPlants)
    UI_OUTLET(ekinora::platform::TableView, tblProducts)
    UI_OUTLET(ekinora::platform::View, viewNewProduce)
    UI_OUTLET(ekinora::platform::View, viewPlant)
    UI_OUTLET(ekinora::platform::View, viewProduct)
    UI_OUTLET(ekinora::platform::Label, lblFarm)
    UI_OUTLET(ekinora::platform::Label, lblProduct)
    UI_OUTLET(ekinora::platform::Label, lblProductAlert)
    UI_OUTLET(ekinora::platform::TextField, txtFarmSize)
    UI_OUTLET(ekinora::platform::Button, btnNewProduce)
    UI_OUTLET(ekinora::platform::Button, btnUpdateProduce)
    UI_OUTLET(ekinora::platform::Button, btnDeleteProduce)
    UI_OUTLET(ekinora::platform::LayoutConstraint, constCollPlantHeight)
    UI_OUTLET(ekinora::platform::LayoutConstraint, constCollTopMargin)
public:
    explicit FarmsViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    // State.
    QJsonArray arrFarms;    // collFarms
    QJsonArray arrPlants;   // collPlants: the crop kinds
    QJsonArray arrProducts; // tblProducts: the products, names made plain
    QStringList arrSelectedProducts;
    qint32 selectedPlantIndex = -1;
    platform::Json selectedProduceID{QJsonValue::Undefined};

    // Views.
    platform::TableView *collFarms, *collPlants, *tblProducts;
    platform::View *viewNewProduce, *viewPlant, *viewProduct;
    platform::Label *lblFarm, *lblProduct, *lblProductAlert;
    platform::TextField* txtFarmSize;
    platform::Button *btnNewProduce, *btnUpdateProduce, *btnDeleteProduce;
    platform::LayoutConstraint *constCollPlantHeight, *constCollTopMargin;

    void viewDidLoad() override;
    void viewDidAppear(bool animated) override;

    void getFarms();
    void getPlants();
    void getProducts();

    // The data sources and delegates of the three lists, named "collFarms", "collPlants", "tblProducts",
    // which the lists call. A cell is a map with its "reuseIdentifier" and its controls' values by name.
    int numberOfItemsInSection(const QString& list, int section = 0);
    QVariantMap cellForItem(const QString& list, int row) const;
    QSizeF sizeForItem(const QString& list, int row, double listWidth) const;
    void didSelectItem(const QString& list, int row);

public slots:
    void setNotifBadge();

    void openNewProduceView(QObject* sender = nullptr);
    void removeNewProduceView(QObject* sender = nullptr);
    void openPlantsView(QObject* sender = nullptr);
    void removePlantsView(QObject* sender = nullptr);
    void openProductView(QObject* sender = nullptr);
    void removeProductView(QObject* sender = nullptr);
    void acceptProductView(QObject* sender = nullptr);
    void addProduct(QObject* sender = nullptr);
    void updateProduce(QObject* sender = nullptr);
    void deleteProduce(QObject* sender = nullptr);

private:
    void openFarm(int row);
    void sendFarm(bool update);
    void setNavigationBarTouches(bool enabled);
};

} // namespace ekinora::farms
