#include "SelectedProductViewController.h"

#include "CatalogueAlerts.h"
#include "CatalogueRequests.h"
#include "ProductListViews.h"
#include "platform/Overlays.h"
#include "platform/Platform.h"
#include "service/TextHelpers.h"

namespace ekinora::catalogue {

using namespace platform;

SelectedProductViewController::SelectedProductViewController(QObject* parent)
    : ViewController(parent), tableView(makeControl<TableView>("tableView")),
      collectionViewBottom(makeControl<TableView>("collectionViewBottom")),
      collectionViewTop(makeControl<TableView>("collectionViewTop")) {
    addSegue(QStringLiteral("toProductDetailFromSelectedVC"), SegueKind::Show, QStringLiteral("ProductDetailSB"));
    // Made with the screen, so that the bar shows it from the first push.
    auto* item = gridSwitch(this);
    item->addTarget(this, &SelectedProductViewController::changeGridWithSender);
    setRightBarButtonItem(item);
}

QUrl SelectedProductViewController::viewSource() const {
    return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Catalogue/SelectedProductView.qml"));
}

void SelectedProductViewController::viewDidLoad() {
    tableView->setDataSource([this](int) { return numberOfItems(); },
                             [this](int, int row) {
                                 return ListRow{QStringLiteral("selectedProductCell"),
                                                cellValues(QStringLiteral("selectedProductCell"), row),
                                                QSizeF(tableView->size().width(), 96), 0, row};
                             });
    collectionViewBottom->setDataSource([this](int) { return numberOfItems(); },
                                        [this](int, int row) {
                                            return ListRow{QStringLiteral("productCell"),
                                                           cellValues(QStringLiteral("productCell"), row),
                                                           gridCellSize(collectionViewBottom), 0, row};
                                        });
    collectionViewTop->setDataSource([this](int) { return int(topLblArr.size()); },
                                     [this](int, int row) {
                                         return ListRow{QStringLiteral("topCollectionViewCell"),
                                                        {{QStringLiteral("topLbl"), topLblArr.value(row)}},
                                                        QSizeF(collectionViewTop->size().width() / 2.5, 80), 0, row};
                                     });
    tableView->setDidSelectRow([this](int, int row) {
        Platform::current().application().log(QString::number(row));
        didSelectRow(row);
    });
    collectionViewBottom->setDidSelectRow([this](int, int row) { didSelectRow(row); });
    collectionViewBottom->setHidden(true);
    tableView->setHidden(false);
    searchBegin = false;
    for (const QString& name : {selectedPgroupName(), selectedPlantName(), selectedIllnessName()})
        if (name != QLatin1String("")) topLblArr.append(name);
    collectionViewTop->reloadData();
    loadSelectedProducts();
}

void SelectedProductViewController::loadSelectedProducts() {
    WaitOverlay::showWaitOverlayWithText(this, QString());
    const QString plant = selectedPlantId().isEmpty() ? QString("") : QStringLiteral("&plant=") + selectedPlantId();
    const QString pgroup = selectedPgroupId().isEmpty() ? QString("") : QStringLiteral("&pgroup=") + selectedPgroupId();
    const QString illness = selectedIllnessId().isEmpty() ? QString("") : QStringLiteral("&illness=") + selectedIllnessId();
    GetFilteredProductRequest().getFilteredProducts(
        paths::Products + plant + pgroup + illness,
        [screen = strong(this)](const std::optional<FilteredProduct>&, const Error& error) {
            // On an error the overlay stays.
            if (error) return showAlert(QStringLiteral("Bilinmeyen bir hata oluştu"), screen.get());
            WaitOverlay::removeAllOverlays(screen.get());
            screen->tableView->reloadData();
            screen->collectionViewBottom->reloadData();
        });
}

int SelectedProductViewController::numberOfItems() const {
    return filteredProducts() ? int(filteredProducts()->data.size()) : 0;
}

QVariantMap SelectedProductViewController::cellValues(const QString& reuseIdentifier, int row) const {
    const FilteredProductSubdata product = filteredProducts() ? filteredProducts()->data.value(row) : FilteredProductSubdata{};
    const QString title = service::plainProductName(product.title);
    const QString image = pictureAddress(product.image);
    if (reuseIdentifier == QLatin1String("productCell"))
        return {{QStringLiteral("reuseIdentifier"), reuseIdentifier}, {QStringLiteral("nameLabel"), title},
                {QStringLiteral("typeLabel"), product.group}, {QStringLiteral("imgView"), image},
                {QStringLiteral("borderWidth"), 0.3}};
    return {{QStringLiteral("reuseIdentifier"), reuseIdentifier}, {QStringLiteral("label1"), title},
            {QStringLiteral("label2"), product.group}, {QStringLiteral("imgView"), image},
            {QStringLiteral("borderWidth"), 0.4}};
}

void SelectedProductViewController::didSelectRow(int row) {
    const auto& id = filteredProducts()->data.at(row).id;
    if (!id) fatal(QStringLiteral("Fatal error: Unexpectedly found nil while unwrapping an Optional value (id)"));
    selectedProductId() = QString::number(*id);
    performSegueWithIdentifier(QStringLiteral("toProductDetailFromSelectedVC"), this);
}

void SelectedProductViewController::changeGridWithSender(QObject*) {
    changeGrid(isList, tableView, collectionViewBottom, rightBarButtonItem());
}

} // namespace ekinora::catalogue
