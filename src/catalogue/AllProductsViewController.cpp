#include "AllProductsViewController.h"

#include "CatalogueAlerts.h"
#include "CatalogueRequests.h"
#include "ProductListViews.h"
#include "platform/Overlays.h"
#include "platform/Platform.h"
#include "service/TextHelpers.h"

namespace ekinora::catalogue {

using namespace platform;

AllProductsViewController::AllProductsViewController(QObject* parent)
    : ViewController(parent), searchBar(makeControl<TextField>("searchBar")), tableView(makeControl<TableView>("tableView")),
      collectionView(makeControl<TableView>("collectionView")) {
    searchBar->setPlaceholder(QStringLiteral("Ürün ara"));
    addSegue(QStringLiteral("toProductDetailFromAllVC"), SegueKind::Show, QStringLiteral("ProductDetailSB"));
    // Made with the screen, so that the bar shows it from the first push.
    auto* item = gridSwitch(this);
    item->addTarget(this, &AllProductsViewController::changeGridWithSender);
    setRightBarButtonItem(item);
}

QUrl AllProductsViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Catalogue/AllProductsView.qml")); }

void AllProductsViewController::viewDidLoad() {
    tableView->setDataSource([this](int) { return numberOfItems(); },
                             [this](int, int row) {
                                 return ListRow{QStringLiteral("productCell"), cellValues(QStringLiteral("productCell"), row),
                                                QSizeF(tableView->size().width(), 96), 0, row};
                             });
    collectionView->setDataSource([this](int) { return numberOfItems(); },
                                  [this](int, int row) {
                                      return ListRow{QStringLiteral("allProductCell"),
                                                     cellValues(QStringLiteral("allProductCell"), row),
                                                     gridCellSize(collectionView), 0, row};
                                  });
    tableView->setDidSelectRow([this](int, int row) { didSelectRow(row); });
    collectionView->setDidSelectRow([this](int, int row) { didSelectRow(row); });
    collectionView->setHidden(true);
    tableView->setHidden(false);
    onEditingChanged(searchBar, [this] { searchTextChanged(searchBar); });
    searchBar->setShouldReturn([this](TextField*) {
        searchBarSearchButtonClicked(searchBar);
        return true;
    });
    searchBegin = false;
    loadProducts();
}

void AllProductsViewController::loadProducts() {
    // A failed fetch shows an empty list.
    productList() = Product{};
    GetProductsRequest().getProducts([screen = strong(this)](const Product&, const Error& error) {
        if (error) return showAlert(QStringLiteral("Bilinmeyen Hata"), screen.get());
        WaitOverlay::removeAllOverlays(screen.get());
        auto& scheduler = Platform::current().scheduler();
        scheduler.after(0, [screen] { screen->tableView->reloadData(); });
        scheduler.after(0, [screen] { screen->collectionView->reloadData(); });
    });
}

int AllProductsViewController::numberOfItems() const {
    if (searchBegin) return int(indexArr.size());
    return productList().data ? int(productList().data->size()) : 0;
}

QVariantMap AllProductsViewController::cellValues(const QString& reuseIdentifier, int row) const {
    const int n = searchBegin ? indexArr.value(row) : row;
    const SubDataProduct product = productList().data.value_or(QList<SubDataProduct>{}).value(n);
    QVariantMap values{{QStringLiteral("reuseIdentifier"), reuseIdentifier},
                       {QStringLiteral("label1"), service::plainProductName(product.title.value_or(QString()))},
                       {QStringLiteral("label2"), product.group.value_or(QString())},
                       {QStringLiteral("imgView"), pictureAddress(product.image)}};
    if (reuseIdentifier == QLatin1String("productCell")) values.insert(QStringLiteral("borderWidth"), 0.4);
    return values;
}

void AllProductsViewController::searchTextChanged(QObject*) {
    indexArr.clear();
    if (searchBar->text().isEmpty()) {
        // Each clearing of the bar fetches the whole list anew.
        loadProducts();
        searchBegin = false;
    } else {
        searchBegin = true;
        if (!productList().data || productList().data->isEmpty())
            fatal(QStringLiteral("Fatal error: Range requires lowerBound <= upperBound"));
        const QList<SubDataProduct>& products = *productList().data;
        const QString needle = searchBar->text().toLower();
        // One short of the end: the last product of the list is never found.
        for (int i = 0; i < products.size() - 1; ++i) {
            if (!products.at(i).title)
                fatal(QStringLiteral("Fatal error: Unexpectedly found nil while unwrapping an Optional value (title)"));
            if (products.at(i).title->toLower().contains(needle)) indexArr.append(i);
        }
        // The matches' titles, a line each, written at once.
        QStringList titles;
        titles.reserve(indexArr.size());
        for (int i : std::as_const(indexArr)) titles << *products.at(i).title;
        if (!titles.isEmpty()) Platform::current().application().log(titles.join(QLatin1Char('\n')));
    }
    reloadLists();
}

// The list on show is reloaded at once; the hidden one when it is switched to, so that a keystroke
// pays for one list only.
void AllProductsViewController::reloadLists() {
    for (TableView* list : {tableView, collectionView}) {
        if (list->isHidden()) staleLists.insert(list);
        else list->reloadData();
    }
}

// The row as it stands, even during a search: the detail that opens is that of the product at that
// position in the whole list.
void AllProductsViewController::didSelectRow(int row) {
    const auto& data = productList().data;
    if (!data || row < 0 || row >= data->size())
        fatal(QStringLiteral("Fatal error: Index out of range"));
    const auto& id = data->at(row).id;
    if (!id) fatal(QStringLiteral("Fatal error: Unexpectedly found nil while unwrapping an Optional value (id)"));
    selectedProductId() = QString::number(*id);
    performSegueWithIdentifier(QStringLiteral("toProductDetailFromAllVC"), this);
}

void AllProductsViewController::changeGridWithSender(QObject*) {
    changeGrid(isList, tableView, collectionView, rightBarButtonItem());
    TableView* shown = isList ? collectionView : tableView;
    if (staleLists.remove(shown)) shown->reloadData();
}

void AllProductsViewController::searchBarSearchButtonClicked(QObject*) { searchBar->resignFirstResponder(); }

void AllProductsViewController::scrollViewWillBeginDragging(QObject*) { endEditing(); }

} // namespace ekinora::catalogue
