#pragma once

#include "platform/Controls.h"
#include "platform/ViewController.h"
#include "platform/Foundation.h"
#include "platform/WebView.h"

#include <QJsonArray>
#include <QPointer>
#include <QStringList>

namespace ekinora::accounts {

// Sign-in by mobile number and SMS code. The same screen holds the registration wizard and the consent
// pages as panels that are shown and hidden; none of them is pushed.
class LoginViewController : public platform::ViewController {
    Q_OBJECT
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
    QPointer<QObject> dropDownCityCounty;

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

    void viewDidLoad() override;

    // Loads at start.
    void getCities();
    void getPlants();
    void getProducts();
    void getInfo();
    void loadWebviewETK();

    bool textFieldShouldChangeCharacters(platform::TextField* field, int location, int length, const QString& replacement);
    bool textFieldShouldReturn(platform::TextField* field);

public slots:
    void getSmsCodeForLogin(QObject* sender = nullptr);
    void validateSmsCodeForLogin(QObject* sender = nullptr);
    void getSmsCode(QObject* sender = nullptr);
    void validateSmsCode(QObject* sender = nullptr);
    void loginBack(QObject* sender = nullptr);
    void openRegisterView(QObject* sender = nullptr);

private:
    void showAlert(const QString& title, const QString& message, int style = 0);
    void enterApplication(const platform::Json& data);
    void showActivationPending();
    platform::ViewController* hudHost();
};

} // namespace ekinora::accounts
