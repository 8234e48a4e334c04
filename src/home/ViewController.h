#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/Overlays.h"
#include "platform/ViewController.h"
#include "platform/WebView.h"

#include <QJsonArray>
#include <QPointer>
#include <QSizeF>
#include <QStringList>
#include <QVariantMap>

namespace ekinora::widgets {
class BadgeBarButtonItem;
class GroupedRadioButton;
} // namespace ekinora::widgets

namespace ekinora::home {

// The farmer's home: today's weather for his county and his farms with their present periods, and a
// panel to add a farm. It is also the gate of the application: at each appearance it sends a user
// without a stored record to the sign-in, refreshes the stored record from the service, raises the
// consent panel when the service asks, and logs out a farmer the service now calls a club member.
class ViewController : public platform::ViewController {
    Q_OBJECT
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
    Q_INVOKABLE int collFarmsNumberOfItems();
    Q_INVOKABLE QVariantMap collFarmsCell(int row) const;
    Q_INVOKABLE QSizeF collFarmsSizeForItem(int row, double collectionWidth) const;
    Q_INVOKABLE void collFarmsDidSelectItem(int row);
    Q_INVOKABLE int collPlantsNumberOfItems() const { return int(arrPlants.size()); }
    Q_INVOKABLE QVariantMap collPlantsCell(int row) const;
    Q_INVOKABLE void collPlantsDidSelectItem(int row);
    Q_INVOKABLE int tblProductsNumberOfRows() const { return int(arrProducts.size()); }
    Q_INVOKABLE QVariantMap tblProductsCell(int row) const;
    Q_INVOKABLE void tblProductsDidSelectRow(int row);

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
