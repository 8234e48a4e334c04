#pragma once

#include "ConsentPanel.h"

#include "farms/CropEditor.h"
#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/ViewController.h"
#include "platform/WebView.h"
#include "widgets/DropDownList.h"

#include <QJsonArray>
#include <QPointer>
#include <QSizeF>
#include <QStringList>
#include <QVariantMap>

namespace ekinora::accounts {

// Sign-in by mobile number and SMS code. The same screen holds the registration wizard, with the crop
// editor and the consent pages embedded over it, as panels that are shown and hidden; none is pushed.
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
    UI_OUTLET(ekinora::platform::Label, activationLabel)
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
    // The open city or county list, for the arrangement; null once forgotten.
    Q_PROPERTY(ekinora::widgets::DropDownList* dropDownCityCounty READ dropDownCityCounty NOTIFY dropDownChanged)
public:
    explicit LoginViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    // State.
    QJsonArray arrCities, arrCounties;
    QJsonArray arrFarms;
    qint32 selectedProduceID = -1;
    platform::Json actionType{QJsonValue::Undefined};
    platform::Json registerType{QJsonValue::Undefined};
    widgets::DropDownList* dropDownCityCounty() const { return m_dropDown; }
    farms::CropEditor* cropEditor() const { return m_cropEditor; }
    ConsentPanel* consentPanel() const { return m_consent; }
    QList<platform::ViewController*> childViewControllers() const override { return {m_cropEditor, m_consent}; }

    // Panels.
    platform::View *viewLogin, *viewLoginPhone, *viewLoginCode, *viewLogout;
    platform::View *viewRegister, *viewRegisterPhone, *viewRegisterCode, *memberShipView;
    platform::View *viewRegisterInfo, *nameView;
    platform::View *viewRegisterFarm, *ciftciTarlaView, *bayiBilgileriView;
    platform::View *viewRegisterActivation, *viewRegisterFinal;

    // Fields and buttons.
    platform::TextField *txtLoginPhone, *txtLoginPhoneCode, *txtLoginCode;
    platform::TextField *txtRegisterPhone, *txtRegisterPhoneCode, *txtRegisterCode;
    platform::Button *farmerButton, *dealerButton, *devamButton, *completeRegistrationButton;
    platform::Label* activationLabel;
    // Personal data and place.
    platform::TextField *txtName, *txtLastName, *txtMail, *txtCity, *txtCounty;
    platform::Button *btnCity, *btnCounty;
    // A dealer's shop.
    platform::TextField *bayiAdiText, *vergiNoText, *tcKimlikText;
    // A farmer's crops, edited in the crop editor.
    platform::TableView* collFarms;

    void viewDidLoad() override;

    // Loads at start.
    void getCities();
    void getCounties();

    bool textFieldShouldChangeCharacters(platform::TextField* field, int location, int length, const QString& replacement);
    bool textFieldShouldReturn(platform::TextField* field);
    // The navigation delegate of both web views: a "mailto:" link the user tapped goes to mail.
    bool decidePolicyForNavigationAction(platform::WebView* webView, const QUrl& url, int navigationType);

    // The data source and delegate of collFarms, and the spacing of the lists.
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

signals:
    void dropDownChanged();

private:
    void showAlert(const QString& title, const QString& message, int style = 0);
    void enterApplication(const platform::Json& data);
    void showActivationPending();
    void registerFarmer();
    void registerDealer();
    void backToLogin();
    void setDropDown(QObject* list);
    // The crops are kept here until the registration sends them; adding checks the crop, updating
    // does not.
    void addCrop();
    void updateCrop();
    void deleteCrop();
    // A crop's products as the panels show them: one name a line, or the given text for none.
    static QString productLines(const platform::Json& aps, const QString& none);
    platform::Json countyIdByName(const QString& name) const;

    QPointer<widgets::DropDownList> m_dropDown;
    farms::CropEditor* m_cropEditor;
    ConsentPanel* m_consent;
};

} // namespace ekinora::accounts
