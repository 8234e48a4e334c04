#pragma once

#include "platform/Controls.h"
#include "platform/ViewController.h"

#include <QSet>

namespace ekinora::catalogue {

// The whole plant-protection catalogue, as a list or a two-column grid, with a search bar over it.
class AllProductsViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::TextField, searchBar)
    UI_OUTLET(ekinora::platform::TableView, tableView)
    UI_OUTLET(ekinora::platform::TableView, collectionView)
public:
    explicit AllProductsViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    platform::TextField* searchBar;
    platform::TableView* tableView;
    platform::TableView* collectionView;
    QList<int> indexArr;
    bool searchBegin = false;
    bool isList = false; // true while the grid is on show
    QSet<platform::TableView*> staleLists; // hidden while the search changed their rows

    void viewDidLoad() override;
    void loadProducts();
    int numberOfItems() const;
    // A cell's values by control name: "productCell" in the table, "allProductCell" in the grid.
    QVariantMap cellValues(const QString& reuseIdentifier, int row) const;
    void didSelectRow(int row);
    void reloadLists();

public slots:
    void changeGridWithSender(QObject* sender = nullptr);
    void searchTextChanged(QObject* sender = nullptr);
    void searchBarSearchButtonClicked(QObject* sender = nullptr);
    void scrollViewWillBeginDragging(QObject* sender = nullptr);
};

} // namespace ekinora::catalogue
