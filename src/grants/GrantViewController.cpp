#include "GrantViewController.h"

#include "GrantDetailViewController.h"
#include "farms/FarmerProductRequest.h"
#include "notifications/Bell.h"
#include "platform/AlertController.h"
#include "platform/Platform.h"
#include "service/LocalStore.h"
#include "service/Replies.h"
#include "service/ServiceCall.h"
#include "service/WSRequest.h"
#include "widgets/Colors.h"

namespace ekinora::grants {

using namespace platform;

namespace {
Platform& P() { return Platform::current(); }
} // namespace

const QString GrantViewController::NoCity = QStringLiteral("İl Seçiniz");
const QString GrantViewController::NoCounty = QStringLiteral("İlçe Seçiniz");
const QString GrantViewController::NoProduct = QStringLiteral("Ürün Seçiniz");

namespace {

QString textOf(const Json& value) { return value.isString() ? value.toString() : description(value); }

Json firstIdNamed(const QJsonArray& list, const QString& name) {
    for (const auto& record : list)
        if (isString(member(record, QStringLiteral("name")), name)) return member(record, QStringLiteral("id"));
    return nil();
}

// The inline scan of the county load runs to the end of the list: the last record of the name wins.
Json lastIdNamed(const QJsonArray& list, const QString& name) {
    Json found = nil();
    for (const auto& record : list)
        if (isString(member(record, QStringLiteral("name")), name)) found = member(record, QStringLiteral("id"));
    return found;
}

} // namespace

GrantViewController::GrantViewController(QObject* parent)
    : ViewController(parent), collGrant(makeControl<TableView>("collGrant")), btnCity(makeControl<Button>("btnCity")),
      btnCounty(makeControl<Button>("btnCounty")), btnProduct(makeControl<Button>("btnProduct")),
      imgBack(makeControl<View>("imgBack")) {
    setTitle(QStringLiteral("Hibe Destek"));
    notifications::Bell::install(this);
    // The layout's titles, which the checks compare with.
    btnCity->setTitle(NoCity);
    btnCounty->setTitle(NoCounty);
    btnProduct->setTitle(NoProduct);
    btnCity->addTarget(this, &GrantViewController::selectCity);
    btnCounty->addTarget(this, &GrantViewController::selectCounty);
    btnProduct->addTarget(this, &GrantViewController::selectProduct);
    collGrant->setDataSource([this](int) { return int(arrGrants.size()); },
                             [this](int, int row) {
                                 return cellRow(grantCell(row), QSizeF(collGrant->size().width() - 24, 236));
                             });
    collGrant->setDidSelectRow([this](int, int row) {
        if (row < 0 || row >= arrGrants.size()) return;
        m_selectedRow = row;
        performSegueWithIdentifier(QStringLiteral("GrantDetailSegue"));
    });
    addSegue(QStringLiteral("GrantDetailSegue"), SegueKind::Show, QStringLiteral("GrantDetailViewController"));
}

QUrl GrantViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Grants/GrantView.qml")); }

void GrantViewController::viewDidLoad() {
    arrGrants = QJsonArray();
    arrCities = QJsonArray();
    arrCounties = QJsonArray();
    arrProducts = QJsonArray();
    for (Button* button : {btnCounty, btnCity, btnProduct}) {
        button->setBorderWidth(1);
        button->setBorderColor(widgets::Colors::black());
        button->setCornerRadius(3);
    }
    // The gradient of imgBack (cerulean to leaf, left to right) is drawn by the arrangement.
    const Json user = service::LocalStore::userInfo();
    const Json type = member(user, QStringLiteral("type"));
    if (isString(type, QStringLiteral("farmer")) || isString(type, QStringLiteral("loyalty"))) {
        // The farmer's own county is the default; a dealer starts from the layout's titles.
        btnCity->setTitle(stringOrNull(path(user, {QStringLiteral("location"), QStringLiteral("city"), QStringLiteral("name")})));
        btnCounty->setTitle(stringOrNull(path(user, {QStringLiteral("location"), QStringLiteral("county"), QStringLiteral("name")})));
    }
    getCities();
    getProducts();
}

void GrantViewController::viewDidAppear(bool) {
    setNotifBadge();
    notifications::Bell::observe(this);
}

void GrantViewController::setNotifBadge() { notifications::Bell::setNotifBadge(this); }

void GrantViewController::getCities() {
    service::ScreenCall call(this, QStringLiteral("getCities"));
    service::WSRequest request;
    request.doParam = QStringLiteral("region/cities");
    request.requestData(call.done([this](const Json& response) {
                            service::log(description(response));
                            arrCities = service::listOf(path(response, {QStringLiteral("data"), QStringLiteral("cities")}));
                            const QString city = btnCity->title();
                            if (!city.isEmpty() && city != NoCity) getCounties(true);
                        }),
                        call.failed());
}

void GrantViewController::getCounties(bool keepCounty) {
    service::ScreenCall call(this, QStringLiteral("getCounties"));
    service::WSRequest request;
    request.doParam = QStringLiteral("region/counties");
    request.cityID = lastIdNamed(arrCities, btnCity->title());
    request.requestData(call.done([this, keepCounty](const Json& response) {
                            if (!keepCounty) btnCounty->setTitle(NoCounty);
                            arrCounties = service::listOf(path(response, {QStringLiteral("data"), QStringLiteral("counties")}));
                            btnCounty->setUserInteractionEnabled(true);
                        }),
                        call.failed());
}

void GrantViewController::getProducts() {
    service::ScreenCall call(this, QStringLiteral("getProducts"));
    farms::FarmerProductRequest request;
    request.doParam = QStringLiteral("produces");
    request.farmerPriority = 1;
    request.requestData(call.done([this](const Json& response) {
                            arrProducts = service::listOf(path(response, {QStringLiteral("data"), QStringLiteral("produces")}));
                            btnProduct->setUserInteractionEnabled(true);
                        }),
                        call.failed());
}

Json GrantViewController::findCityID(const QString& name) const { return firstIdNamed(arrCities, name); }
Json GrantViewController::findCountyID(const QString& name) const { return firstIdNamed(arrCounties, name); }
Json GrantViewController::findProductID(const QString& name) const { return firstIdNamed(arrProducts, name); }

void GrantViewController::setDropDown(widgets::DropDownList* list) {
    m_dropDown = list;
    emit dropDownChanged();
}

void GrantViewController::rel() { setDropDown(nullptr); }

void GrantViewController::openList(QObject* sender, const QJsonArray& records, int tag) {
    QStringList names;
    for (const auto& record : records) names << textOf(member(record, QStringLiteral("name")));
    if (names.isEmpty()) return;
    auto* button = qobject_cast<Button*>(sender);
    if (m_dropDown) {
        m_dropDown->hideDropDown(button);
        rel();
        return;
    }
    auto* list = new widgets::DropDownList;
    list->showDropDown(button, 250, names, {}, QStringLiteral("down"));
    list->setDelegate(this);
    list->setTag(tag);
    setDropDown(list);
}

void GrantViewController::selectCity(QObject* sender) {
    endEditing();
    openList(sender, arrCities, CityTag);
}

void GrantViewController::selectCounty(QObject* sender) {
    endEditing();
    if (arrCounties.isEmpty()) return alert(QStringLiteral("Önce şehir seçiniz."));
    openList(sender, arrCounties, CountyTag);
}

void GrantViewController::selectProduct(QObject* sender) {
    endEditing();
    openList(sender, arrProducts, ProductTag);
}

void GrantViewController::dropDownListDelegateMethod(QObject* sender) {
    rel();
    auto* list = qobject_cast<widgets::DropDownList*>(sender);
    if (!list || list->tag() != CityTag) return;
    // While the new city's counties are on their way the old list can't be opened.
    btnCounty->setUserInteractionEnabled(false);
    btnCounty->setTitle(NoCounty);
    auto self = strong(this);
    P().scheduler().after(500, [self] { self->getCounties(false); });
}

void GrantViewController::alert(const QString& message) {
    auto* alert = AlertController::alertControllerWithTitle(QStringLiteral("Uyarı"), message);
    alert->addAction(QStringLiteral("Tamam"), AlertController::Default);
    presentViewController(alert, true);
}

void GrantViewController::getGrants(QObject*) {
    if (btnProduct->title() == NoProduct) return alert(QStringLiteral("Hibe Desteği sorgulamak için ürün seçmelisiniz."));
    if (btnCounty->title() == NoCounty) return alert(QStringLiteral("Hibe Desteği sorgulamak için ilçe seçmelisiniz."));
    hud = ProgressHUD::showHUDAddedTo(this, true);
    service::WSRequest request;
    request.doParam = QStringLiteral("agrivo/grants");
    request.agrivoCity = findCityID(btnCity->title());
    request.agrivoCounty = findCountyID(btnCounty->title());
    request.produceID = findProductID(btnProduct->title());
    auto self = strong(this);
    request.requestData(
        [self](const Json& response) {
            service::log(description(response));
            self->arrGrants = QJsonArray();
            const Json data = member(response, QStringLiteral("data"));
            if (data.isNull()) {
                // The old cells stay on the screen: the list is not asked again.
                self->alert(service::firstError(response));
            } else if (member(data, QStringLiteral("grants")).isNull()) {
                self->collGrant->setHidden(true);
                self->collGrant->reloadData();
            } else {
                self->arrGrants = service::listOf(member(data, QStringLiteral("grants")));
                self->collGrant->setHidden(false);
                self->collGrant->reloadData();
            }
            if (self->hud) self->hud->hideAnimated(true);
        },
        [self](const Json& error) {
            service::log(QStringLiteral("getGrants: %1").arg(description(error)));
            if (self->hud) self->hud->hideAnimated(true);
        });
}

QVariantMap GrantViewController::grantCell(int row) const {
    QVariantMap cell;
    // A list still drawing rows of an emptied list gets empty cells.
    if (row < 0 || row >= arrGrants.size()) return cell;
    const Json grant = element(arrGrants, row);
    cell.insert(QStringLiteral("reuseIdentifier"), QStringLiteral("GrantCell"));
    cell.insert(QStringLiteral("lblTitle"), stringOrNull(member(grant, QStringLiteral("GrantSupportName"))));
    cell.insert(QStringLiteral("lblType"), stringWithFormat(QStringLiteral("Destek Tipi: %@"), {member(grant, QStringLiteral("TypeName"))}));
    cell.insert(QStringLiteral("lblDate"),
                stringWithFormat(QStringLiteral("  Son Başvuru Tarihi: %@  "), {member(grant, QStringLiteral("EndDateStr"))}));
    cell.insert(QStringLiteral("lblText"), stringOrNull(member(grant, QStringLiteral("SMSTemplateName"))));
    cell.insert(QStringLiteral("cornerRadius"), 3);
    cell.insert(QStringLiteral("clipsToBounds"), true);
    return cell;
}

void GrantViewController::prepareForSegue(const StoryboardSegue& segue, QObject*) {
    if (segue.identifier != QLatin1String("GrantDetailSegue")) return;
    if (auto* detail = qobject_cast<GrantDetailViewController*>(segue.destination))
        detail->dictGrant = element(arrGrants, m_selectedRow);
}

} // namespace ekinora::grants
