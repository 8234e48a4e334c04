#include "ViewController.h"

#include "accounts/UpdateFarmerRequest.h"
#include "farms/DocumentViewController.h"
#include "farms/FarmerProductRequest.h"
#include "farms/ProductDetailViewController.h"
#include "notifications/Bell.h"
#include "platform/AlertController.h"
#include "platform/NavigationController.h"
#include "platform/Platform.h"
#include "platform/SideMenuViewController.h"
#include "platform/Storyboard.h"
#include "service/LocalStore.h"
#include "service/Replies.h"
#include "service/ServiceCall.h"
#include "service/TextHelpers.h"
#include "service/WSRequest.h"
#include "weather/WeatherApiRequest.h"
#include "weather/WeatherTables.h"
#include "widgets/BadgeBarButtonItem.h"

namespace ekinora::home {

using namespace platform;
using service::LocalStore;

namespace {

Platform& P() { return Platform::current(); }

// -[NSString capitalizedString]: each word's first letter upper case, the rest lower case, with no
// regard to the language.
QString capitalized(const QString& text) {
    if (text.isNull()) return text;
    QString out = text.toLower();
    bool start = true;
    for (qsizetype i = 0; i < out.size(); ++i) {
        if (out.at(i).isLetterOrNumber()) {
            if (start) out.replace(i, 1, out.at(i).toUpper());
            start = false;
        } else {
            start = true;
        }
    }
    return out;
}

// The whole store, as the log shows it at each appearance.
QString storeDescription() {
    UserDefaults& store = LocalStore::defaults();
    QJsonObject all;
    for (const QString& key : store.keys()) {
        const Json record = store.jsonForKey(key);
        all.insert(key, record.isUndefined() ? Json(store.stringForKey(key)) : record);
    }
    return description(all);
}

// The club invitation's countdown runs once per run of the application; a new platform is a new run.
QPointer<Platform> libStatRun;

} // namespace

ViewController::ViewController(QObject* parent)
    : platform::ViewController(parent), imgLoading(makeControl<ImageView>("imgLoading")),
      lblWeatherDate(makeControl<Label>("lblWeatherDate")), lblWeatherLocation(makeControl<Label>("lblWeatherLocation")),
      lblWeatherCondition(makeControl<Label>("lblWeatherCondition")),
      lblWeatherTemprature(makeControl<Label>("lblWeatherTemprature")), lblWeatherRain(makeControl<Label>("lblWeatherRain")),
      lblWeatherWind(makeControl<Label>("lblWeatherWind")), imgWeatherCondition(makeControl<ImageView>("imgWeatherCondition")),
      viewEvent(makeControl<View>("viewEvent")), lblProductAlert(makeControl<Label>("lblProductAlert")),
      constCollTopMargin(makeControl<LayoutConstraint>("constCollTopMargin", 0.0)),
      collFarms(makeControl<TableView>("collFarms")), menuBtn(makeControl<Button>("menuBtn")),
      btnNotification(notifications::Bell::install(this)) {
    setTitle(QStringLiteral("Anasayfa"));
    menuBtn->addTarget(this, QStringLiteral("presentLeftMenuViewController"));

    // Each permission is a box of its own: a tap turns it on or off.
    accounts::ConsentPolicy consent;
    consent.permissionTitles = {QStringLiteral("SMS"), QStringLiteral("E-posta"), QStringLiteral("Reklam")};
    consent.confirm = [this] { sendPermissions(); };
    consent.permissionsHint = QStringLiteral("Kampanya, duyuru ve tarımsal önerilerimizi hangi yollarla almak istediğinizi seçin. "
                                             "İzinlerinizi dilediğiniz zaman değiştirebilirsiniz.");
    consent.noticeLink = QStringLiteral("Aydınlatma Metnini okuyun");
    consent.permissionsButton = QStringLiteral("Kaydet");
    consent.noticeButton = QStringLiteral("Kapat");
    m_consent = new accounts::ConsentPanel(std::move(consent), this);

    // Up to four products here; the crop label reads a shorter text when its list closes empty.
    farms::CropEditorPolicy crop;
    crop.productLimit = 4;
    crop.noCropOnClose = QStringLiteral("Ürün Seç");
    crop.productTextControl = QStringLiteral("name");
    crop.nameProductText = false;
    crop.productRowHeight = 48;
    crop.dropRefusedLists = true;
    crop.holdNavigationBar = true;
    crop.endEditingOnOpen = true;
    crop.endEditingOnAccept = true;
    crop.clearProductsOnOpen = false;
    crop.productSelectionStyle = true;
    crop.add = [this] { saveFarm(); };
    crop.heading = QStringLiteral("Yeni Tarla");
    crop.plantCaption = QStringLiteral("Ürün");
    crop.plantPurpose = QStringLiteral("Ürün seç");
    crop.sizeCaption = QStringLiteral("Tarla büyüklüğü (dekar)");
    crop.sizePurpose = QStringLiteral("Tarla büyüklüğü");
    crop.productCaption = QStringLiteral("Zirai ürünler");
    crop.productPurpose = QStringLiteral("Zirai ürün seç");
    crop.plantsHeading = QStringLiteral("Ürün Seçiniz");
    crop.productsHeading = QStringLiteral("Zirai Ürün Seçiniz");
    m_cropEditor = new farms::CropEditor(std::move(crop), this);
    m_cropEditor->txtFarmSize->setKeyboardType(8);
    m_cropEditor->txtFarmSize->setPlaceholder(QStringLiteral("Örneğin 120"));
    m_cropEditor->btnNewProduce->setTitle(QStringLiteral("Kaydet"));
    m_cropEditor->btnUpdateProduce->setTitle(QStringLiteral("Güncelle"));
    m_cropEditor->btnDeleteProduce->setTitle(QStringLiteral("Sil"));

    lblProductAlert->setNumberOfLines(0);
    lblProductAlert->setText(QStringLiteral("En fazla 3 tarla ekleyebilirsiniz."));
    collFarms->setDataSource([this](int) { return collFarmsNumberOfItems(); },
                             [this](int, int row) {
                                 return cellRow(collFarmsCell(row), collFarmsSizeForItem(row, collFarms->size().width()));
                             });
    collFarms->setDidSelectRow([this](int, int row) { collFarmsDidSelectItem(row); });
    addSegue(QStringLiteral("ProductDetailSegue"), SegueKind::Present, QStringLiteral("ProductDetailViewController"));
    addSegue(QStringLiteral("DocumentSegue"), SegueKind::Present, QStringLiteral("DocumentViewController"));
}

QUrl ViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Home/HomeView.qml")); }

void ViewController::viewDidLoad() {
    // 1.
    hud = ProgressHUD::showHUDAddedTo(service::hudHost(this), true);
    // 2.
    viewEvent->setBorderWidth(1.0);
    viewEvent->setBorderColor(QColor::fromRgbF(0.2, 0.2, 0.2));
    // 3.
    embed(m_cropEditor, "cropEditorSlot");
    embed(m_consent, "consentSlot");
    arrFarms = QJsonArray();
    m_cropEditor->load();
    // 4.
    m_consent->hidePages();
    // 5. Over everything, the navigation bar included.
    imgLoading->setImage(QStringLiteral("splashScreen"));
    imgLoading->setHidden(false);
}

void ViewController::viewWillAppear(bool) {
    // The status bar is asked to update: dark text on this screen (style 0).
}

void ViewController::viewDidAppear(bool) {
    // 1.
    const Json user = LocalStore::userInfo();
    service::log(storeDescription());
    if (user.isUndefined()) {
        // 2. Nobody is signed in.
        handOver(QStringLiteral("loginVC"));
        auto self = strong(this);
        P().scheduler().after(1000, [self] { self->removeSplash(); });
    } else {
        const Json type = member(user, QStringLiteral("type"));
        if (isString(type, QStringLiteral("farmer")) || isString(type, QStringLiteral("loyalty"))) {
            // 3.
            removeSplash();
            getFarms();
            getWeatherInfo();
            setNotifBadge();
            service::WSRequest request;
            request.doParam = QStringLiteral("farmer/profile");
            service::ScreenCall call(this, QStringLiteral("farmer/profile"));
            request.requestData(call.done([this, user](const Json& response) { profileReceived(response, user); }),
                                // 5.
                                call.failed());
        } else {
            // 4. The news content is built and dropped; this screen stays as it is.
            removeSplash();
            auto* content = qobject_cast<NavigationController*>(
                Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("contentViewController")));
            if (content) {
                if (platform::ViewController* root = Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("newsVC")))
                    content->setViewControllers({root});
                content->deleteLater();
            }
        }
    }
    // 6. Added at each appearance and never removed.
    notifications::Bell::observe(this);
}

void ViewController::viewDidDisappear(bool) {}

void ViewController::profileReceived(const Json& response, const Json& storedRecord) {
    const Json data = member(response, QStringLiteral("data"));
    const Json type = member(data, QStringLiteral("type"));
    if (isString(member(storedRecord, QStringLiteral("type")), QStringLiteral("farmer")) && isString(type, QStringLiteral("loyalty"))) {
        // 1. A farmer who has become a club member signs in again.
        forcedLogout();
    } else {
        // 2.
        LocalStore::setUserInfo(data);
        LocalStore::defaults().synchronize();
        P().notificationCenter().postNotificationName(QStringLiteral("checkMenuList"));
        if (intValue(member(data, QStringLiteral("etkPopup"))) == 1) {
            m_consent->loadWebviewETK();
            m_consent->viewKVKK->setHidden(false);
        }
    }
    // 3. The club invitation's countdown, once per run.
    if (isString(type, QStringLiteral("loyalty")) && libStatRun.data() != &P()) {
        libStatRun = &P();
        if (LocalStore::stepLibStatAtHome()) showAlert();
    }
}

void ViewController::showAlert() {
    auto* alert = AlertController::alertControllerWithTitle(QStringLiteral("Bilgilendirme"),
                                                            QStringLiteral("Bereket Kulübümüz başladı, tıklayın, siz de kazanın!"));
    auto self = strong(this);
    alert->addAction(QStringLiteral("Bereket Kulübü"), AlertController::Default, [self] {
        // The menu button's action, through the application: the side menu opens.
        self->menuBtn->sendActions();
        P().notificationCenter().postNotificationName(QStringLiteral("goToLoyalty"));
    });
    alert->addAction(QStringLiteral("Kapat"), AlertController::Default);
    presentViewController(alert, true);
}

void ViewController::presentLeftMenuViewController() {
    if (SideMenuViewController* menu = sideMenuViewController()) menu->presentLeftMenuViewController();
}

void ViewController::forcedLogout() {
    LocalStore::logoutReset();
    service::WSRequest request;
    request.doParam = QStringLiteral("farmer/logout");
    service::ScreenCall call(this, QStringLiteral("farmer/logout"));
    request.requestData(call.done([this](const Json& response) {
                            service::log(description(response));
                            handOver(QStringLiteral("loginVC"));
                        }),
                        call.failed());
}

void ViewController::handOver(const QString& identifier) {
    auto* content = qobject_cast<NavigationController*>(
        Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("contentViewController")));
    if (!content) return;
    platform::ViewController* root = Storyboard::instantiateViewControllerWithIdentifier(identifier);
    content->setViewControllers(root ? QList<platform::ViewController*>{root} : QList<platform::ViewController*>{});
    if (SideMenuViewController* menu = sideMenuViewController()) {
        menu->setContentViewController(content, true);
        menu->hideMenuViewController();
        // The indicator lay on the content that has just left the screen, and leaves with it.
        if (hud) hud->hideAnimated(false);
    } else {
        content->deleteLater();
    }
}

void ViewController::removeSplash() { imgLoading->setHidden(true); }

void ViewController::setNotifBadge() { notifications::Bell::setNotifBadge(this); }

// Farms.

void ViewController::getFarms() {
    farms::FarmerProductRequest request;
    request.doParam = QStringLiteral("farmer/produces");
    // The indicator is the one the screen put up when it loaded.
    service::ScreenCall call(this, QStringLiteral("farmer/produces"));
    request.requestData(call.done([this](const Json& response) {
                            if (hud) hud->hideAnimated(true);
                            if (service::statusOf(response) != 200) {
                                // A lost login: the sign-in opens, and the store keeps the record, so that
                                // the next start comes back here and tries again.
                                handOver(QStringLiteral("loginVC"));
                                auto again = strong(this);
                                P().scheduler().after(1000, [again] { again->removeSplash(); });
                                return;
                            }
                            arrFarms = service::listOf(path(response, {QStringLiteral("data"), QStringLiteral("farmerProduces")}));
                            collFarms->reloadData();
                        }),
                        call.failed([this](const Json&) {
                            if (hud) hud->hideAnimated(true);
                        }));
}

int ViewController::collFarmsNumberOfItems() {
    // Exactly three farms: the limit, with its note above the list and no cell for adding.
    if (arrFarms.size() == 3) {
        lblProductAlert->setHidden(false);
        constCollTopMargin->setConstant(32);
        return 3;
    }
    lblProductAlert->setHidden(true);
    constCollTopMargin->setConstant(0);
    return int(arrFarms.size()) + 1;
}

QVariantMap ViewController::collFarmsCell(int row) const {
    QVariantMap cell;
    if (row < 0 || row >= arrFarms.size()) {
        cell.insert(QStringLiteral("reuseIdentifier"), QStringLiteral("NewFarmCell"));
        return cell;
    }
    const Json farm = arrFarms.at(row);
    cell.insert(QStringLiteral("reuseIdentifier"), QStringLiteral("FarmCell"));
    cell.insert(QStringLiteral("lblFarm"), stringOrNull(member(farm, QStringLiteral("name"))));
    const Json period = member(farm, QStringLiteral("period"));
    cell.insert(QStringLiteral("lblPeriod"), period.isNull() ? QString("") : stringOrNull(period));
    const Json image = member(farm, QStringLiteral("image"));
    if (image.isNull()) cell.insert(QStringLiteral("image"), QStringLiteral("tarlaBgImgDomates"));
    else cell.insert(QStringLiteral("imageUrl"), stringOrNull(image));
    cell.insert(QStringLiteral("cornerRadius"), 3.0);
    cell.insert(QStringLiteral("clipsToBounds"), true);
    return cell;
}

QSizeF ViewController::collFarmsSizeForItem(int row, double collectionWidth) const {
    return QSizeF(collectionWidth - 32, row < arrFarms.size() ? 155 : 65);
}

void ViewController::collFarmsDidSelectItem(int row) {
    if (row < 0) return;
    if (row >= arrFarms.size()) {
        m_cropEditor->openNewProduceView();
        return;
    }
    // The index path travels as the sender.
    QObject indexPath;
    indexPath.setProperty("section", 0);
    indexPath.setProperty("row", row);
    const bool noDocument = member(arrFarms.at(row), QStringLiteral("period_pdf")).isNull();
    performSegueWithIdentifier(noDocument ? QStringLiteral("ProductDetailSegue") : QStringLiteral("DocumentSegue"), &indexPath);
}

void ViewController::prepareForSegue(const StoryboardSegue& segue, QObject* sender) {
    const int row = sender ? sender->property("row").toInt() : -1;
    if (row < 0 || row >= arrFarms.size()) return;
    const Json farm = arrFarms.at(row);
    if (segue.identifier == QLatin1String("ProductDetailSegue")) {
        if (auto* detail = qobject_cast<farms::ProductDetailViewController*>(segue.destination)) {
            detail->objectID = member(farm, QStringLiteral("id"));
            detail->produceName = member(farm, QStringLiteral("name"));
            detail->produceImage = member(farm, QStringLiteral("image"));
        }
    } else if (segue.identifier == QLatin1String("DocumentSegue")) {
        if (auto* document = qobject_cast<farms::DocumentViewController*>(segue.destination)) {
            const Json pdf = member(farm, QStringLiteral("period_pdf"));
            document->titleString = stringOrNull(member(pdf, QStringLiteral("title")));
            document->urlString = stringOrNull(member(pdf, QStringLiteral("pdf")));
        }
    }
}

// Weather.

void ViewController::openWeatherDetail(QObject*) {
    if (NavigationController* nav = navigationController())
        nav->pushViewController(Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("weatherVC")), true);
}

void ViewController::getWeatherInfo() {
    const Json county = path(LocalStore::userInfo(), {QStringLiteral("location"), QStringLiteral("county")});
    weather::WeatherApiRequest request;
    request.latValue = member(county, QStringLiteral("latitude"));
    request.lonValue = member(county, QStringLiteral("longitude"));
    auto self = strong(this);
    request.requestData(
        [self, county](const Json& response) {
            self->lblWeatherLocation->setText(stringOrNull(member(county, QStringLiteral("name"))));
            if (service::statusOf(response) != 200) {
                // Asked again, without limit.
                auto again = self;
                P().scheduler().after(3000, [again] { again->getWeatherInfo(); });
                return;
            }
            const Json hours = member(response, QStringLiteral("data"));
            const QDateTime now = P().scheduler().now();
            const QDate today = now.date();
            const int hour = now.time().hour();
            // An empty day has no first record: the bounds start from nothing and the labels are
            // written all the same.
            const Json first = count(hours) > 0 ? element(hours, 0) : nil();
            float max = floatValue(member(first, QStringLiteral("temperature")));
            float min = max;
            for (int i = 0, n = count(hours); i < n; ++i) {
                const Json record = element(hours, i);
                const float temperature = floatValue(member(record, QStringLiteral("temperature")));
                // A value that raises the highest is not tested against the lowest.
                if (temperature > max) max = temperature;
                else if (temperature < min) min = temperature;
                if (intValue(member(record, QStringLiteral("time"))) == hour) self->dictionaryWeather = record;
            }
            // Without a record of this hour there is nothing to add them to.
            if (self->dictionaryWeather.isObject()) {
                QJsonObject present = self->dictionaryWeather.toObject();
                present.insert(QStringLiteral("temperatureMax"), double(max));
                present.insert(QStringLiteral("temperatureMin"), double(min));
                self->dictionaryWeather = present;
            }
            const Json& w = self->dictionaryWeather;
            self->lblWeatherRain->setText(stringWithFormat(QStringLiteral("%d"), {intValue(member(w, QStringLiteral("precipitation")))}));
            self->lblWeatherTemprature->setText(stringWithFormat(QStringLiteral("%d"), {intValue(member(w, QStringLiteral("temperature")))}));
            self->lblWeatherWind->setText(stringWithFormat(QStringLiteral("%d"), {intValue(member(w, QStringLiteral("windspeed")))}));
            self->lblWeatherDate->setText(stringWithFormat(QStringLiteral("%ld.%ld.%ld"),
                                                           {long(today.day()), long(today.month()), long(today.year())}));
            // The vector picture is drawn at a square of the view's width less 8.
            const double side = self->imgWeatherCondition->frameSize().width() - 8;
            self->imgWeatherCondition->setRenderSize(QSizeF(side, side));
            self->imgWeatherCondition->setImageWithURL(QUrl(weather::weatherIconUrl(member(w, QStringLiteral("pictocode")))));
        },
        [](const Json&) {});
}

// Events and the regional contact.

void ViewController::openEventView(QObject*) { handOver(QStringLiteral("farmingStockVC")); }

void ViewController::callPerson(QObject*) {
    const Json region = path(LocalStore::userInfo(), {QStringLiteral("location"), QStringLiteral("region")});
    const QString name = capitalized(stringOrNull(member(region, QStringLiteral("fullname"))));
    const Json phone = member(region, QStringLiteral("phonenumber"));
    auto* alert = AlertController::alertControllerWithTitle(
        QStringLiteral("Uyarı"),
        stringWithFormat(QStringLiteral("Size en yakın Zelmar yetkilisi %@ aranacaktır. %@ no'lu numara aransın mı?"), {name, phone}));
    alert->addAction(QStringLiteral("ARA"), AlertController::Default, [phone] {
        P().application().openURL(QUrl(stringWithFormat(QStringLiteral("tel:%@"), {phone})));
    });
    alert->addAction(QStringLiteral("İPTAL"), AlertController::Cancel);
    presentViewController(alert, true);
}

// Consent.

void ViewController::sendPermissions() {
    accounts::UpdateFarmerRequest request;
    request.doParam = QStringLiteral("farmer/etk");
    request.etkSmsPermission = m_consent->smsPermission();
    request.etkEmailPermission = m_consent->emailPermission();
    request.etkAdvPermission = m_consent->advPermission();
    service::ScreenCall call(this, QStringLiteral("farmer/etk"));
    // Whatever the answer, the question is answered: only the service brings it back.
    request.updateFarmer(call.done([this](const Json&) { m_consent->viewKVKK->setHidden(true); }), call.failed());
}

// Adding a farm.

void ViewController::saveFarm() {
    // Nothing is checked here: the service's answer is what the farmer sees.
    service::ScreenCall call(this, QStringLiteral("produce/set"), service::ScreenCall::WithHud);
    farms::FarmerProductRequest request;
    request.doParam = QStringLiteral("produce/set");
    request.range = m_cropEditor->txtFarmSize->text();
    request.apsList = m_cropEditor->chosenProductIds();
    const Json plant = m_cropEditor->chosenPlant();
    if (!plant.isUndefined()) request.produceID = member(plant, QStringLiteral("id"));
    request.addProduct(call.done([this](const Json& response) {
                           if (service::statusOf(response) != 200) return service::showFirstError(this, response);
                           m_cropEditor->removeNewProduceView();
                           getFarms();
                       }),
                       call.failed());
}

} // namespace ekinora::home
