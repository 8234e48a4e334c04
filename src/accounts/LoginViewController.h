#pragma once

#include "platform/Controls.h"
#include "platform/ViewController.h"
#include "platform/Foundation.h"
#include "platform/WebView.h"
#include "widgets/DropDownList.h"
#include "widgets/GroupedRadioButton.h"

#include <QJsonArray>
#include <QPointer>
#include <QSizeF>
#include <QStringList>
#include <QVariantMap>

namespace ekinora::accounts {

// Sign-in by mobile number and SMS code. The same screen holds the registration wizard and the consent
// pages as panels that are shown and hidden; none of them is pushed.
class LoginViewController : public platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::View, viewLogin)
    UI_OUTLET(ekinora::platform::View, viewLoginPhone)
    UI_OUTLET(ekinora::platform::View, viewLoginCode)
    UI_OUTLET(ekinora::platform::View, viewLogout)
    UI_OUTLET(ekinora::platform::View, viewRegister)
    UI_OUTLET(ekinora::platform::View, viewRegisterPhone)
    UI_OUTLET(ekinora::platform::View, viewRegisterCode)
    UI_OUTLET(ekinora::platform::View, memberShipView)
    UI_OUTLET(ekinora::platform::View, viewRegisterInfo)
    UI_OUTLET(ekinora::platform::View, nameView)
    UI_OUTLET(ekinora::platform::View, viewRegisterFarm)
    UI_OUTLET(ekinora::platform::View, ciftciTarlaView)
    UI_OUTLET(ekinora::platform::View, bayiBilgileriView)
    UI_OUTLET(ekinora::platform::View, viewRegisterActivation)
    UI_OUTLET(ekinora::platform::View, viewRegisterFinal)
    UI_OUTLET(ekinora::platform::View, viewKVKK)
    UI_OUTLET(ekinora::platform::View, viewETK)
    UI_OUTLET(ekinora::platform::View, viewETKWeb)
    UI_OUTLET(ekinora::platform::View, viewNewProduce)
    UI_OUTLET(ekinora::platform::View, viewPlant)
    UI_OUTLET(ekinora::platform::View, viewProduct)
    UI_OUTLET(ekinora::platform::TextField, txtLoginPhone)
    UI_OUTLET(ekinora::platform::TextField, txtLoginPhoneCode)
    UI_OUTLET(ekinora::platform::TextField, txtLoginCode)
    UI_OUTLET(ekinora::platform::TextField, txtRegisterPhone)
    UI_OUTLET(ekinora::platform::TextField, txtRegisterPhoneCode)
    UI_OUTLET(ekinora::platform::TextField, txtRegisterCode)
    UI_OUTLET(ekinora::platform::Button, farmerButton)
    UI_OUTLET(ekinora::platform::Button, dealerButton)
    UI_OUTLET(ekinora::platform::Button, devamButton)
    UI_OUTLET(ekinora::platform::Button, completeRegistrationButton)
    UI_OUTLET(ekinora::platform::Button, btn1Enb)
    UI_OUTLET(ekinora::platform::Button, btn2Enb)
    UI_OUTLET(ekinora::platform::Button, btn3Enb)
    UI_OUTLET(ekinora::platform::Label, activationLabel)
    UI_OUTLET(ekinora::platform::WebView, webKVKK)
    UI_OUTLET(ekinora::platform::WebView, webviewETK)
    UI_OUTLET(ekinora::platform::TextField, txtName)
    UI_OUTLET(ekinora::platform::TextField, txtLastName)
    UI_OUTLET(ekinora::platform::TextField, txtMail)
    UI_OUTLET(ekinora::platform::TextField, txtCity)
    UI_OUTLET(ekinora::platform::TextField, txtCounty)
    UI_OUTLET(ekinora::platform::Button, btnCity)
    UI_OUTLET(ekinora::platform::Button, btnCounty)
    UI_OUTLET(ekinora::platform::TextField, bayiAdiText)
    UI_OUTLET(ekinora::platform::TextField, vergiNoText)
    UI_OUTLET(ekinora::platform::TextField, tcKimlikText)
    UI_OUTLET(ekinora::platform::TableView, collFarms)
    UI_OUTLET(ekinora::platform::TableView, collPlants)
    UI_OUTLET(ekinora::platform::TableView, tblProducts)
    UI_OUTLET(ekinora::platform::Label, lblFarm)
    UI_OUTLET(ekinora::platform::Label, lblProduct)
    UI_OUTLET(ekinora::platform::TextField, txtFarmSize)
    UI_OUTLET(ekinora::platform::Button, btnNewProduce)
    UI_OUTLET(ekinora::platform::Button, btnUpdateProduce)
    UI_OUTLET(ekinora::platform::Button, btnDeleteProduce)
    UI_OUTLET(ekinora::platform::LayoutConstraint, constCollPlantHeight)
    UI_OUTLET(ekinora::widgets::GroupedRadioButton, radioETK1)
    UI_OUTLET(ekinora::widgets::GroupedRadioButton, radioETK2)
    UI_OUTLET(ekinora::widgets::GroupedRadioButton, radioETK3)
    // The open city or county list, for the arrangement; null once forgotten.
    Q_PROPERTY(ekinora::widgets::DropDownList* dropDownCityCounty READ dropDownCityCounty NOTIFY dropDownChanged)
    // The consent panel last brought to the front.
    Q_PROPERTY(QString frontPanel READ frontPanel NOTIFY frontPanelChanged)
public:
    explicit LoginViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    // State.
    QJsonArray arrCities, arrCounties;
    QJsonArray arrFarms;
    QJsonArray arrPlants;
    QJsonArray arrProducts;
    QStringList arrSelectedProducts;
    qint32 selectedPlantIndex = -1;
    qint32 selectedProduceID = -1;
    platform::Json actionType{QJsonValue::Undefined};
    platform::Json registerType{QJsonValue::Undefined};
    widgets::DropDownList* dropDownCityCounty() const { return m_dropDown; }
    QString frontPanel() const { return m_frontPanel; }

    // Panels.
    platform::View *viewLogin, *viewLoginPhone, *viewLoginCode, *viewLogout;
    platform::View *viewRegister, *viewRegisterPhone, *viewRegisterCode, *memberShipView;
    platform::View *viewRegisterInfo, *nameView;
    platform::View *viewRegisterFarm, *ciftciTarlaView, *bayiBilgileriView;
    platform::View *viewRegisterActivation, *viewRegisterFinal;
    platform::View *viewKVKK, *viewETK, *viewETKWeb;
    platform::View *viewNewProduce, *viewPlant, *viewProduct;

    // Fields and buttons.
    platform::TextField *txtLoginPhone, *txtLoginPhoneCode, *txtLoginCode;
    platform::TextField *txtRegisterPhone, *txtRegisterPhoneCode, *txtRegisterCode;
    platform::Button *farmerButton, *dealerButton, *devamButton, *completeRegistrationButton;
    platform::Button *btn1Enb, *btn2Enb, *btn3Enb;
    platform::Label* activationLabel;
    platform::WebView *webKVKK, *webviewETK;
    // Personal data and place.
    platform::TextField *txtName, *txtLastName, *txtMail, *txtCity, *txtCounty;
    platform::Button *btnCity, *btnCounty;
    // A dealer's shop.
    platform::TextField *bayiAdiText, *vergiNoText, *tcKimlikText;
    // A farmer's crops and their editing panels.
    platform::TableView *collFarms, *collPlants, *tblProducts;
    platform::Label *lblFarm, *lblProduct;
    platform::TextField* txtFarmSize;
    platform::Button *btnNewProduce, *btnUpdateProduce, *btnDeleteProduce;
    platform::LayoutConstraint* constCollPlantHeight;
    // The three permissions; each is read by its own selected state.
    widgets::GroupedRadioButton *radioETK1, *radioETK2, *radioETK3;

    void viewDidLoad() override;

    // Loads at start.
    void getCities();
    void getCounties();
    void getPlants();
    void getProducts();
    void getInfo();
    void loadWebviewETK();

    bool textFieldShouldChangeCharacters(platform::TextField* field, int location, int length, const QString& replacement);
    bool textFieldShouldReturn(platform::TextField* field);
    // The navigation delegate of both web views: a "mailto:" link the user tapped goes to mail.
    bool decidePolicyForNavigationAction(platform::WebView* webView, const QUrl& url, int navigationType);

    // The data sources and delegates of collFarms, collPlants and tblProducts.
    int numberOfItemsInSection(QObject* collection, int section = 0);
    // The reuse identifier under "reuseIdentifier" and the cell's texts under the names of its labels.
    QVariantMap cellForItem(QObject* collection, int row) const;
    void didSelectItem(QObject* collection, int row);
    QSizeF sizeForItem(QObject* collection, int row, double frameWidth) const;
    Q_INVOKABLE double minimumLineSpacing(QObject* collection) const;
    Q_INVOKABLE double minimumInteritemSpacing(QObject* collection) const;
    Q_INVOKABLE double sectionInset(QObject* collection) const;

public slots:
    void getSmsCodeForLogin(QObject* sender = nullptr);
    void validateSmsCodeForLogin(QObject* sender = nullptr);
    void getSmsCode(QObject* sender = nullptr);
    void validateSmsCode(QObject* sender = nullptr);
    void loginBack(QObject* sender = nullptr);
    void openRegisterView(QObject* sender = nullptr);

    // Region lookup.
    void selectCity(QObject* sender = nullptr);
    void selectCounty(QObject* sender = nullptr);
    void dropDownListDelegateMethod(QObject* sender);
    void rel();

    // The wizard.
    void farmerButtonTapped(QObject* sender = nullptr);
    void dealerButtonTapped(QObject* sender = nullptr);
    void canOpenKvkkView();
    void continueToActivation(QObject* sender = nullptr);
    void continueToInfo(QObject* sender = nullptr);
    void continueToFarm(QObject* sender = nullptr);
    void continueToFinish(QObject* sender = nullptr);
    void finishRegistration(QObject* sender = nullptr);
    void checkDealer();

    // The crop panels.
    void openNewProduceView(QObject* sender = nullptr);
    void removeNewProduceView(QObject* sender = nullptr);
    void addProduct(QObject* sender = nullptr);
    void updateProduce(QObject* sender = nullptr);
    void deleteProduce(QObject* sender = nullptr);
    void openPlantsView(QObject* sender = nullptr);
    void removePlantsView(QObject* sender = nullptr);
    void openProductView(QObject* sender = nullptr);
    void removeProductView(QObject* sender = nullptr);
    void acceptProductView(QObject* sender = nullptr);

    // Consent.
    void acceptKVKK(QObject* sender = nullptr);
    void closeETKView(QObject* sender = nullptr);
    void openETKWebView(QObject* sender = nullptr);
    void closeETKWebView(QObject* sender = nullptr);

signals:
    void dropDownChanged();
    void frontPanelChanged();

private:
    void showAlert(const QString& title, const QString& message, int style = 0);
    void enterApplication(const platform::Json& data);
    void showActivationPending();
    platform::ViewController* hudHost();
    void registerFarmer();
    void registerDealer();
    void backToLogin();
    void bringSubviewToFront(platform::View* panel);
    void setDropDown(QObject* list);
    // A crop's products as the panels show them: one name a line, or the given text for none.
    static QString productLines(const platform::Json& aps, const QString& none);
    platform::Json countyIdByName(const QString& name) const;

    QPointer<widgets::DropDownList> m_dropDown;
    QString m_frontPanel;
};

} // namespace ekinora::accounts
