#include "HomeViewController.h"

#include "CatalogueAlerts.h"
#include "CatalogueRequests.h"
#include "platform/Application.h"
#include "platform/NavigationController.h"
#include "platform/Platform.h"

namespace ekinora::catalogue {

using namespace platform;

namespace {

const QString PlantAtRest = QStringLiteral("Bitki Adı");
const QString IllnessAtRest = QStringLiteral("Hastalık/Zararlı/Yabancı Ot");
const QString GroupAtRest = QStringLiteral("Ürün Grubu");

void print(const QString& line) { Platform::current().application().log(line); }

// Names and ids of one filter list, in reply order; a nil name or id stops the application.
template <class Entry> void appendEntries(const QList<Entry>& entries, QStringList& names, QStringList& ids) {
    for (const Entry& entry : entries) {
        if (!entry.name) fatal(QStringLiteral("Fatal error: Unexpectedly found nil while unwrapping an Optional value (name)"));
        names.append(*entry.name);
        if (!entry.id) fatal(QStringLiteral("Fatal error: Unexpectedly found nil while unwrapping an Optional value (id)"));
        ids.append(QString::number(*entry.id));
    }
}

// Entries whose lowered form holds the lowered text. The platform's lowering, not a Turkish one: a
// capital I lowers to the dotted i.
QStringList matching(const QStringList& names, const QString& text) {
    QStringList out;
    const QString needle = text.toLower();
    for (const QString& name : names)
        if (name.toLower().contains(needle)) out.append(name);
    return out;
}

} // namespace

HomeViewController::HomeViewController(QObject* parent)
    : ViewController(parent), closeButton(makeControl<Button>("closeButton")),
      locationManager(new LocationManager(this)), tableView(makeControl<TableView>("tableView")),
      categoriesView(makeControl<View>("categoriesView")), bitkiAdiView(makeControl<View>("bitkiAdiView")),
      urunGrubuView(makeControl<View>("urunGrubuView")), hastalikView(makeControl<View>("hastalikView")),
      plantNameLbl(makeControl<Label>("plantNameLbl")), disasterLbl(makeControl<Label>("disasterLbl")),
      productGrpLbl(makeControl<Label>("productGrpLbl")), searchImgView(makeControl<ImageView>("searchImgView")),
      searchText(makeControl<TextField>("searchText")) {
    plantNameLbl->setText(PlantAtRest);
    disasterLbl->setText(IllnessAtRest);
    productGrpLbl->setText(GroupAtRest);
    searchText->setPlaceholder(QStringLiteral("Ara"));
    searchImgView->setImage(QStringLiteral("catalogueSearch"));
    closeButton->setTitle(QStringLiteral("Kapat"));
    closeButton->addTarget(this, &HomeViewController::closeButtonTapped);
    addSegue(QStringLiteral("toBitkiKorumaVC"), SegueKind::Show, QStringLiteral("SelectedProductSB"));
    addSegue(QStringLiteral("toAllProductsVC"), SegueKind::Show, QStringLiteral("AllProductsSB"));
    addSegue(QStringLiteral("toSprayProgramVC"), SegueKind::Show, QStringLiteral("SprayProgramSB"));
}

QUrl HomeViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Catalogue/CatalogueHomeView.qml")); }

void HomeViewController::viewDidLoad() {
    setTitle(QStringLiteral("Bitki Koruma Ürünleri"));
    categoriesView->setHidden(true);
    for (View* v : {bitkiAdiView, urunGrubuView, hastalikView, categoriesView}) {
        v->setClipsToBounds(true);
        v->setCornerRadius(7);
    }
    onEditingChanged(searchText, [this] { textFieldDidChange(searchText); });
    tableView->setDataSource([this](int) { return numberOfRows(); },
                             [this](int, int row) {
                                 return ListRow{QStringLiteral("categories"),
                                                {{QStringLiteral("textLabel"), rowText(row)}, {QStringLiteral("fontSize"), 14}},
                                                QSizeF(tableView->size().width(), 48), 0, row};
                             });
    tableView->setDidSelectRow([this](int, int row) { selectFilterRow(row); });
    auto& appearance = NavigationBarAppearance::shared();
    appearance.tintColor = Qt::black;
    appearance.titleColor = Qt::black;
    appearance.apply();
    showAlert(QStringLiteral("Kullanmadan önce talimatları mutlaka okuyunuz!"), this);
}

// Only the filters: the superclass's step is not called.
void HomeViewController::viewWillAppear(bool) { loadFilters(); }

void HomeViewController::loadFilters() {
    plantNames().clear();
    illnessNames().clear();
    pgroupNames().clear();
    // The id lists are not emptied, and the row labels keep their texts.
    selectedPgroupId() = QString("");
    selectedPlantId() = QString("");
    selectedIllnessId() = QString("");
    selectedPgroupName() = QString("");
    selectedIllnessName() = QString("");
    selectedPlantName() = QString("");
    GetFiltersRequest().getFilters(paths::Filters, [screen = strong(this)](const std::optional<Filter>&, const Error& error) {
        if (error) return showAlert(QStringLiteral("Bilinmeyen bir hata oluştu"), screen.get());
        screen->fillFilterLists(true);
    });
}

void HomeViewController::fillFilterLists(bool reload) {
    const auto& reply = filterReply();
    if (!reply || !reply->data)
        fatal(QStringLiteral("Fatal error: Unexpectedly found nil while unwrapping an Optional value (data)"));
    const Data& data = *reply->data;
    if (!data.plants || !data.illness || !data.pgroups)
        fatal(QStringLiteral("Fatal error: Unexpectedly found nil while unwrapping an Optional value (list)"));
    appendEntries(*data.plants, plantNames(), plantIds());
    appendEntries(*data.illness, illnessNames(), illnessIds());
    appendEntries(*data.pgroups, pgroupNames(), pgroupIds());
    if (reload) tableView->reloadData();
}

void HomeViewController::bitkiAdiTapped(QObject*) { openFilterPanel(1); }
void HomeViewController::urunGrubuTapped(QObject*) { openFilterPanel(2); }
void HomeViewController::hastalikTapped(QObject*) { openFilterPanel(3); }

void HomeViewController::openFilterPanel(int kind) {
    selectedFilterKind() = kind;
    tableView->reloadData();
    categoriesView->setHidden(false);
}

int HomeViewController::numberOfRows() const {
    if (!filterReply() || !filterReply()->data) return 0;
    switch (selectedFilterKind().value_or(0)) {
    case 1: return int(plantNames().size());
    case 2: return int(pgroupNames().size());
    default: return int(illnessNames().size());
    }
}

QString HomeViewController::rowText(int row) const {
    switch (selectedFilterKind().value_or(0)) {
    case 1: return plantNames().value(row);
    case 2: return pgroupNames().value(row);
    default: return illnessNames().value(row);
    }
}

void HomeViewController::closeButtonTapped(QObject*) {
    categoriesView->setHidden(true);
    searchText->setText(QString(""));
    endEditing();
}

void HomeViewController::selectFilterRow(int row) {
    categoriesView->setHidden(true);
    searchText->setText(QString(""));
    QString id, name, path;
    Label* label;
    switch (selectedFilterKind().value_or(0)) {
    case 1:
        id = selectedPlantId() = plantIds().at(row);
        name = selectedPlantName() = plantNames().at(row);
        label = plantNameLbl;
        path = QStringLiteral("/?do=productCatalog/filters&plant=%1&catalog=product-catalog");
        break;
    case 2:
        id = selectedPgroupId() = pgroupIds().at(row);
        name = selectedPgroupName() = pgroupNames().at(row);
        label = productGrpLbl;
        path = QStringLiteral("/?do=productCatalog/filters&pgroup=%1&catalog=product-catalog");
        break;
    default:
        id = selectedIllnessId() = illnessIds().at(row);
        name = selectedIllnessName() = illnessNames().at(row);
        label = disasterLbl;
        path = QStringLiteral("/?do=productCatalog/filters&illness=%1&catalog=product-catalog");
        break;
    }
    label->setText(name);
    selectedFilterId() = id;
    plantNames().clear();
    illnessNames().clear();
    pgroupNames().clear();
    // Only the row just chosen goes: the service alone decides how the three lists shrink. The reply
    // does not reload the table; the new lists show at the next opening of the panel.
    GetFiltersRequest().getFilters(path.arg(selectedFilterId()),
                                   [screen = strong(this)](const std::optional<Filter>&, const Error& error) {
                                       if (error) return showAlert(QStringLiteral("Bilinmeyen bir hata oluştu"), screen.get());
                                       screen->fillFilterLists(false);
                                   });
    tableView->reloadData();
}

void HomeViewController::textFieldDidChange(QObject*) { narrowNames(); }

// Narrows the shown list in place: each character filters what the last one left, and only emptying
// the field brings the entries back, by starting the whole choice anew. The ids are not narrowed.
void HomeViewController::narrowNames() {
    const QString text = searchText->text();
    if (text.isEmpty()) {
        print(QStringLiteral("Bilgiler Boş"));
        loadFilters();
    } else if (selectedFilterKind() == 3) {
        illnessNames() = matching(illnessNames(), text);
    } else if (selectedFilterKind() == 2) {
        pgroupNames() = matching(pgroupNames(), text);
    } else if (selectedFilterKind() == 1) {
        plantNames() = matching(plantNames(), text);
    } else {
        print(QStringLiteral("Have you done something new?"));
    }
    tableView->reloadData();
}

void HomeViewController::clearFiltersButtonTapped(QObject*) {
    selectedFilterId() = QString("");
    showAlert(QStringLiteral("Filtre temizlendi"), this);
    plantNameLbl->setText(PlantAtRest);
    disasterLbl->setText(IllnessAtRest);
    productGrpLbl->setText(GroupAtRest);
    loadFilters();
}

void HomeViewController::selectedProductButtonTapped(QObject*) {
    if (selectedPlantId().isEmpty() && selectedIllnessId().isEmpty() && selectedPgroupId().isEmpty())
        return showAlert(QStringLiteral("Hiç bir tercih yapmadınız"), this);
    performSegueWithIdentifier(QStringLiteral("toBitkiKorumaVC"), this);
}

void HomeViewController::showAllProducts(QObject*) { performSegueWithIdentifier(QStringLiteral("toAllProductsVC"), this); }

void HomeViewController::showSprayPrograms(QObject*) { performSegueWithIdentifier(QStringLiteral("toSprayProgramVC"), this); }

void HomeViewController::askForLocationAccess() {
    auto* alert = AlertController::alertControllerWithTitle(
        QStringLiteral("Uyarı"), QStringLiteral("Size En Yakın Yetkiliyi Aramak İçin İzin Verin"), AlertController::Alert);
    alert->addAction(QStringLiteral("Ayarlar"), AlertController::Default,
                     [] { Platform::current().application().openURL(QUrl(QStringLiteral("app-settings:"))); });
    presentViewController(alert, true);
}

} // namespace ekinora::catalogue
