#include "CropEditor.h"

#include "FarmerProductRequest.h"
#include "PlantPanel.h"

#include "platform/NavigationController.h"
#include "platform/Window.h"
#include "service/Replies.h"
#include "service/ServiceCall.h"
#include "widgets/Colors.h"

namespace ekinora::farms {

using namespace platform;

CropEditor::CropEditor(CropEditorPolicy policy, ViewController* host)
    : ViewController(host), viewNewProduce(makeControl<View>("viewNewProduce")), viewPlant(makeControl<View>("viewPlant")),
      viewProduct(makeControl<View>("viewProduct")), lblFarm(makeControl<Label>("lblFarm")),
      lblProduct(makeControl<Label>("lblProduct")), txtFarmSize(makeControl<TextField>("txtFarmSize")),
      btnNewProduce(makeControl<Button>("btnNewProduce")), btnUpdateProduce(makeControl<Button>("btnUpdateProduce")),
      btnDeleteProduce(makeControl<Button>("btnDeleteProduce")), collPlants(makeControl<TableView>("collPlants")),
      tblProducts(makeControl<TableView>("tblProducts")),
      constCollPlantHeight(makeControl<LayoutConstraint>("constCollPlantHeight", 0.0)), m_policy(std::move(policy)),
      m_host(host) {
    // The host's stack is the panel's: the navigation bar and the keyboard are the host's.
    setParentController(host);
    lblProduct->setNumberOfLines(0);
    btnNewProduce->addTarget(this, &CropEditor::addProduct);
    btnUpdateProduce->addTarget(this, &CropEditor::updateProduce);
    btnDeleteProduce->addTarget(this, &CropEditor::deleteProduce);
    collPlants->setDataSource([this](int) { return int(arrPlants.size()); },
                              [this](int, int row) {
                                  return cellRow(plantCell(row), QSizeF((collPlants->size().width() - 1) / 2, 50));
                              });
    collPlants->setDidSelectRow([this](int, int row) { selectPlant(row); });
    tblProducts->setDataSource([this](int) { return int(arrProducts.size()); },
                               [this](int, int row) {
                                   return cellRow(productCell(row),
                                                  QSizeF(tblProducts->size().width(), m_policy.productRowHeight));
                               });
    tblProducts->setDidSelectRow([this](int, int row) { selectProduct(row); });
}

QUrl CropEditor::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Farms/CropEditorView.qml")); }

void CropEditor::load() {
    arrPlants = QJsonArray();
    arrProducts = QJsonArray();
    arrSelectedProducts.clear();
    selectedPlantIndex = -1;
    getPlants();
    getProducts();
    viewNewProduce->setHidden(true);
    viewPlant->setHidden(true);
    viewProduct->setHidden(true);
}

void CropEditor::getPlants() {
    // Sent for the host, which stays alive until the reply.
    service::ScreenCall call(m_host, QStringLiteral("getPlants"));
    FarmerProductRequest request;
    request.doParam = QStringLiteral("produces");
    request.requestData(call.done([this](const Json& response) {
                            if (m_policy.dropRefusedLists && service::statusOf(response) != 200) return;
                            arrPlants = service::listOf(path(response, {QStringLiteral("data"), QStringLiteral("produces")}));
                            collPlants->reloadData();
                            constCollPlantHeight->setConstant(plantPanelHeight(int(arrPlants.size()), Window::Height));
                        }),
                        call.failed());
}

void CropEditor::getProducts() {
    service::ScreenCall call(m_host, QStringLiteral("getProducts"));
    FarmerProductRequest request;
    request.doParam = QStringLiteral("produce/aps");
    request.requestData(call.done([this](const Json& response) {
                            if (m_policy.dropRefusedLists && service::statusOf(response) != 200) return;
                            arrProducts = service::plainProducts(path(response, {QStringLiteral("data"), QStringLiteral("aps")}));
                            tblProducts->reloadData();
                        }),
                        call.failed());
}

QString CropEditor::plantName(int row) const { return stringOrNull(member(arrPlants.at(row), QStringLiteral("name"))); }

QString CropEditor::productName(int row) const { return stringOrNull(member(arrProducts.at(row), QStringLiteral("name"))); }

QVariantMap CropEditor::plantCell(int row) const {
    QVariantMap cell;
    // A view still showing rows of a longer list may ask for one that is gone: it gets an empty cell.
    if (row < 0 || row >= arrPlants.size()) return cell;
    const bool chosen = row == selectedPlantIndex;
    cell.insert(QStringLiteral("reuseIdentifier"), QStringLiteral("PlantCell"));
    cell.insert(QStringLiteral("lblPlantName"), plantName(row));
    cell.insert(QStringLiteral("textColor"), chosen ? widgets::Colors::leaf() : widgets::Colors::black());
    cell.insert(QStringLiteral("underline"), chosen);
    return cell;
}

QVariantMap CropEditor::productCell(int row) const {
    QVariantMap cell;
    if (row < 0 || row >= arrProducts.size()) return cell;
    const QString name = productName(row);
    const bool chosen = arrSelectedProducts.contains(name);
    cell.insert(QStringLiteral("reuseIdentifier"), QStringLiteral("ProductCell"));
    cell.insert(m_policy.productTextControl, name);
    cell.insert(QStringLiteral("textColor"), chosen ? widgets::Colors::leaf() : widgets::Colors::black());
    cell.insert(QStringLiteral("underline"), chosen);
    if (m_policy.productSelectionStyle) cell.insert(QStringLiteral("selectionStyle"), 0);
    return cell;
}

void CropEditor::selectPlant(int row) {
    if (row < 0 || row >= arrPlants.size()) return;
    // A tap on the chosen crop unchooses it.
    selectedPlantIndex = selectedPlantIndex == row ? -1 : row;
    collPlants->reloadData();
    removePlantsView();
}

void CropEditor::selectProduct(int row) {
    if (row < 0 || row >= arrProducts.size()) return;
    const QString name = productName(row);
    // One past the limit is not taken, and nothing is said.
    if (arrSelectedProducts.contains(name)) arrSelectedProducts.removeAll(name);
    else if (arrSelectedProducts.size() < m_policy.productLimit) arrSelectedProducts.append(name);
    tblProducts->reloadData();
}

void CropEditor::setNavigationBarTouches(bool enabled) {
    if (!m_policy.holdNavigationBar) return;
    if (NavigationController* nav = navigationController()) nav->navigationBar()->setUserInteractionEnabled(enabled);
}

void CropEditor::openNewProduceView(QObject*) {
    if (m_policy.endEditingOnOpen) m_host->endEditing();
    viewNewProduce->setHidden(false);
    setNavigationBarTouches(false);
    lblFarm->setText(m_policy.noCrop);
    txtFarmSize->setText(QString());
    lblProduct->setText(m_policy.noProducts);
    if (m_policy.clearProductsOnOpen) arrSelectedProducts.clear();
    btnDeleteProduce->setHidden(true);
    btnUpdateProduce->setHidden(true);
    btnNewProduce->setHidden(false);
    // The chosen crop's row stays as it was.
}

void CropEditor::openCrop(const QString& crop, const QString& size, const QString& products) {
    lblFarm->setText(crop);
    txtFarmSize->setText(size);
    lblProduct->setText(products);
    // Taken from the label as it reads, so a crop without products holds the placeholder.
    arrSelectedProducts = lblProduct->text().split(QLatin1Char('\n'));
    viewNewProduce->setHidden(false);
    btnDeleteProduce->setHidden(false);
    btnUpdateProduce->setHidden(false);
    btnNewProduce->setHidden(true);
    setNavigationBarTouches(false);
    // The crop list keeps the row chosen last, whatever this crop's kind.
}

void CropEditor::removeNewProduceView(QObject*) {
    m_host->endEditing();
    viewNewProduce->setHidden(true);
    setNavigationBarTouches(true);
}

void CropEditor::openPlantsView(QObject*) {
    viewPlant->setHidden(false);
    m_host->endEditing();
}

void CropEditor::removePlantsView(QObject*) {
    viewPlant->setHidden(true);
    // Closing with nothing chosen wipes the crop an existing one brought in.
    lblFarm->setText(selectedPlantIndex < 0 || selectedPlantIndex >= arrPlants.size() ? m_policy.noCropOnClose
                                                                                      : plantName(selectedPlantIndex));
}

void CropEditor::openProductView(QObject*) {
    viewProduct->setHidden(false);
    m_host->endEditing();
    arrSelectedProducts.clear();
    if (lblProduct->text() != m_policy.noProducts) arrSelectedProducts = lblProduct->text().split(QLatin1Char('\n'));
    tblProducts->reloadData();
}

void CropEditor::removeProductView(QObject*) { viewProduct->setHidden(true); }

void CropEditor::acceptProductView(QObject*) {
    if (m_policy.endEditingOnAccept) m_host->endEditing();
    viewProduct->setHidden(true);
    lblProduct->setText(arrSelectedProducts.isEmpty() ? m_policy.noProducts : arrSelectedProducts.join(QLatin1Char('\n')));
}

void CropEditor::addProduct(QObject*) {
    if (m_policy.add) m_policy.add();
}

void CropEditor::updateProduce(QObject*) {
    if (m_policy.update) m_policy.update();
}

void CropEditor::deleteProduce(QObject*) {
    if (m_policy.remove) m_policy.remove();
}

QJsonArray CropEditor::chosenProductIds() const {
    QJsonArray ids;
    for (const QString& name : std::as_const(arrSelectedProducts))
        for (const auto& product : std::as_const(arrProducts))
            if (isString(member(product, QStringLiteral("name")), name)) ids.append(member(product, QStringLiteral("id")));
    return ids;
}

QJsonArray CropEditor::chosenProducts() const {
    QJsonArray chosen;
    for (const QString& name : std::as_const(arrSelectedProducts))
        for (const auto& product : std::as_const(arrProducts))
            if (isString(member(product, QStringLiteral("name")), name))
                chosen.append(QJsonObject{{QStringLiteral("id"), member(product, QStringLiteral("id"))},
                                          {QStringLiteral("name"), member(product, QStringLiteral("name"))}});
    return chosen;
}

Json CropEditor::chosenPlant() const {
    Json found{QJsonValue::Undefined};
    for (const auto& plant : std::as_const(arrPlants))
        if (isString(member(plant, QStringLiteral("name")), lblFarm->text())) found = plant;
    return found;
}

} // namespace ekinora::farms
