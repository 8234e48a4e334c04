#include "RegistrationWizard.h"

#include "RegisterRequests.h"
#include "platform/AlertController.h"
#include "platform/Platform.h"
#include "service/LocalStore.h"
#include "service/Replies.h"
#include "service/ServiceCall.h"
#include "service/TextHelpers.h"
#include "service/WSRequest.h"

namespace ekinora::accounts {

using namespace platform;
using service::LocalStore;
namespace StoreKey = service::StoreKey;

namespace {

Platform& P() {
    return Platform::current();
}
void log(const QString& line) {
    P().application().log(line);
}

bool statusIs(const Json& response, int status) {
    return intValue(member(response, QStringLiteral("status"))) == status;
}

// The id of the last record of the list whose "name" is exactly the text, or nil.
Json lastIdNamed(const QJsonArray& list, const QString& name) {
    Json found = nil();
    for (const auto& record : list)
        if (isString(member(record, QStringLiteral("name")), name)) found = member(record, QStringLiteral("id"));
    return found;
}

// A value as a label shows it: a text as it is, anything else as "%@" writes it.
QString textOf(const Json& value) {
    return value.isString() ? value.toString() : description(value);
}

// A stored text, or nil when the key is absent.
Json storedText(const QString& key) {
    const QString value = LocalStore::defaults().stringForKey(key);
    return value.isNull() ? nil() : Json(value);
}

const QString NoPlant = QStringLiteral("Ürün Seçiniz");
const QString NoProducts = QStringLiteral("Zirai Ürün Seçiniz");
const QString NoProductsOnCard = QStringLiteral("Zirai Ürün Seçilmedi");
const QString BackTitle = QStringLiteral("Geriye Dön");
const QString WaitingText =
    QStringLiteral("Kayıt işleminiz başarıyla gerçekleştirildi. Hesabınız aktif edildiğinde sisteme giriş yapabilirsiniz");
constexpr int CityListTag = 101;
constexpr int CountyListTag = 102;
constexpr int MaxCrops = 3;

} // namespace

RegistrationWizard::RegistrationWizard(RegistrationPolicy policy, ViewController* host)
    : ViewController(host), viewRegisterInfo(makeControl<View>("viewRegisterInfo")), memberShipView(makeControl<View>("memberShipView")),
      nameView(makeControl<View>("nameView")), viewRegisterFarm(makeControl<View>("viewRegisterFarm")),
      ciftciTarlaView(makeControl<View>("ciftciTarlaView")), bayiBilgileriView(makeControl<View>("bayiBilgileriView")),
      viewRegisterActivation(makeControl<View>("viewRegisterActivation")), viewRegisterFinal(makeControl<View>("viewRegisterFinal")),
      farmerButton(makeControl<Button>("farmerButton")), dealerButton(makeControl<Button>("dealerButton")),
      devamButton(makeControl<Button>("devamButton")), completeRegistrationButton(makeControl<Button>("completeRegistrationButton")),
      activationLabel(makeControl<Label>("activationLabel")), txtName(makeControl<TextField>("txtName")),
      txtLastName(makeControl<TextField>("txtLastName")), txtMail(makeControl<TextField>("txtMail")),
      txtCity(makeControl<TextField>("txtCity")), txtCounty(makeControl<TextField>("txtCounty")), btnCity(makeControl<Button>("btnCity")),
      btnCounty(makeControl<Button>("btnCounty")), bayiAdiText(makeControl<TextField>("bayiAdiText")),
      vergiNoText(makeControl<TextField>("vergiNoText")), tcKimlikText(makeControl<TextField>("tcKimlikText")),
      collFarms(makeControl<TableView>("collFarms")), m_policy(std::move(policy)), m_host(host) {
    // The host's stack is the wizard's: the navigation bar, the indicator and the alerts are the host's.
    setParentController(host);
    completeRegistrationButton->setTitle(QStringLiteral("Kaydı Tamamla"));
    activationLabel->setNumberOfLines(0);
    activationLabel->setText(QStringLiteral("Bilgileriniz hazır. Kaydınızı tamamlamak için aşağıdaki butona dokunun."));

    // The crops stay here until the registration sends them; at most three products each. The editor
    // is the host's child, so that it lies over the whole screen and its keyboard is the host's.
    farms::CropEditorPolicy crop;
    crop.productTextControl = QStringLiteral("lblProductName");
    crop.endEditingOnOpen = true;
    crop.endEditingOnAccept = true;
    // A new crop starts from the products chosen last: opening the panel leaves them as they are.
    crop.clearProductsOnOpen = false;
    crop.productSelectionStyle = true;
    crop.add = [this] { addCrop(); };
    crop.update = [this] { updateCrop(); };
    crop.remove = [this] { deleteCrop(); };
    crop.productsHint = QStringLiteral("En fazla 3 ürün seçebilirsiniz.");
    m_cropEditor = new farms::CropEditor(std::move(crop), host);
    TextField* txtFarmSize = m_cropEditor->txtFarmSize;

    for (TextField* field : {txtName, txtLastName, txtMail, bayiAdiText, vergiNoText, tcKimlikText, txtFarmSize})
        field->setShouldReturn([](TextField* f) {
            f->resignFirstResponder();
            return true;
        });
    txtName->setPlaceholder(QStringLiteral("Adınız"));
    txtLastName->setPlaceholder(QStringLiteral("Soyadınız"));
    txtMail->setPlaceholder(QStringLiteral("E-posta adresiniz (isteğe bağlı)"));
    txtMail->setKeyboardType(7);
    // The place is shown in these two fields; the buttons over them open the lists.
    txtCity->setPlaceholder(QStringLiteral("İl Seçiniz"));
    txtCounty->setPlaceholder(QStringLiteral("İlçe Seçiniz"));
    bayiAdiText->setPlaceholder(QStringLiteral("Bayi adı"));
    vergiNoText->setPlaceholder(QStringLiteral("Vergi numarası"));
    vergiNoText->setKeyboardType(4);
    tcKimlikText->setPlaceholder(QStringLiteral("T.C. Kimlik Numarası"));
    tcKimlikText->setKeyboardType(4);
    txtFarmSize->setPlaceholder(QStringLiteral("Tarla büyüklüğü (dekar)"));
    txtFarmSize->setKeyboardType(4);
    m_cropEditor->lblFarm->setText(NoPlant);
    m_cropEditor->lblProduct->setText(NoProducts);

    farmerButton->setTitle(QStringLiteral("Çiftçiyim"));
    dealerButton->setTitle(QStringLiteral("Bayiyim"));
    devamButton->setTitle(QStringLiteral("Devam"));
    m_cropEditor->btnNewProduce->setTitle(QStringLiteral("Ekle"));
    m_cropEditor->btnUpdateProduce->setTitle(QStringLiteral("Güncelle"));
    m_cropEditor->btnDeleteProduce->setTitle(QStringLiteral("Sil"));

    collFarms->setDataSource(
        [this](int section) { return numberOfItemsInSection(collFarms, section); },
        [this](int, int row) { return cellRow(cellForItem(collFarms, row), sizeForItem(collFarms, row, collFarms->size().width())); });
    collFarms->setDidSelectRow([this](int, int row) { didSelectItem(collFarms, row); });
    farmerButton->addTarget(this, QStringLiteral("farmerButtonTapped"));
    dealerButton->addTarget(this, QStringLiteral("dealerButtonTapped"));
    devamButton->addTarget(this, QStringLiteral("continueToFarm"));
    completeRegistrationButton->addTarget(this, QStringLiteral("finishRegistration"));
    btnCity->addTarget(this, QStringLiteral("selectCity"));
    btnCounty->addTarget(this, QStringLiteral("selectCounty"));
}

QUrl RegistrationWizard::viewSource() const {
    return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Accounts/RegistrationWizardView.qml"));
}

void RegistrationWizard::showAlert(const QString& title, const QString& message, int style) {
    auto* alert = AlertController::alertControllerWithTitle(title, message);
    alert->addAction(QStringLiteral("Tamam"), AlertController::ActionStyle(style));
    m_host->presentViewController(alert, true);
}

void RegistrationWizard::load() {
    memberShipView->setAlpha(1.0);
    memberShipView->setHidden(false);
    arrCities = QJsonArray();
    arrCounties = QJsonArray();
    getCities();
    // The crop list shows its adding cell from the start.
    arrFarms = QJsonArray();
    collFarms->reloadData();
    m_cropEditor->load();
}

void RegistrationWizard::open() {
    for (View* v : {viewRegisterInfo, memberShipView})
        v->setHidden(false);
    for (View* v : {nameView, viewRegisterActivation, viewRegisterFinal, viewRegisterFarm})
        v->setHidden(true);
    devamButton->setHidden(true);
}

void RegistrationWizard::showActivationPending() {
    for (View* v : {viewRegisterFarm, viewRegisterInfo, viewRegisterActivation, memberShipView})
        v->setHidden(true);
    viewRegisterFinal->setHidden(false);
    completeRegistrationButton->setTitle(BackTitle);
    activationLabel->setText(WaitingText);
}

// Region lookup ----------------------------------------------------------------------------------

void RegistrationWizard::getCities() {
    service::WSRequest request;
    request.doParam = QStringLiteral("region/cities");
    request.requestData(
        [host = strong(m_host), this](const Json& response) {
            arrCities = service::listOf(path(response, {QStringLiteral("data"), QStringLiteral("cities")}));
        },
        [](const Json& error) { log(QStringLiteral("getCities: %1").arg(description(error))); });
}

void RegistrationWizard::setDropDown(QObject* list) {
    m_dropDown = qobject_cast<widgets::DropDownList*>(list);
    emit dropDownChanged();
}

void RegistrationWizard::rel() {
    setDropDown(nullptr);
}

void RegistrationWizard::getCounties() {
    txtCity->setText(btnCity->title());
    service::WSRequest request;
    request.doParam = QStringLiteral("region/counties");
    request.cityID = lastIdNamed(arrCities, txtCity->text());
    request.requestData(
        [host = strong(m_host), this](const Json& response) {
            txtCounty->setText(QString());
            arrCounties = service::listOf(path(response, {QStringLiteral("data"), QStringLiteral("counties")}));
            btnCounty->setUserInteractionEnabled(true);
        },
        [](const Json& error) { log(QStringLiteral("getCounties: %1").arg(description(error))); });
}

void RegistrationWizard::selectCity(QObject* sender) {
    m_host->endEditing();
    QStringList names;
    for (const auto& city : std::as_const(arrCities))
        names << textOf(member(city, QStringLiteral("name")));
    if (names.isEmpty()) return;
    if (auto* open = qobject_cast<widgets::DropDownList*>(m_dropDown.data())) {
        open->hideDropDown(qobject_cast<Button*>(sender));
        rel();
        return;
    }
    auto* list = new widgets::DropDownList;
    list->showDropDown(qobject_cast<Button*>(sender), 250, names, {}, QStringLiteral("down"));
    list->setDelegate(this);
    list->setTag(CityListTag);
    setDropDown(list);
}

void RegistrationWizard::selectCounty(QObject* sender) {
    m_host->endEditing();
    QStringList names;
    for (const auto& county : std::as_const(arrCounties))
        names << textOf(member(county, QStringLiteral("name")));
    if (!names.isEmpty()) {
        if (auto* open = qobject_cast<widgets::DropDownList*>(m_dropDown.data())) {
            open->hideDropDown(qobject_cast<Button*>(sender));
            rel();
        } else {
            auto* list = new widgets::DropDownList;
            list->showDropDown(qobject_cast<Button*>(sender), 250, names, {}, QStringLiteral("down"));
            list->setDelegate(this);
            list->setTag(CountyListTag);
            setDropDown(list);
        }
    }
    if (arrCounties.isEmpty()) showAlert(QStringLiteral("Uyarı"), QStringLiteral("Önce şehir seçiniz."));
}

void RegistrationWizard::dropDownListDelegateMethod(QObject* sender) {
    rel();
    auto* list = qobject_cast<widgets::DropDownList*>(sender);
    if (list && list->tag() == CityListTag) {
        // While the new city's counties are on their way the old list can't be opened.
        btnCounty->setUserInteractionEnabled(false);
        P().scheduler().after(500, [host = strong(m_host), this] { getCounties(); });
    } else {
        txtCounty->setText(btnCounty->title());
    }
}

// The steps --------------------------------------------------------------------------------------

void RegistrationWizard::chooseRole(const QString& type) {
    memberShipView->setHidden(true);
    nameView->setHidden(false);
    devamButton->setHidden(false);
    registerType = type;
    canOpenKvkkView();
}

void RegistrationWizard::farmerButtonTapped(QObject*) {
    chooseRole(QStringLiteral("farmer"));
}

void RegistrationWizard::dealerButtonTapped(QObject*) {
    chooseRole(QStringLiteral("dealer"));
}

void RegistrationWizard::canOpenKvkkView() {
    auto* alert = AlertController::alertControllerWithTitle(QStringLiteral("Uyarı"),
                                                            QStringLiteral("Kayıt olarak Kullanım Şartlarını onaylamış olursunuz."));
    ConsentPanel* consent = m_policy.consent;
    alert->addAction(QStringLiteral("Onaylıyorum"), AlertController::Default, [host = strong(m_host), consent] { consent->acceptKVKK(); });
    alert->addAction(QStringLiteral("Kullanım Şartları Metnine Git"), AlertController::Default, [host = strong(m_host), consent] {
        consent->viewKVKK->setHidden(false);
        consent->bringSubviewToFront(consent->viewKVKK);
    });
    service::hudHost(m_host)->presentViewController(alert, true);
}

void RegistrationWizard::continueToActivation(QObject*) {}

void RegistrationWizard::continueToInfo(QObject*) {
    m_host->endEditing();
    for (View* v : {viewRegisterActivation, viewRegisterFarm, viewRegisterFinal})
        v->setHidden(true);
    viewRegisterInfo->setHidden(false);
}

void RegistrationWizard::continueToFarm(QObject*) {
    m_host->endEditing();
    for (TextField* f : {txtName, txtLastName, txtCounty, txtCity}) {
        if (f->text().isEmpty()) {
            showAlert(QStringLiteral("Uyarı"), QStringLiteral("Kişisel bilgilerinizi giriniz."));
            return;
        }
    }
    if (isString(registerType, QStringLiteral("dealer"))) {
        // The shop's panel keeps the visibility it had.
        ciftciTarlaView->setHidden(true);
    } else if (isString(registerType, QStringLiteral("farmer"))) {
        ciftciTarlaView->setHidden(false);
        bayiBilgileriView->setHidden(true);
    }
    viewRegisterFarm->setHidden(false);
    for (View* v : {viewRegisterActivation, viewRegisterInfo, viewRegisterFinal})
        v->setHidden(true);
}

void RegistrationWizard::continueToFinish(QObject*) {
    if (isString(registerType, QStringLiteral("dealer"))) {
        if (bayiAdiText->text().isEmpty() || vergiNoText->text().isEmpty() || tcKimlikText->text().isEmpty()) {
            showAlert(QStringLiteral("Uyarı"), QStringLiteral("Bayi bilgilerini giriniz."));
            return;
        }
        checkDealer();
        return;
    }
    // A farmer may register without a crop.
    m_host->endEditing();
    for (View* v : {viewRegisterFarm, viewRegisterActivation, viewRegisterInfo})
        v->setHidden(true);
    viewRegisterFinal->setHidden(false);
}

void RegistrationWizard::checkDealer() {
    CheckDealerRequest request;
    request.doParam = QStringLiteral("dealer/check-information-field");
    request.taxNumber = vergiNoText->text();
    request.dealerName = bayiAdiText->text();
    request.TCNo = tcKimlikText->text();
    request.checkDealer(
        [host = strong(m_host), this](const Json& response) {
            if (statusIs(response, 200)) {
                for (View* v : {viewRegisterFarm, viewRegisterActivation, bayiBilgileriView, viewRegisterInfo})
                    v->setHidden(true);
                viewRegisterFinal->setHidden(false);
                return;
            }
            const Json errors = member(response, QStringLiteral("errors"));
            const Json identity = member(errors, QStringLiteral("TCNo"));
            if (!identity.isUndefined()) showAlert(QStringLiteral("Hata"), textOf(identity), AlertController::Destructive);
            // Presented after the identity alert, so that with both errors only the first is seen.
            const Json tax = member(errors, QStringLiteral("taxNumber"));
            showAlert(QStringLiteral("Hata"), tax.isUndefined() ? QStringLiteral("Bilgileri doğru girdiğinizden emin olun") : textOf(tax),
                      AlertController::Destructive);
        },
        [](const Json& error) { log(QStringLiteral("checkDealer: %1").arg(description(error))); });
}

void RegistrationWizard::finishRegistration(QObject*) {
    if (completeRegistrationButton->title() == BackTitle) {
        if (m_policy.backToLogin) m_policy.backToLogin();
        return;
    }
    if (isString(registerType, QStringLiteral("farmer")))
        registerFarmer();
    else if (isString(registerType, QStringLiteral("dealer")))
        registerDealer();
}

Json RegistrationWizard::countyIdByName(const QString& name) const {
    return lastIdNamed(arrCounties, name);
}

void RegistrationWizard::registerFarmer() {
    service::ScreenCall call(m_host, QStringLiteral("farmer/register"), service::ScreenCall::WithHud);
    RegisterFarmerRequest request;
    request.doParam = QStringLiteral("farmer/register");
    request.email = txtMail->text();
    request.deviceID = storedText(StoreKey::NotifToken);
    request.countyID = countyIdByName(txtCounty->text());
    request.firstName = txtName->text();
    request.lastName = txtLastName->text();
    request.hashID = storedText(StoreKey::HashCode);
    // Each crop as it was entered, with its products reduced to their ids.
    QJsonArray fields;
    for (const auto& crop : std::as_const(arrFarms)) {
        QJsonObject field = crop.toObject();
        QJsonArray ids;
        const Json aps = member(crop, QStringLiteral("aps"));
        for (int i = 0, n = count(aps); i < n; ++i)
            ids.append(member(element(aps, i), QStringLiteral("id")));
        field.insert(QStringLiteral("aps"), ids);
        fields.append(field);
    }
    request.arrFields = fields;
    request.etkSmsPermission = m_policy.consent->smsPermission();
    request.etkAdvPermission = m_policy.consent->advPermission();
    request.etkEmailPermission = m_policy.consent->emailPermission();
    request.registerFarmer(call.done([host = strong(m_host), this](const Json& response) {
        if (!statusIs(response, 200)) {
            // The data stays for another press; the hash goes again as it is.
            showAlert(QStringLiteral("Uyarı"), service::firstError(response));
            return;
        }
        if (m_policy.signIn) m_policy.signIn(member(response, QStringLiteral("data")));
    }),
                           call.failed());
}

void RegistrationWizard::registerDealer() {
    service::ScreenCall call(m_host, QStringLiteral("dealer/register"), service::ScreenCall::WithHud);
    RegisterDealerRequest request;
    request.doParam = QStringLiteral("dealer/register");
    request.email = txtMail->text();
    request.deviceID = storedText(StoreKey::NotifToken);
    request.countyID = countyIdByName(txtCounty->text());
    request.firstName = txtName->text();
    request.lastName = txtLastName->text();
    request.etkSmsPermission = m_policy.consent->smsPermission();
    request.etkAdvPermission = m_policy.consent->advPermission();
    request.etkEmailPermission = m_policy.consent->emailPermission();
    request.hashID = storedText(StoreKey::HashCode);
    request.dealerNumber = vergiNoText->text();
    request.dealerName = bayiAdiText->text();
    request.TCNo = tcKimlikText->text();
    request.registerDealer(call.done([host = strong(m_host), this](const Json& response) {
        if (!statusIs(response, 200)) {
            showAlert(QStringLiteral("Uyarı"), service::firstError(response));
            return;
        }
        // Not signed in: the company opens the account later. The next press leads back.
        activationLabel->setText(WaitingText);
        completeRegistrationButton->setTitle(BackTitle);
    }),
                           call.failed());
}

// The crops ----------------------------------------------------------------------------------------

QString RegistrationWizard::productLines(const Json& aps, const QString& none) {
    QString lines;
    for (int i = 0, n = count(aps); i < n; ++i)
        lines += textOf(member(element(aps, i), QStringLiteral("name"))) + u'\n';
    lines = service::plainProductName(lines);
    if (lines.isEmpty()) return none;
    lines.chop(1);
    return lines;
}

int RegistrationWizard::numberOfItemsInSection(QObject* collection, int) {
    if (collection == collFarms) return arrFarms.size() == MaxCrops ? MaxCrops : int(arrFarms.size()) + 1;
    return 0;
}

QVariantMap RegistrationWizard::cellForItem(QObject* collection, int row) const {
    QVariantMap cell;
    if (collection != collFarms) return cell;
    if (row >= arrFarms.size()) {
        cell.insert(QStringLiteral("reuseIdentifier"), QStringLiteral("NewFarmCell"));
        return cell;
    }
    const Json crop = arrFarms.at(row);
    const Json name = member(crop, QStringLiteral("name"));
    cell.insert(QStringLiteral("reuseIdentifier"), QStringLiteral("FarmCell"));
    cell.insert(QStringLiteral("lblFarm"), name.isUndefined() ? QString() : textOf(name));
    cell.insert(QStringLiteral("lblFarmSize"), stringWithFormat(QStringLiteral("%@ dekar"), {member(crop, QStringLiteral("range"))}));
    cell.insert(QStringLiteral("lblProducts"), productLines(member(crop, QStringLiteral("aps")), NoProductsOnCard));
    return cell;
}

void RegistrationWizard::didSelectItem(QObject* collection, int row) {
    if (collection != collFarms) return;
    if (row >= arrFarms.size()) {
        m_cropEditor->openNewProduceView();
        return;
    }
    // The crop opens in the edit panel.
    selectedProduceID = row;
    const Json crop = arrFarms.at(row);
    const Json name = member(crop, QStringLiteral("name"));
    m_cropEditor->openCrop(name.isUndefined() ? QString() : textOf(name), textOf(member(crop, QStringLiteral("range"))),
                           productLines(member(crop, QStringLiteral("aps")), NoProducts));
}

QSizeF RegistrationWizard::sizeForItem(QObject* collection, int row, double frameWidth) const {
    if (collection == collFarms) return QSizeF(frameWidth - 32, row < arrFarms.size() ? 190 : 65);
    return QSizeF(frameWidth, 50);
}

double RegistrationWizard::minimumLineSpacing(QObject* collection) const {
    return collection == collFarms ? 16 : 1;
}

double RegistrationWizard::minimumInteritemSpacing(QObject*) const {
    return 1;
}

double RegistrationWizard::sectionInset(QObject* collection) const {
    return collection == collFarms ? 16 : 0;
}

void RegistrationWizard::addCrop() {
    m_host->endEditing();
    const QString size = m_cropEditor->txtFarmSize->text();
    const QString plantText = m_cropEditor->lblFarm->text();
    QJsonObject crop{{QStringLiteral("range"), size}};
    const QJsonArray aps = m_cropEditor->chosenProducts();
    if (!aps.isEmpty()) crop.insert(QStringLiteral("aps"), aps);
    if (const Json plant = m_cropEditor->chosenPlant(); !plant.isUndefined()) {
        crop.insert(QStringLiteral("produceId"), member(plant, QStringLiteral("id")));
        crop.insert(QStringLiteral("name"), member(plant, QStringLiteral("name")));
    }

    QString problem;
    if (plantText == NoPlant || plantText.isEmpty())
        problem = QStringLiteral("Ürün seçmediniz.");
    else if (size.isEmpty() || size == QStringLiteral("0"))
        problem = QStringLiteral("Tarla büyüklüğünü girmediniz.");
    else if (intValueOfString(size) >= 10001)
        problem = QStringLiteral("Tarla büyüklüğü 10000 dekardan büyük olamaz.");
    if (!problem.isEmpty()) {
        showAlert(QStringLiteral("Uyarı"), problem);
        return;
    }
    arrFarms.append(crop);
    m_cropEditor->removeNewProduceView();
    collFarms->reloadData();
}

void RegistrationWizard::updateCrop() {
    // Unlike adding, an update is not checked: an empty size, 0 or more than 10000 all pass.
    m_host->endEditing();
    QJsonObject crop{{QStringLiteral("range"), m_cropEditor->txtFarmSize->text()}};
    crop.insert(QStringLiteral("aps"), m_cropEditor->chosenProducts());
    // The crop kind goes under "id" here, and that is how an updated crop is sent.
    if (const Json plant = m_cropEditor->chosenPlant(); !plant.isUndefined()) {
        crop.insert(QStringLiteral("id"), member(plant, QStringLiteral("id")));
        crop.insert(QStringLiteral("name"), member(plant, QStringLiteral("name")));
    }
    if (selectedProduceID < 0 || selectedProduceID >= arrFarms.size())
        fatal(QStringLiteral("-[__NSArrayM replaceObjectAtIndex:withObject:]: index %1 beyond bounds").arg(selectedProduceID));
    arrFarms.replace(selectedProduceID, crop);
    m_cropEditor->removeNewProduceView();
    collFarms->reloadData();
}

void RegistrationWizard::deleteCrop() {
    m_host->endEditing();
    if (selectedProduceID < 0 || selectedProduceID >= arrFarms.size())
        fatal(QStringLiteral("-[__NSArrayM removeObjectsInRange:]: range {%1, 1} beyond bounds").arg(selectedProduceID));
    arrFarms.removeAt(selectedProduceID);
    m_cropEditor->removeNewProduceView();
    collFarms->reloadData();
}

} // namespace ekinora::accounts
