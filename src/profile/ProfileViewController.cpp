#include "ProfileViewController.h"

#include "accounts/UpdateFarmerRequest.h"
#include "notifications/Bell.h"
#include "notifications/GetNotificationRequest.h"
#include "platform/AlertController.h"
#include "platform/Platform.h"
#include "platform/Scheduler.h"
#include "platform/UserDefaults.h"
#include "service/LocalStore.h"
#include "service/Replies.h"
#include "service/ServiceCall.h"
#include "service/WSRequest.h"
#include "widgets/BadgeBarButtonItem.h"

namespace ekinora::profile {

using namespace platform;
using service::log;

namespace {

// The id of the last record whose name is the text, or nil.
Json lastIdNamed(const QJsonArray& records, const QString& name) {
    Json id = nil();
    for (const auto& record : records)
        if (stringOrNull(member(record, QStringLiteral("name"))) == name) id = member(record, QStringLiteral("id"));
    return id;
}

void alert(ViewController* screen, const QString& title, const QString& message) {
    screen->presentViewController(AlertController::simple(title, message, QStringLiteral("Tamam")), true);
}

} // namespace

ProfileViewController::ProfileViewController(QObject* parent)
    : ViewController(parent), txtName(makeControl<TextField>("txtName")), txtMail(makeControl<TextField>("txtMail")),
      txtPhone(makeControl<TextField>("txtPhone")), txtCity(makeControl<TextField>("txtCity")),
      txtCounty(makeControl<TextField>("txtCounty")), btnCity(makeControl<Button>("btnCity")),
      btnCounty(makeControl<Button>("btnCounty")), updateButton(makeControl<Button>("updateButton")) {
    setTitle(QStringLiteral("Profilim"));
    notifications::Bell::install(this);
    txtName->setPlaceholder(QStringLiteral("Ad Soyad"));
    txtMail->setPlaceholder(QStringLiteral("E-posta"));
    txtMail->setKeyboardType(7);
    txtPhone->setEnabled(false);
    txtCity->setPlaceholder(QStringLiteral("İl Seçiniz"));
    txtCounty->setPlaceholder(QStringLiteral("İlçe Seçiniz"));
    updateButton->setTitle(QStringLiteral("Güncelle"));
    btnCity->addTarget(this, QStringLiteral("selectCity"));
    btnCounty->addTarget(this, QStringLiteral("selectCounty"));
    updateButton->addTarget(this, QStringLiteral("updateProfile"));
    for (TextField* field : {txtName, txtMail})
        field->setShouldReturn([this](TextField* f) { return textFieldShouldReturn(f); });
}

QUrl ProfileViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Profile/ProfileView.qml")); }

void ProfileViewController::viewDidLoad() {
    arrCities = QJsonArray();
    arrCounties = QJsonArray();
    // The login's number, from the stored record.
    txtPhone->setText(stringOrNull(member(service::LocalStore::userInfo(), QStringLiteral("phone"))));
    getProfile();
}

void ProfileViewController::viewDidAppear(bool) {
    setNotifBadge();
    Platform::current().notificationCenter().addObserver(this, QStringLiteral("setNotifBadge"),
                                                         notifications::Bell::CheckNotifBadge);
}

// This screen's copy reads the count without testing "data" for null.
void ProfileViewController::setNotifBadge() {
    notifications::GetNotificationRequest request;
    request.ignoreRead = QStringLiteral("1");
    auto self = strong(this);
    request.getNotifications(
        [self](const Json& response) {
            auto* item = qobject_cast<BarButtonItem*>(self->rightBarButtonItem());
            if (!item) return;
            const int unread = intValue(path(response, {QStringLiteral("data"), QStringLiteral("unreadCount")}));
            item->setBadgeValue(unread < 1 ? QString() : stringWithFormat(QStringLiteral("%d"), {unread}));
        },
        [](const Json&) {});
}

void ProfileViewController::getProfile() {
    service::ScreenCall call(this, QStringLiteral("getProfile"), service::ScreenCall::WithHud);
    service::WSRequest request;
    request.doParam = QStringLiteral("farmer/profile");
    request.requestData(call.done([this](const Json& response) {
                            // The status is not looked at.
                            const Json data = member(response, QStringLiteral("data"));
                            txtName->setText(stringOrNull(member(data, QStringLiteral("fullname"))));
                            const Json email = member(data, QStringLiteral("email"));
                            if (!isNullObject(email)) txtMail->setText(stringOrNull(email));
                            const Json location = member(data, QStringLiteral("location"));
                            const QString city = stringOrNull(path(location, {QStringLiteral("city"), QStringLiteral("name")}));
                            txtCity->setText(city);
                            btnCity->setTitle(city);
                            txtCounty->setText(stringOrNull(path(location, {QStringLiteral("county"), QStringLiteral("name")})));
                            memberType = member(data, QStringLiteral("type"));
                            getCities();
                        }),
                        call.failed());
    checkFromMenu();
}

void ProfileViewController::getCities() {
    service::WSRequest request;
    request.doParam = QStringLiteral("region/cities");
    auto self = strong(this);
    request.requestData(
        [self](const Json& response) {
            self->arrCities = service::listOf(path(response, {QStringLiteral("data"), QStringLiteral("cities")}));
            if (!self->txtCity->text().isEmpty()) self->getCounties(true);
        },
        [](const Json& error) { log(QStringLiteral("getCities: %1").arg(description(error))); });
}

void ProfileViewController::getCounties(bool keepCounty) {
    txtCity->setText(btnCity->title());
    service::WSRequest request;
    request.doParam = QStringLiteral("region/counties");
    request.cityID = lastIdNamed(arrCities, txtCity->text());
    auto self = strong(this);
    request.requestData(
        [self, keepCounty](const Json& response) {
            if (!keepCounty) self->txtCounty->setText(QString());
            self->arrCounties = service::listOf(path(response, {QStringLiteral("data"), QStringLiteral("counties")}));
            self->btnCounty->setUserInteractionEnabled(true);
        },
        [](const Json& error) { log(QStringLiteral("getCounties: %1").arg(description(error))); });
}

void ProfileViewController::setDropDown(widgets::DropDownList* list) {
    m_dropDown = list;
    emit dropDownChanged();
}

void ProfileViewController::rel() { setDropDown(nullptr); }

void ProfileViewController::openList(QObject* sender, const QJsonArray& records, int tag) {
    QStringList names;
    for (const auto& record : records) names << stringOrNull(member(record, QStringLiteral("name")));
    if (names.isEmpty()) return;
    if (m_dropDown) {
        m_dropDown->hideDropDown(qobject_cast<Button*>(sender));
        rel();
        return;
    }
    auto* list = new widgets::DropDownList;
    list->showDropDown(qobject_cast<Button*>(sender), 250, names, {}, QStringLiteral("down"));
    list->setDelegate(this);
    list->setTag(tag);
    setDropDown(list);
}

void ProfileViewController::selectCity(QObject* sender) {
    endEditing();
    openList(sender ? sender : btnCity, arrCities, CityListTag);
}

void ProfileViewController::selectCounty(QObject* sender) {
    endEditing();
    openList(sender ? sender : btnCounty, arrCounties, CountyListTag);
    if (arrCounties.isEmpty()) alert(this, QStringLiteral("Uyarı"), QStringLiteral("Önce şehir seçiniz."));
}

void ProfileViewController::dropDownListDelegateMethod(QObject* sender) {
    rel();
    auto* list = qobject_cast<widgets::DropDownList*>(sender);
    if (list && list->tag() == CityListTag) {
        // The old county goes at once; the new city's list can't be opened until it has come.
        btnCounty->setUserInteractionEnabled(false);
        txtCounty->setText(QString());
        auto self = strong(this);
        Platform::current().scheduler().after(500, [self] { self->getCounties(false); });
    } else {
        txtCounty->setText(btnCounty->title());
    }
}

void ProfileViewController::updateProfile(QObject*) {
    const Json countyId = lastIdNamed(arrCounties, txtCounty->text());
    // Without a county the farmer is told, and the form goes all the same: the service keeps the place.
    if (isNil(countyId)) alert(this, QStringLiteral("Uyarı"), QStringLiteral("Önce ilçe seçiniz."));
    service::ScreenCall call(this, QStringLiteral("updateProfile"), service::ScreenCall::WithHud);
    accounts::UpdateFarmerRequest request;
    request.email = txtMail->text();
    request.fullName = txtName->text();
    request.countyID = countyId;
    request.doParam = QStringLiteral("farmer/update-profile");
    request.updateFarmer(call.done([this](const Json& response) {
                             const int status = service::statusOf(response);
                             if (status == 200) {
                                 service::LocalStore::setUserInfo(member(response, QStringLiteral("data")));
                                 service::LocalStore::defaults().synchronize();
                                 alert(this, QStringLiteral("Başarılı"), QStringLiteral("Profil bilgileriniz güncellendi."));
                             } else if (status == 400) {
                                 // Only the name's message is read.
                                 alert(this, QStringLiteral("Uyarı"),
                                       stringOrNull(path(response, {QStringLiteral("errors"), QStringLiteral("fullname")})));
                             }
                         }),
                         call.failed());
}

bool ProfileViewController::textFieldShouldReturn(TextField* field) {
    field->resignFirstResponder();
    return true;
}

} // namespace ekinora::profile
