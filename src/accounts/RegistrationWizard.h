#pragma once

#include "ConsentPanel.h"

#include "farms/CropEditor.h"
#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/ViewController.h"
#include "widgets/DropDownList.h"

#include <QJsonArray>
#include <QPointer>
#include <QSizeF>
#include <QVariantMap>
#include <functional>

namespace ekinora::accounts {

// What the sign-in screen gives its registration wizard.
struct RegistrationPolicy {
    // The consent pages the wizard opens after the role is chosen, and whose permissions it sends.
    ConsentPanel* consent = nullptr;
    // A farmer's registration signs in the way a login does.
    std::function<void(const platform::Json& user)> signIn;
    // The final panel's button, once it reads "Geriye Dön", leads back to the number entry.
    std::function<void()> backToLogin;
};

// The registration wizard of the sign-in screen, farmer and dealer alike: the role, the personal data
// and the place, a farmer's crops (kept here until the registration sends them) or a dealer's shop and
// its check, and the final panel. Its panels lie in the host's registration panel; the crop editor lies
// over the whole host. Alerts and requests go out in the host's name, as the screen's own do.
class RegistrationWizard : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by its host screen.")
    UI_OUTLET(ekinora::platform::View, viewRegisterInfo)
    UI_OUTLET(ekinora::platform::View, memberShipView)
    UI_OUTLET(ekinora::platform::View, nameView)
    UI_OUTLET(ekinora::platform::View, viewRegisterFarm)
    UI_OUTLET(ekinora::platform::View, ciftciTarlaView)
    UI_OUTLET(ekinora::platform::View, bayiBilgileriView)
    UI_OUTLET(ekinora::platform::View, viewRegisterActivation)
    UI_OUTLET(ekinora::platform::View, viewRegisterFinal)
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
    RegistrationWizard(RegistrationPolicy policy, platform::ViewController* host);
    QUrl viewSource() const override;

    // State.
    QJsonArray arrCities, arrCounties;
    QJsonArray arrFarms;
    qint32 selectedProduceID = -1;
    platform::Json registerType{QJsonValue::Undefined};
    widgets::DropDownList* dropDownCityCounty() const { return m_dropDown; }
    farms::CropEditor* cropEditor() const { return m_cropEditor; }
    QList<platform::ViewController*> childViewControllers() const override { return {m_cropEditor}; }

    // Panels.
    platform::View *viewRegisterInfo, *memberShipView, *nameView;
    platform::View *viewRegisterFarm, *ciftciTarlaView, *bayiBilgileriView;
    platform::View *viewRegisterActivation, *viewRegisterFinal;
    platform::Button *farmerButton, *dealerButton, *devamButton, *completeRegistrationButton;
    platform::Label* activationLabel;
    // Personal data and place.
    platform::TextField *txtName, *txtLastName, *txtMail, *txtCity, *txtCounty;
    platform::Button *btnCity, *btnCounty;
    // A dealer's shop.
    platform::TextField *bayiAdiText, *vergiNoText, *tcKimlikText;
    // A farmer's crops, edited in the crop editor.
    platform::TableView* collFarms;

    // While the host loads: the city list, the empty crop list and the editor's lists.
    void load();
    // The role's choice, after a new number's code was right.
    void open();
    // A dealer whose account the company has not activated yet: the final panel with the waiting text.
    void showActivationPending();

    void getCities();
    void getCounties();

    // The data source and delegate of collFarms, and the spacing of the list.
    int numberOfItemsInSection(QObject* collection, int section = 0);
    // The reuse identifier under "reuseIdentifier" and the cell's texts under the names of its labels.
    QVariantMap cellForItem(QObject* collection, int row) const;
    void didSelectItem(QObject* collection, int row);
    QSizeF sizeForItem(QObject* collection, int row, double frameWidth) const;
    Q_INVOKABLE double minimumLineSpacing(QObject* collection) const;
    Q_INVOKABLE double minimumInteritemSpacing(QObject* collection) const;
    Q_INVOKABLE double sectionInset(QObject* collection) const;

public slots:
    // Region lookup.
    void selectCity(QObject* sender = nullptr);
    void selectCounty(QObject* sender = nullptr);
    void dropDownListDelegateMethod(QObject* sender);
    void rel();

    // The steps.
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
    void chooseRole(const QString& type);
    void registerFarmer();
    void registerDealer();
    void setDropDown(QObject* list);
    // Adding checks the crop, updating does not.
    void addCrop();
    void updateCrop();
    void deleteCrop();
    // A crop's products as the panels show them: one name a line, or the given text for none.
    static QString productLines(const platform::Json& aps, const QString& none);
    platform::Json countyIdByName(const QString& name) const;

    RegistrationPolicy m_policy;
    platform::ViewController* m_host;
    QPointer<widgets::DropDownList> m_dropDown;
    farms::CropEditor* m_cropEditor;
};

} // namespace ekinora::accounts
