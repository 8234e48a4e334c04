#include "FarmsViewController.h"
#include "widgets/Colors.h"

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

const QString NoProductsOnCard = QStringLiteral("Zirai Ürün Seçilmedi");
const QString FarmImagePlaceholder = QStringLiteral("tarlaBgImgDomates");
constexpr int MaxFarms = 3;

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
    : ViewController(parent), collFarms(makeControl<TableView>("collFarms")),
      lblProductAlert(makeControl<Label>("lblProductAlert")),
      constCollTopMargin(makeControl<LayoutConstraint>("constCollTopMargin", 0.0)) {
    CropEditorPolicy policy;
    policy.productSelectionStyle = true;
    policy.holdNavigationBar = true;
    policy.sizeCaption = QStringLiteral("Tarla büyüklüğü (dekar)");
    policy.sizePurpose = QStringLiteral("Tarla büyüklüğü (dekar)");
    policy.productCaption = QStringLiteral("Kullandığınız zirai ürünler (en fazla 3)");
    policy.productPurpose = QStringLiteral("Zirai ürünler");
    policy.purposeWithValue = true;
    policy.productsHint = QStringLiteral("En fazla 3 ürün");
    policy.add = [this] { sendFarm(false); };
    policy.update = [this] { sendFarm(true); };
    policy.remove = [this] { deleteFarm(); };
    m_cropEditor = new CropEditor(std::move(policy), this);
    setTitle(QStringLiteral("Tarlalarım"));
    notifications::Bell::install(this);
    lblProductAlert->setNumberOfLines(0);
    lblProductAlert->setText(QStringLiteral("En fazla 3 tarla ekleyebilirsiniz."));
    lblProductAlert->setHidden(true);
    m_cropEditor->txtFarmSize->setKeyboardType(8);
    m_cropEditor->txtFarmSize->setPlaceholder(QStringLiteral("Örn. 25"));
    m_cropEditor->btnNewProduce->setTitle(QStringLiteral("Tarla Ekle"));
    m_cropEditor->btnUpdateProduce->setTitle(QStringLiteral("Güncelle"));
    m_cropEditor->btnDeleteProduce->setTitle(QStringLiteral("Tarlayı Sil"));
    collFarms->setDataSource([this](int) { return numberOfItems(); },
                             [this](int, int row) { return cellRow(farmCell(row), farmCellSize(row, collFarms->size().width())); });
    collFarms->setDidSelectRow([this](int, int row) { didSelectFarm(row); });
}

QUrl FarmsViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Farms/FarmsView.qml")); }

void FarmsViewController::viewDidLoad() {
    embed(m_cropEditor, "cropEditorSlot");
    arrFarms = QJsonArray();
    // The three loads go together, each to its own list.
    getFarms();
    m_cropEditor->load();
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

int FarmsViewController::numberOfItems() {
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

QVariantMap FarmsViewController::farmCell(int row) const {
    QVariantMap cell;
    // A view still showing rows of a longer list may ask for one that is gone: it gets an empty cell.
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

QSizeF FarmsViewController::farmCellSize(int row, double listWidth) const {
    return {listWidth - 32, row == arrFarms.size() ? 65.0 : 190.0};
}

void FarmsViewController::didSelectFarm(int row) {
    if (row == arrFarms.size()) m_cropEditor->openNewProduceView();
    else openFarm(row);
}

void FarmsViewController::openFarm(int row) {
    const Json farm = element(arrFarms, row);
    selectedProduceID = member(farm, QStringLiteral("id"));
    const QString products = productLines(farm);
    m_cropEditor->openCrop(stringOrNull(member(farm, QStringLiteral("name"))), description(member(farm, QStringLiteral("range"))),
                           products.isNull() ? m_cropEditor->policy().noProducts : products);
}

void FarmsViewController::sendFarm(bool update) {
    service::ScreenCall call(this, QStringLiteral("produce/set"), service::ScreenCall::WithHud);
    FarmerProductRequest request;
    request.doParam = QStringLiteral("produce/set");
    if (update) request.objectID = selectedProduceID;
    request.range = m_cropEditor->txtFarmSize->text();
    request.apsList = m_cropEditor->chosenProductIds();
    // No match sends no crop.
    const Json plant = m_cropEditor->chosenPlant();
    if (!plant.isUndefined()) request.produceID = member(plant, QStringLiteral("id"));
    request.addProduct(call.done([this, update](const Json& response) {
                           if (service::statusOf(response) != 200) return service::showFirstError(this, response);
                           if (update) m_cropEditor->txtFarmSize->resignFirstResponder();
                           m_cropEditor->removeNewProduceView();
                           getFarms();
                       }),
                       call.failed());
}

void FarmsViewController::deleteFarm() {
    service::ScreenCall call(this, QStringLiteral("produce/delete"), service::ScreenCall::WithHud);
    FarmerProductRequest request;
    request.doParam = QStringLiteral("produce/delete");
    request.objectID = selectedProduceID;
    request.requestData(call.done([this](const Json& response) {
                            // A refusal leaves the panel open, without a word.
                            if (service::statusOf(response) != 200) return;
                            m_cropEditor->removeNewProduceView();
                            getFarms();
                        }),
                        call.failed());
}

} // namespace ekinora::farms
