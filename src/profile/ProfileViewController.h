#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/ViewController.h"
#include "widgets/DropDownList.h"

#include <QJsonArray>
#include <QPointer>

namespace ekinora::profile {

// "Profilim": the farmer's name, e-mail and place, with the city and county picked from the service's
// lists. The phone number is the login and is only shown.
class ProfileViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::TextField, txtName)
    UI_OUTLET(ekinora::platform::TextField, txtMail)
    UI_OUTLET(ekinora::platform::TextField, txtPhone)
    UI_OUTLET(ekinora::platform::TextField, txtCity)
    UI_OUTLET(ekinora::platform::TextField, txtCounty)
    UI_OUTLET(ekinora::platform::Button, btnCity)
    UI_OUTLET(ekinora::platform::Button, btnCounty)
    UI_OUTLET(ekinora::platform::Button, updateButton)
    Q_PROPERTY(ekinora::widgets::DropDownList* dropDownCityCounty READ dropDownCityCounty NOTIFY dropDownChanged)
public:
    static constexpr int CityListTag = 101;
    static constexpr int CountyListTag = 102;

    explicit ProfileViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    // State.
    QJsonArray arrCities, arrCounties;
    platform::Json memberType{QJsonValue::Undefined}; // kept from the reply, read by nothing
    platform::Json memberTypeUD{QJsonValue::Undefined}; // kept, never written

    platform::TextField *txtName, *txtMail, *txtPhone, *txtCity, *txtCounty;
    platform::Button *btnCity, *btnCounty, *updateButton;
    widgets::DropDownList* dropDownCityCounty() const { return m_dropDown; }

    void viewDidLoad() override;
    void viewDidAppear(bool animated) override;

    void getProfile();
    void getCities();
    // keepCounty: the list is loaded for the place already shown, whose county stays.
    void getCounties(bool keepCounty);
    void checkFromMenu() {}
    bool textFieldShouldReturn(platform::TextField* field);

public slots:
    void setNotifBadge();
    void selectCity(QObject* sender = nullptr);
    void selectCounty(QObject* sender = nullptr);
    void dropDownListDelegateMethod(QObject* sender);
    void rel();
    void updateProfile(QObject* sender = nullptr);

signals:
    void dropDownChanged();

private:
    void setDropDown(widgets::DropDownList* list);
    void openList(QObject* sender, const QJsonArray& records, int tag);
    QPointer<widgets::DropDownList> m_dropDown;
};

} // namespace ekinora::profile
