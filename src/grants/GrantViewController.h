#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/Overlays.h"
#include "platform/ViewController.h"
#include "widgets/DropDownList.h"

#include <QJsonArray>
#include <QPointer>
#include <QVariantMap>

namespace ekinora::grants {

// "Hibe Destek": the support programmes for one county and crop, picked from three drop-down buttons.
// The buttons' titles are the whole choice: the ids sent are looked up by those titles.
class GrantViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::TableView, collGrant)
    UI_OUTLET(ekinora::platform::Button, btnCity)
    UI_OUTLET(ekinora::platform::Button, btnCounty)
    UI_OUTLET(ekinora::platform::Button, btnProduct)
    UI_OUTLET(ekinora::platform::View, imgBack)
    // The open list, for the arrangement; null once forgotten.
    Q_PROPERTY(ekinora::widgets::DropDownList* dropDown READ dropDown NOTIFY dropDownChanged)
public:
    static const QString NoCity, NoCounty, NoProduct;
    static constexpr int CityTag = 101, CountyTag = 102, ProductTag = 103;

    explicit GrantViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    QJsonArray arrGrants, arrCities, arrCounties, arrProducts;
    widgets::DropDownList* dropDown() const { return m_dropDown; }
    QPointer<platform::ProgressHUD> hud;

    platform::TableView* collGrant;
    platform::Button *btnCity, *btnCounty, *btnProduct;
    platform::View* imgBack;

    void viewDidLoad() override;
    void viewDidAppear(bool animated) override;

    void getCities();
    void getProducts();
    // Loads the counties of the city the button shows; true keeps the county title as it is.
    void getCounties(bool keepCounty);

    // The first record of the list whose "name" is the title; nil when none is.
    platform::Json findCityID(const QString& name) const;
    platform::Json findCountyID(const QString& name) const;
    platform::Json findProductID(const QString& name) const;

    QVariantMap grantCell(int row) const;

public slots:
    void setNotifBadge();
    void selectCity(QObject* sender = nullptr);
    void selectCounty(QObject* sender = nullptr);
    void selectProduct(QObject* sender = nullptr);
    void dropDownListDelegateMethod(QObject* sender);
    void rel();
    void getGrants(QObject* sender = nullptr);

signals:
    void dropDownChanged();

protected:
    void prepareForSegue(const platform::StoryboardSegue& segue, QObject* sender) override;

private:
    void openList(QObject* sender, const QJsonArray& records, int tag);
    void setDropDown(widgets::DropDownList* list);
    void alert(const QString& message);
    QPointer<widgets::DropDownList> m_dropDown;
    int m_selectedRow = -1;
};

} // namespace ekinora::grants
