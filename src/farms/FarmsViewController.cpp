#include "FarmsViewController.h"
#include "widgets/Colors.h"

#include "PlantPanel.h"

#include "FarmerProductRequest.h"
#include "notifications/Bell.h"
#include "platform/AlertController.h"
#include "platform/NavigationController.h"
#include "platform/Overlays.h"
#include "platform/Platform.h"
#include "service/Replies.h"
#include "service/ServiceCall.h"
#include "service/TextHelpers.h"

#include <QPointer>

namespace ekinora::farms {

using namespace platform;

namespace {

const QString NoCropChosen = QStringLiteral("Ürün Seçiniz");
const QString NoProductsChosen = QStringLiteral("Zirai Ürün Seçiniz");
const QString NoProductsOnCard = QStringLiteral("Zirai Ürün Seçilmedi");
const QString FarmImagePlaceholder = QStringLiteral("tarlaBgImgDomates");
constexpr int MaxFarms = 3;
constexpr int MaxProducts = 3;




// A farm's products one a line, in the plain form of their names; a null text when it has none.
QString productLines(const Json& farm) {
    const Json aps = member(farm, QStringLiteral("aps"));
    const int n = count(aps);
    if (n == 0) return QString();
    QString text;
    for (int i = 0; i < n; ++i) text += stringWithFormat(QStringLiteral("%@\n"), {member(element(aps, i), QStringLiteral("name"))});
    text = service::plainProductName(text);
    text.chop(1); // the last line break
    return text;
}

} // namespace

FarmsViewController::FarmsViewController(QObject* parent)
    : ViewController(parent), collFarms(makeControl<TableView>("collFarms")), collPlants(makeControl<TableView>("collPlants")),
      tblProducts(makeControl<TableView>("tblProducts")), viewNewProduce(makeControl<View>("viewNewProduce")),
      viewPlant(makeControl<View>("viewPlant")), viewProduct(makeControl<View>("viewProduct")),
      lblFarm(makeControl<Label>("lblFarm")), lblProduct(makeControl<Label>("lblProduct")),
      lblProductAlert(makeControl<Label>("lblProductAlert")), txtFarmSize(makeControl<TextField>("txtFarmSize")),
      btnNewProduce(makeControl<Button>("btnNewProduce")), btnUpdateProduce(makeControl<Button>("btnUpdateProduce")),
      btnDeleteProduce(makeControl<Button>("btnDeleteProduce")),
      constCollPlantHeight(makeControl<LayoutConstraint>("constCollPlantHeight", 0.0)),
      constCollTopMargin(makeControl<LayoutConstraint>("constCollTopMargin", 0.0)) {
    setTitle(QStringLiteral("Tarlalarım"));
    notifications::Bell::install(this);
    lblProduct->setNumberOfLines(0);
    lblProductAlert->setNumberOfLines(0);
    lblProductAlert->setText(QStringLiteral("En fazla 3 tarla ekleyebilirsiniz."));
    lblProductAlert->setHidden(true);
    txtFarmSize->setKeyboardType(8);
    txtFarmSize->setPlaceholder(QStringLiteral("Örn. 25"));
    btnNewProduce->setTitle(QStringLiteral("Tarla Ekle"));
    btnUpdateProduce->setTitle(QStringLiteral("Güncelle"));
    btnDeleteProduce->setTitle(QStringLiteral("Tarlayı Sil"));
    btnNewProduce->addTarget(this, &FarmsViewController::addProduct);
    btnUpdateProduce->addTarget(this, &FarmsViewController::updateProduce);
    btnDeleteProduce->addTarget(this, &FarmsViewController::deleteProduce);
    for (TableView* list : {collFarms, collPlants, tblProducts}) {
        const QString name = list->objectName();
        list->setDataSource([this, name](int section) { return numberOfItemsInSection(name, section); },
                            [this, name, list](int, int row) {
                                return cellRow(cellForItem(name, row), sizeForItem(name, row, list->size().width()));
                            });
        list->setDidSelectRow([this, name](int, int row) { didSelectItem(name, row); });
    }
}

QUrl FarmsViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Farms/FarmsView.qml")); }

void FarmsViewController::setNavigationBarTouches(bool enabled) {
    if (NavigationController* nav = navigationController()) nav->navigationBar()->setUserInteractionEnabled(enabled);
}

void FarmsViewController::viewDidLoad() {
    arrFarms = QJsonArray();
    arrPlants = QJsonArray();
    arrProducts = QJsonArray();
    arrSelectedProducts.clear();
    selectedPlantIndex = -1;
    // The three loads go together, each to its own list.
    getFarms();
    getPlants();
    getProducts();
    viewNewProduce->setHidden(true);
    viewPlant->setHidden(true);
    viewProduct->setHidden(true);
}

void FarmsViewController::viewDidAppear(bool) {
    setNotifBadge();
    notifications::Bell::observe(this);
}

void FarmsViewController::setNotifBadge() { notifications::Bell::setNotifBadge(this); }

void FarmsViewController::getFarms() {
    service::ScreenCall call(this, QStringLiteral("getFarms"), service::ScreenCall::WithHud);
    FarmerProductRequest request;
    request.doParam = QStringLiteral("farmer/produces");
    request.requestData(call.done([this](const Json& response) {
                            // The status is not looked at here.
                            arrFarms = service::listOf(path(response, {QStringLiteral("data"), QStringLiteral("farmerProduces")}));
                            collFarms->reloadData();
                        }),
                        call.failed());
}

void FarmsViewController::getPlants() {
    service::ScreenCall call(this, QStringLiteral("getPlants"));
    FarmerProductRequest request;
    request.doParam = QStringLiteral("produces");
    request.requestData(call.done([this](const Json& response) {
                            arrPlants = service::listOf(path(response, {QStringLiteral("data"), QStringLiteral("produces")}));
                            collPlants->reloadData();
                            constCollPlantHeight->setConstant(plantPanelHeight(int(arrPlants.size()), Window::Height));
                        }),
                        call.failed());
}

void FarmsViewController::getProducts() {
    service::ScreenCall call(this, QStringLiteral("getProducts"));
    FarmerProductRequest request;
    request.doParam = QStringLiteral("produce/aps");
    request.requestData(call.done([this](const Json& response) {
                            arrProducts = service::plainProducts(path(response, {QStringLiteral("data"), QStringLiteral("aps")}));
                            tblProducts->reloadData();
                        }),
                        call.failed());
}

int FarmsViewController::numberOfItemsInSection(const QString& list, int) {
    if (list == QLatin1String("collFarms")) {
        // Exactly three: the adding cell goes and the notice takes its place above the list. Any other
        // number, four included, keeps the adding cell.
        if (arrFarms.size() == MaxFarms) {
            lblProductAlert->setHidden(false);
            constCollTopMargin->setConstant(32);
            return MaxFarms;
        }
        lblProductAlert->setHidden(true);
        constCollTopMargin->setConstant(0);
        return int(arrFarms.size()) + 1;
    }
    if (list == QLatin1String("collPlants")) return int(arrPlants.size());
    return int(arrProducts.size());
}

QVariantMap FarmsViewController::cellForItem(const QString& list, int row) const {
    QVariantMap cell;
    // A view still showing rows of a longer list may ask for one that is gone: it gets an empty cell.
    if (list == QLatin1String("collFarms")) {
        if (row < 0 || row > arrFarms.size()) return cell;
        if (row == arrFarms.size()) {
            cell.insert(QStringLiteral("reuseIdentifier"), QStringLiteral("NewFarmCell"));
            return cell;
        }
        const Json farm = element(arrFarms, row);
        const QString products = productLines(farm);
        cell.insert(QStringLiteral("reuseIdentifier"), QStringLiteral("FarmCell"));
        cell.insert(QStringLiteral("lblFarm"), stringOrNull(member(farm, QStringLiteral("name"))));
        cell.insert(QStringLiteral("lblFarmSize"), stringWithFormat(QStringLiteral("%@ dekar"), {member(farm, QStringLiteral("range"))}));
        cell.insert(QStringLiteral("lblProducts"), products.isNull() ? NoProductsOnCard : products);
        // A null picture shows the bundled field; an absent one shows nothing.
        const Json image = member(farm, QStringLiteral("image"));
        cell.insert(QStringLiteral("imgBack"), image.isNull() ? FarmImagePlaceholder : QString());
        cell.insert(QStringLiteral("imgBackUrl"), image.isString() ? image.toString() : QString());
        cell.insert(QStringLiteral("cornerRadius"), 3);
        cell.insert(QStringLiteral("clipsToBounds"), true);
        return cell;
    }
    const bool plants = list == QLatin1String("collPlants");
    if (row < 0 || row >= (plants ? arrPlants : arrProducts).size()) return cell;
    const Json record = element(plants ? arrPlants : arrProducts, row);
    const QString name = stringOrNull(member(record, QStringLiteral("name")));
    const bool chosen = plants ? row == selectedPlantIndex : arrSelectedProducts.contains(name);
    cell.insert(QStringLiteral("reuseIdentifier"), plants ? QStringLiteral("PlantCell") : QStringLiteral("ProductCell"));
    cell.insert(plants ? QStringLiteral("lblPlantName") : QStringLiteral("textLabel"), name);
    cell.insert(QStringLiteral("textColor"), chosen ? widgets::Colors::leaf() : widgets::Colors::black());
    cell.insert(QStringLiteral("underline"), chosen);
    if (!plants) cell.insert(QStringLiteral("selectionStyle"), 0);
    return cell;
}

QSizeF FarmsViewController::sizeForItem(const QString& list, int row, double listWidth) const {
    if (list == QLatin1String("collFarms")) return {listWidth - 32, row == arrFarms.size() ? 65.0 : 190.0};
    if (list == QLatin1String("collPlants")) return {(listWidth - 1) / 2, 50.0};
    return {listWidth, 50.0};
}

void FarmsViewController::didSelectItem(const QString& list, int row) {
    if (list == QLatin1String("collFarms")) {
        if (row == arrFarms.size()) openNewProduceView();
        else openFarm(row);
    } else if (list == QLatin1String("collPlants")) {
        // A tap on the chosen crop unchooses it.
        selectedPlantIndex = selectedPlantIndex == row ? -1 : row;
        collPlants->reloadData();
        removePlantsView();
    } else {
        const QString name = stringOrNull(member(element(arrProducts, row), QStringLiteral("name")));
        if (arrSelectedProducts.contains(name)) arrSelectedProducts.removeAll(name);
        else if (arrSelectedProducts.size() < MaxProducts) arrSelectedProducts.append(name);
        // A fourth product is not taken, and nothing is said.
        tblProducts->reloadData();
    }
}

void FarmsViewController::openNewProduceView(QObject*) {
    viewNewProduce->setHidden(false);
    setNavigationBarTouches(false);
    lblFarm->setText(NoCropChosen);
    txtFarmSize->setText(QString());
    lblProduct->setText(NoProductsChosen);
    arrSelectedProducts.clear();
    btnDeleteProduce->setHidden(true);
    btnUpdateProduce->setHidden(true);
    btnNewProduce->setHidden(false);
    // The chosen crop's row and the farm under edit stay as they were.
}

void FarmsViewController::openFarm(int row) {
    const Json farm = element(arrFarms, row);
    selectedProduceID = member(farm, QStringLiteral("id"));
    lblFarm->setText(stringOrNull(member(farm, QStringLiteral("name"))));
    txtFarmSize->setText(description(member(farm, QStringLiteral("range"))));
    const QString products = productLines(farm);
    lblProduct->setText(products.isNull() ? NoProductsChosen : products);
    // Taken from the label as it reads, so a farm without products holds the placeholder.
    arrSelectedProducts = lblProduct->text().split(QLatin1Char('\n'));
    viewNewProduce->setHidden(false);
    btnDeleteProduce->setHidden(false);
    btnUpdateProduce->setHidden(false);
    btnNewProduce->setHidden(true);
    setNavigationBarTouches(false);
    // The crop panel keeps the row chosen last, whatever this farm's crop.
}

void FarmsViewController::removeNewProduceView(QObject*) {
    viewNewProduce->setHidden(true);
    endEditing();
    setNavigationBarTouches(true);
}

void FarmsViewController::openPlantsView(QObject*) {
    viewPlant->setHidden(false);
    endEditing();
}

void FarmsViewController::removePlantsView(QObject*) {
    viewPlant->setHidden(true);
    // Closing with nothing chosen wipes the crop an existing farm brought in.
    lblFarm->setText(selectedPlantIndex == -1
                         ? NoCropChosen
                         : stringOrNull(member(element(arrPlants, selectedPlantIndex), QStringLiteral("name"))));
}

void FarmsViewController::openProductView(QObject*) {
    viewProduct->setHidden(false);
    endEditing();
    arrSelectedProducts.clear();
    if (lblProduct->text() != NoProductsChosen) arrSelectedProducts = lblProduct->text().split(QLatin1Char('\n'));
    tblProducts->reloadData();
}

void FarmsViewController::removeProductView(QObject*) { viewProduct->setHidden(true); }

void FarmsViewController::acceptProductView(QObject*) {
    viewProduct->setHidden(true);
    lblProduct->setText(arrSelectedProducts.isEmpty() ? NoProductsChosen : arrSelectedProducts.join(QLatin1Char('\n')));
}

void FarmsViewController::addProduct(QObject*) { sendFarm(false); }

void FarmsViewController::updateProduce(QObject*) { sendFarm(true); }

void FarmsViewController::sendFarm(bool update) {
    service::ScreenCall call(this, QStringLiteral("produce/set"), service::ScreenCall::WithHud);
    FarmerProductRequest request;
    request.doParam = QStringLiteral("produce/set");
    if (update) request.objectID = selectedProduceID;
    request.range = txtFarmSize->text();
    // Names back to ids, in the order chosen; a name that matches nothing adds nothing.
    QJsonArray ids;
    for (const QString& name : std::as_const(arrSelectedProducts))
        for (const auto& product : std::as_const(arrProducts))
            if (isString(member(product, QStringLiteral("name")), name)) ids.append(member(product, QStringLiteral("id")));
    request.apsList = ids;
    // The crop by its shown name; the last of equal names wins, and no match sends no crop.
    for (const auto& plant : std::as_const(arrPlants))
        if (isString(member(plant, QStringLiteral("name")), lblFarm->text())) request.produceID = member(plant, QStringLiteral("id"));
    request.addProduct(call.done([this, update](const Json& response) {
                           if (service::statusOf(response) != 200) return service::showFirstError(this, response);
                           if (update) txtFarmSize->resignFirstResponder();
                           removeNewProduceView();
                           getFarms();
                       }),
                       call.failed());
}

void FarmsViewController::deleteProduce(QObject*) {
    service::ScreenCall call(this, QStringLiteral("produce/delete"), service::ScreenCall::WithHud);
    FarmerProductRequest request;
    request.doParam = QStringLiteral("produce/delete");
    request.objectID = selectedProduceID;
    request.requestData(call.done([this](const Json& response) {
                            // A refusal leaves the panel open, without a word.
                            if (service::statusOf(response) != 200) return;
                            removeNewProduceView();
                            getFarms();
                        }),
                        call.failed());
}

} // namespace ekinora::farms
