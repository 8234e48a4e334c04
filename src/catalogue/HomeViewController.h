#pragma once

#include "LocationManager.h"
#include "platform/Controls.h"
#include "platform/ViewController.h"

namespace ekinora::catalogue {

// The plant-protection catalogue's entry: three rows (plant, product group, illness) that open one
// slide-in panel with a table and a search field. The choice lives in the process-wide variables that
// the result list reads; no segue carries data.
class HomeViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::Button, closeButton)
    UI_OUTLET(ekinora::platform::TableView, tableView)
    UI_OUTLET(ekinora::platform::View, categoriesView)
    UI_OUTLET(ekinora::platform::View, bitkiAdiView)
    UI_OUTLET(ekinora::platform::View, urunGrubuView)
    UI_OUTLET(ekinora::platform::View, hastalikView)
    UI_OUTLET(ekinora::platform::Label, plantNameLbl)
    UI_OUTLET(ekinora::platform::Label, disasterLbl)
    UI_OUTLET(ekinora::platform::Label, productGrpLbl)
    UI_OUTLET(ekinora::platform::ImageView, searchImgView)
    UI_OUTLET(ekinora::platform::TextField, searchText)
public:
    explicit HomeViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    platform::Button* closeButton;
    LocationManager* const locationManager;
    platform::TableView* tableView;
    platform::View *categoriesView, *bitkiAdiView, *urunGrubuView, *hastalikView;
    platform::Label *plantNameLbl, *disasterLbl, *productGrpLbl;
    platform::ImageView* searchImgView;
    platform::TextField* searchText;

    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;

    void loadFilters();
    void openFilterPanel(int kind);
    void selectFilterRow(int row);
    void narrowNames();
    // Kept although nothing calls it.
    void askForLocationAccess();

    int numberOfRows() const;
    QString rowText(int row) const;

public slots:
    void bitkiAdiTapped(QObject* sender = nullptr);
    void urunGrubuTapped(QObject* sender = nullptr);
    void hastalikTapped(QObject* sender = nullptr);
    void closeButtonTapped(QObject* sender = nullptr);
    void clearFiltersButtonTapped(QObject* sender = nullptr);
    void selectedProductButtonTapped(QObject* sender = nullptr);
    void textFieldDidChange(QObject* sender = nullptr);
    // The button under the rows that leads to the whole catalogue.
    void showAllProducts(QObject* sender = nullptr);
    // The spray programmes have no entry of their own in the menu: they open from here.
    void showSprayPrograms(QObject* sender = nullptr);

private:
    void fillFilterLists(bool reload);
};

} // namespace ekinora::catalogue
