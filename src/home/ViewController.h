#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/Overlays.h"
#include "platform/ViewController.h"
#include "platform/WebView.h"
#include "widgets/BadgeBarButtonItem.h"
#include "widgets/GroupedRadioButton.h"

#include <QJsonArray>
#include <QPointer>
#include <QSizeF>
#include <QStringList>
#include <QVariantMap>

namespace ekinora::home {

// The farmer's home: today's weather for his county and his farms with their present periods, and a
// panel to add a farm. It is also the gate of the application: at each appearance it sends a user
// without a stored record to the sign-in, refreshes the stored record from the service, raises the
// consent panel when the service asks, and logs out a farmer the service now calls a club member.
class ViewController : public platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::ImageView, imgLoading)
    UI_OUTLET(ekinora::platform::Label, lblWeatherDate)
    UI_OUTLET(ekinora::platform::Label, lblWeatherLocation)
    UI_OUTLET(ekinora::platform::Label, lblWeatherCondition)
    UI_OUTLET(ekinora::platform::Label, lblWeatherTemprature)
    UI_OUTLET(ekinora::platform::Label, lblWeatherRain)
    UI_OUTLET(ekinora::platform::Label, lblWeatherWind)
    UI_OUTLET(ekinora::platform::ImageView, imgWeatherCondition)
    UI_OUTLET(ekinora::platform::View, viewEvent)
    UI_OUTLET(ekinora::platform::Label, lblProductAlert)
    UI_OUTLET(ekinora::platform::LayoutConstraint, constCollTopMargin)
    UI_OUTLET(ekinora::platform::TableView, collFarms)
    UI_OUTLET(ekinora::platform::Button, menuBtn)
    UI_OUTLET(ekinora::widgets::BadgeBarButtonItem, btnNotification)
    UI_OUTLET(ekinora::platform::View, viewKVKK)
    UI_OUTLET(ekinora::platform::View, viewETK)
    UI_OUTLET(ekinora::platform::WebView, webviewETK)
    UI_OUTLET(ekinora::widgets::GroupedRadioButton, radioETK1)
    UI_OUTLET(ekinora::widgets::GroupedRadioButton, radioETK2)
    UI_OUTLET(ekinora::widgets::GroupedRadioButton, radioETK3)
    UI_OUTLET(ekinora::platform::View, viewNewProduce)
    UI_OUTLET(ekinora::platform::View, viewPlant)
    UI_OUTLET(ekinora::platform::View, viewProduct)
    UI_OUTLET(ekinora::platform::Label, lblFarm)
    UI_OUTLET(ekinora::platform::Label, lblProduct)
    UI_OUTLET(ekinora::platform::TextField, txtFarmSize)
    UI_OUTLET(ekinora::platform::Button, btnNewProduce)
    UI_OUTLET(ekinora::platform::Button, btnUpdateProduce)
    UI_OUTLET(ekinora::platform::Button, btnDeleteProduce)
    UI_OUTLET(ekinora::platform::TableView, collPlants)
    UI_OUTLET(ekinora::platform::TableView, tblProducts)
    UI_OUTLET(ekinora::platform::LayoutConstraint, constCollPlantHeight)
public:
    explicit ViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    // State.
    QJsonArray arrFarms;
    QJsonArray arrPlants;
    QJsonArray arrProducts; // names plain
    QStringList arrSelectedProducts;
    qint32 selectedPlantIndex = -1;
    QPointer<platform::ProgressHUD> hud;
    platform::Json dictionaryWeather{QJsonValue::Undefined};

    // The splash over the whole window, from loading until the first appearance.
    platform::ImageView* imgLoading;

    // Weather panel.
    platform::Label *lblWeatherDate, *lblWeatherLocation, *lblWeatherCondition, *lblWeatherTemprature;
    platform::Label *lblWeatherRain, *lblWeatherWind;
    platform::ImageView* imgWeatherCondition;

    // Farms.
    platform::View* viewEvent;
    platform::Label* lblProductAlert;
    platform::LayoutConstraint* constCollTopMargin;
    platform::TableView* collFarms;
    platform::Button* menuBtn;
    widgets::BadgeBarButtonItem* btnNotification;

    // Consent panel and notice.
    platform::View *viewKVKK, *viewETK;
    platform::WebView* webviewETK;
    widgets::GroupedRadioButton *radioETK1, *radioETK2, *radioETK3;

    // Adding a farm.
    platform::View *viewNewProduce, *viewPlant, *viewProduct;
    platform::Label *lblFarm, *lblProduct;
    platform::TextField* txtFarmSize;
    platform::Button *btnNewProduce, *btnUpdateProduce, *btnDeleteProduce;
    platform::TableView *collPlants, *tblProducts;
    platform::LayoutConstraint* constCollPlantHeight;

    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    void viewDidAppear(bool animated) override;
    void viewDidDisappear(bool animated) override;
    void prepareForSegue(const platform::StoryboardSegue& segue, QObject* sender) override;
    int preferredStatusBarStyle() const { return 0; }

    // The collections' data sources and delegates. The farm list's count also places the alert label.
    // The data sources and delegates of the three lists, which the lists call.
    int collFarmsNumberOfItems();
    QVariantMap collFarmsCell(int row) const;
    QSizeF collFarmsSizeForItem(int row, double collectionWidth) const;
    void collFarmsDidSelectItem(int row);
    int collPlantsNumberOfItems() const { return int(arrPlants.size()); }
    QVariantMap collPlantsCell(int row) const;
    void collPlantsDidSelectItem(int row);
    int tblProductsNumberOfRows() const { return int(arrProducts.size()); }
    QVariantMap tblProductsCell(int row) const;
    void tblProductsDidSelectRow(int row);

    void getWeatherInfo();
    void getFarms();
    void getPlants();
    void getProducts();
    void loadWebviewETK();
    void forcedLogout();
    void showAlert();
    void checkFarmerForLightBox() {}

public slots:
    void setNotifBadge();
    void removeSplash();
    // The menu button's action: the side menu opens.
    void presentLeftMenuViewController();
    void openEventView(QObject* sender = nullptr);
    void callPerson(QObject* sender = nullptr);
    void setETKinfo(QObject* sender = nullptr);
    void openETKView(QObject* sender = nullptr);
    void closeETKView(QObject* sender = nullptr);
    void openNewProduceView(QObject* sender = nullptr);
    void removeNewProduceView(QObject* sender = nullptr);
    void openPlantsView(QObject* sender = nullptr);
    void removePlantsView(QObject* sender = nullptr);
    void openProductView(QObject* sender = nullptr);
    void removeProductView(QObject* sender = nullptr);
    void acceptProductView(QObject* sender = nullptr);
    void addProduct(QObject* sender = nullptr);

private:
    void profileReceived(const platform::Json& response, const platform::Json& storedRecord);
    // A new content stack with one screen, handed to the side menu, which closes.
    void handOver(const QString& identifier);
    platform::ViewController* hudHost();
};

} // namespace ekinora::home
