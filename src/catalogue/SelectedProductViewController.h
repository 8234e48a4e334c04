#pragma once

#include "platform/Controls.h"
#include "platform/ViewController.h"

#include <QStringList>

namespace ekinora::catalogue {

// The filter's result: the chosen names as chips over the products, as a list or a two-column grid.
class SelectedProductViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::TableView, tableView)
    UI_OUTLET(ekinora::platform::TableView, collectionViewBottom)
    UI_OUTLET(ekinora::platform::TableView, collectionViewTop)
public:
    explicit SelectedProductViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    platform::TableView* tableView;
    platform::TableView* collectionViewBottom;
    platform::TableView* collectionViewTop;
    bool isList = false;
    QList<int> indexArr; // never filled
    QStringList topLblArr;
    bool searchBegin = false; // never true

    void viewDidLoad() override;
    void loadSelectedProducts();
    int numberOfItems() const;
    QVariantMap cellValues(const QString& reuseIdentifier, int row) const;
    void didSelectRow(int row);

public slots:
    void changeGridWithSender(QObject* sender = nullptr);
};

} // namespace ekinora::catalogue
