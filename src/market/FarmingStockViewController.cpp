#include "FarmingStockViewController.h"

#include "notifications/Bell.h"
#include "platform/Platform.h"
#include "service/Replies.h"
#include "service/ServiceCall.h"
#include "service/ServiceRoots.h"
#include "service/WSRequest.h"
#include "widgets/Colors.h"

#include <QDateTime>

namespace ekinora::market {

using namespace platform;

namespace {

const QString AllGroups = QStringLiteral("Tüm Ürün Grupları");
// A crop without a price in the list has no city to name.
const QString NoPrice = QStringLiteral("Fiyat bilgisi yok");
constexpr float RowHeightOfMenu = 50;
constexpr int ShortMenu = 6;

QString textOf(const Json& value) { return value.isString() ? value.toString() : description(value); }

} // namespace

QString priceText(const Json& value) { return stringWithFormat(QStringLiteral("%.2f TL"), {double(floatValue(value))}); }

FarmingStockViewController::FarmingStockViewController(QObject* parent)
    : ViewController(parent), tblStocks(makeControl<TableView>("tblStocks")), imgSegment(makeControl<ImageView>("imgSegment")),
      btnFilter(makeControl<Button>("btnFilter")), btnStockH(makeControl<Button>("btnStockH")),
      btnStockB(makeControl<Button>("btnStockB")), switchLocation(makeControl<Switch>("switchLocation")) {
    setTitle(QStringLiteral("Tarım Borsası"));
    notifications::Bell::install(this);
    imgSegment->setImage(QStringLiteral("tab1"));
    btnFilter->setTitle(AllGroups);
    btnStockH->setTag(TabH);
    btnStockB->setTag(TabB);
    btnStockH->setTitle(QStringLiteral("Hal Fiyatları"));
    btnStockB->setTitle(QStringLiteral("Borsa Fiyatları"));
    btnStockH->addTarget(this, &FarmingStockViewController::changeStockType);
    btnStockB->addTarget(this, &FarmingStockViewController::changeStockType);
    btnFilter->addTarget(this, &FarmingStockViewController::openProductMenu);
    switchLocation->addTarget(this, &FarmingStockViewController::changeLocationType);
    tblStocks->setDataSource([this](int) { return int(arrProduce.size()); },
                             [this](int, int row) { return cellRow(stockCell(row), QSizeF(tblStocks->size().width(), 84)); });
    tblStocks->setDidSelectRow([this](int, int row) {
        if (row < 0 || row >= arrProduce.size()) return;
        m_selectedRow = row;
        performSegueWithIdentifier(QStringLiteral("FSDetailSegue"));
    });
    addSegue(QStringLiteral("FSDetailSegue"), SegueKind::Show, QStringLiteral("FSDetailViewController"));
}

QUrl FarmingStockViewController::viewSource() const {
    return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Market/FarmingStockView.qml"));
}

void FarmingStockViewController::viewDidLoad() {
    arrProduce = QJsonArray();
    arrProduceCategories = QJsonArray();
    paramStockType = QStringLiteral("H");
    paramLocationType = 0;
    getProduces();
    getProduceCategories();
}

void FarmingStockViewController::viewDidAppear(bool) {
    setNotifBadge();
    notifications::Bell::observe(this);
}

void FarmingStockViewController::setNotifBadge() { notifications::Bell::setNotifBadge(this); }

void FarmingStockViewController::getProduces() {
    emit scrollToTop();
    service::ScreenCall call(this, QStringLiteral("getProduces"));
    service::WSRequest request;
    request.doParam = QStringLiteral("agrivo/produces");
    request.produceType = paramStockType;
    request.produceCategory = paramCategory;
    request.stockLocation = paramLocationType;
    // Overlapping changes each send their own request: the reply that arrives last decides.
    request.requestData(call.done([this](const Json& response) {
                            arrProduce = QJsonArray();
                            if (service::statusOf(response) == 200) {
                                const Json data = member(response, QStringLiteral("data"));
                                arrProduce = service::listOf(member(data, QStringLiteral("produces")));
                                const Json farmer = member(data, QStringLiteral("farmer"));
                                strLocationName = farmer.isNull()
                                                      ? QStringLiteral("")
                                                      : stringOrNull(path(farmer, {QStringLiteral("location"), QStringLiteral("city"),
                                                                                   QStringLiteral("name")}));
                            }
                            tblStocks->reloadData();
                            tblStocks->setHidden(arrProduce.isEmpty());
                        }),
                        call.failed());
}

void FarmingStockViewController::getProduceCategories() {
    service::ScreenCall call(this, QStringLiteral("getProduceCategories"));
    service::WSRequest request;
    request.doParam = QStringLiteral("produce/categories");
    request.requestData(call.done([this](const Json& response) {
                            arrProduceCategories =
                                service::statusOf(response) == 200
                                    ? service::listOf(path(response, {QStringLiteral("data"), QStringLiteral("categories")}))
                                    : QJsonArray();
                        }),
                        call.failed());
}

QVariantMap FarmingStockViewController::stockCell(int row) const {
    QVariantMap cell;
    if (row < 0 || row >= arrProduce.size()) return cell;
    const Json produce = element(arrProduce, row);
    const Json prices = member(produce, QStringLiteral("prices"));
    cell.insert(QStringLiteral("reuseIdentifier"), QStringLiteral("StockCell"));
    cell.insert(QStringLiteral("lblName"), stringOrNull(member(produce, QStringLiteral("name"))));
    if (count(prices) > 0) {
        const Json first = element(prices, 0);
        cell.insert(QStringLiteral("lblLowest"), priceText(member(first, QStringLiteral("min"))));
        cell.insert(QStringLiteral("lblHighest"), priceText(member(first, QStringLiteral("max"))));
        cell.insert(QStringLiteral("lblLocation"), stringOrNull(member(first, QStringLiteral("CityName"))));
    } else {
        cell.insert(QStringLiteral("lblLowest"), QStringLiteral("-"));
        cell.insert(QStringLiteral("lblHighest"), QStringLiteral("-"));
        cell.insert(QStringLiteral("lblLocation"), NoPrice);
    }
    cell.insert(QStringLiteral("imgProduce"),
                stringWithFormat(QStringLiteral("%@/static/media/images/icons/ic_%d.png"),
                                 {service::Roots::ServiceRoot, intValue(member(produce, QStringLiteral("agrivoid")))}));
    cell.insert(QStringLiteral("selectionStyle"), 0);
    return cell;
}

void FarmingStockViewController::changeStockType(QObject* sender) {
    // The open menu closes but is not forgotten: the next tap on the filter only closes it again.
    if (m_dropDown) m_dropDown->hideDropDown(btnFilter);
    const int tag = sender ? sender->property("tag").toInt() : 0;
    if (tag == TabB) {
        imgSegment->setImage(QStringLiteral("tab2"));
        paramStockType = QStringLiteral("B");
    } else if (tag == TabH) {
        imgSegment->setImage(QStringLiteral("tab1"));
        paramStockType = QStringLiteral("H");
    } else {
        paramStockType = QStringLiteral("H");
    }
    getProduces();
}

void FarmingStockViewController::changeLocationType(QObject* sender) {
    auto* control = qobject_cast<Switch*>(sender);
    const bool on = control ? control->isOn() : switchLocation->isOn();
    // On: all locations.
    paramLocationType = on ? 0 : 1;
    getProduces();
}

void FarmingStockViewController::setDropDown(widgets::DropDownList* list) {
    m_dropDown = list;
    emit dropDownChanged();
}

void FarmingStockViewController::rel() { setDropDown(nullptr); }

void FarmingStockViewController::openProductMenu(QObject* sender) {
    QStringList names{AllGroups};
    for (const auto& category : std::as_const(arrProduceCategories)) names << textOf(member(category, QStringLiteral("name")));
    auto* button = qobject_cast<Button*>(sender);
    if (m_dropDown) {
        m_dropDown->hideDropDown(button);
        rel();
        return;
    }
    auto* list = new widgets::DropDownList;
    const float height = names.size() < ShortMenu ? RowHeightOfMenu * float(names.size()) : 250;
    list->showDropDown(button, height, names, {}, QStringLiteral("down"));
    list->setDelegate(this);
    setDropDown(list);
}

void FarmingStockViewController::dropDownListDelegateMethod(QObject* sender) {
    rel();
    auto* list = qobject_cast<widgets::DropDownList*>(sender);
    const int index = list ? list->selectedIndex() : 0;
    if (index == 0) paramCategory = nil();
    else paramCategory = member(element(arrProduceCategories, index - 1), QStringLiteral("id"));
    getProduces();
}

void FarmingStockViewController::prepareForSegue(const StoryboardSegue& segue, QObject*) {
    if (auto* detail = qobject_cast<FSDetailViewController*>(segue.destination)) {
        detail->dictProduce = element(arrProduce, m_selectedRow);
        detail->strProduceType = paramStockType;
    }
}

FSDetailViewController::FSDetailViewController(QObject* parent)
    : ViewController(parent), tblStocks(makeControl<TableView>("tblStocks")) {
    tblStocks->setDataSource([this](int) { return int(arrProduce.size()); },
                             [this](int, int row) { return cellRow(stockCell(row), QSizeF(tblStocks->size().width(), 84)); });
}

QUrl FSDetailViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Market/FSDetailView.qml")); }

void FSDetailViewController::viewDidLoad() {
    arrProduce = QJsonArray();
    setTitle(stringOrNull(member(dictProduce, QStringLiteral("name"))));
    getProduceDetail();
}

void FSDetailViewController::getProduceDetail() {
    emit scrollToTop();
    service::ScreenCall call(this, QStringLiteral("getProduceDetail"));
    service::WSRequest request;
    request.doParam = QStringLiteral("agrivo/produce/details");
    request.produceType = strProduceType;
    request.produceID = member(dictProduce, QStringLiteral("agrivoid"));
    request.requestData(call.done([this](const Json& response) {
                            arrProduce = QJsonArray();
                            if (service::statusOf(response) == 200)
                                arrProduce = service::listOf(path(response, {QStringLiteral("data"), QStringLiteral("prices")}));
                            tblStocks->reloadData();
                        }),
                        call.failed());
}

QVariantMap FSDetailViewController::stockCell(int row) const {
    QVariantMap cell;
    if (row < 0 || row >= arrProduce.size()) return cell;
    const Json price = element(arrProduce, row);
    cell.insert(QStringLiteral("reuseIdentifier"), QStringLiteral("StockCell"));
    cell.insert(QStringLiteral("lblName"), stringWithFormat(QStringLiteral("%@ - %@"), {member(price, QStringLiteral("CropName")),
                                                                                        member(price, QStringLiteral("VarietyName"))}));
    cell.insert(QStringLiteral("lblLowest"), priceText(member(price, QStringLiteral("MinPrice"))));
    cell.insert(QStringLiteral("lblHighest"), priceText(member(price, QStringLiteral("MaxPrice"))));
    // An unparsable date leaves its part empty.
    const QDateTime updated =
        QDateTime::fromString(stringOrNull(member(price, QStringLiteral("LastUpdatedDate"))), QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    const Json city = member(price, QStringLiteral("CityName"));
    cell.insert(QStringLiteral("lblLocation"),
                updated.isValid()
                    ? stringWithFormat(QStringLiteral("%@ | %@"), {city, formatDate(updated, QStringLiteral("dd.MM.yyyy"))})
                    : stringWithFormat(QStringLiteral("%@ | "), {city}));
    cell.insert(QStringLiteral("selectionStyle"), 0);
    return cell;
}

} // namespace ekinora::market
