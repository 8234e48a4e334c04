#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/Overlays.h"
#include "platform/ViewController.h"
#include "accounts/ConsentPanel.h"
#include "farms/CropEditor.h"
#include "widgets/BadgeBarButtonItem.h"

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
class ViewController : public ekinora::platform::ViewController {
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
public:
    explicit ViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    // State.
    QJsonArray arrFarms;
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

    // The consent questions and notice, and the panel that adds a farm.
    accounts::ConsentPanel* consentPanel() const { return m_consent; }
    farms::CropEditor* cropEditor() const { return m_cropEditor; }
    QList<platform::ViewController*> childViewControllers() const override { return {m_consent, m_cropEditor}; }

    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    void viewDidAppear(bool animated) override;
    void viewDidDisappear(bool animated) override;
    void prepareForSegue(const platform::StoryboardSegue& segue, QObject* sender) override;
    int preferredStatusBarStyle() const { return 0; }

    // The farm list's data source and delegate; its count also places the alert label.
    int collFarmsNumberOfItems();
    QVariantMap collFarmsCell(int row) const;
    QSizeF collFarmsSizeForItem(int row, double collectionWidth) const;
    void collFarmsDidSelectItem(int row);

    void getWeatherInfo();
    void getFarms();
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
    // The weather card's tap: the week's weather over the home.
    void openWeatherDetail(QObject* sender = nullptr);

private:
    void profileReceived(const platform::Json& response, const platform::Json& storedRecord);
    // A new content stack with one screen, handed to the side menu, which closes.
    void handOver(const QString& identifier);
    // The permissions go to the service; whatever the answer, the question is answered.
    void sendPermissions();
    // The new farm goes to the service, unchecked: the service's answer is what the farmer sees.
    void saveFarm();

    accounts::ConsentPanel* m_consent;
    farms::CropEditor* m_cropEditor;
};

} // namespace ekinora::home
