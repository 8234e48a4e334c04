#include "SeedScreens.h"

#include "catalogue/CatalogueAlerts.h"
#include "catalogue/CatalogueRequests.h"
#include "catalogue/DetailTree.h"
#include "catalogue/DocumentViewers.h"
#include "catalogue/ProductDetailViewController.h"
#include "catalogue/ProductListViews.h"
#include "catalogue/RegionAttendantCall.h"
#include "platform/NavigationController.h"
#include "platform/Overlays.h"
#include "platform/Platform.h"
#include "platform/Storyboard.h"
#include "service/LocalStore.h"

namespace ekinora::seeds {

using namespace platform;
using namespace catalogue;

namespace {
constexpr double HeaderHeight = 56;
constexpr double CardHeight = 132;
constexpr double PictureHeight = 190;
constexpr double DocumentRowHeight = 56;

void print(const QString& line) { Platform::current().application().log(line); }
} // namespace

QString maizeCanola() { return service::LocalStore::defaults().stringForKey(service::StoreKey::MaizeCanola); }

// ---- home

QUrl MaizeHomeViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Seeds/MaizeHomeView.qml")); }

void MaizeHomeViewController::viewDidLoad() { setTitle(QStringLiteral("Mısır Tohum Ürünleri")); }

void MaizeHomeViewController::openList(const QString& id) {
    auto* list = qobject_cast<MaizeAllViewController*>(Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("MaizeAllSB")));
    if (!list) fatal(QStringLiteral("Could not cast value to MaizeAllViewController"));
    list->setTitle(QStringLiteral("Bitki Koruma Ürünleri"));
    list->id = id;
    if (auto* nav = navigationController()) nav->pushViewController(list, true);
}

void MaizeHomeViewController::toAllButtonTapped(QObject*) { openList(QStringLiteral("")); }
void MaizeHomeViewController::pg1Tapped(QObject*) { openList(QStringLiteral("362")); }
void MaizeHomeViewController::pg2Tapped(QObject*) { openList(QStringLiteral("363")); }
void MaizeHomeViewController::pg3Tapped(QObject*) { openList(QStringLiteral("364")); }

// ---- list

MaizeAllViewController::MaizeAllViewController(QObject* parent)
    : ViewController(parent), searchBar(makeControl<TextField>("searchBar")), tableView(makeControl<TableView>("tableView")),
      collectionView(makeControl<TableView>("collectionView")) {
    searchBar->setPlaceholder(QStringLiteral("Ürün ara"));
    auto* item = gridSwitch(this);
    item->addTarget(this, &MaizeAllViewController::changeGridWithSender);
    setRightBarButtonItem(item);
}

QUrl MaizeAllViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Seeds/MaizeAllView.qml")); }

void MaizeAllViewController::viewDidLoad() {
    tableView->setDataSource([this](int) { return numberOfItems(); },
                             [this](int, int row) {
                                 return ListRow{QStringLiteral("allProductCell"), cellValues(QStringLiteral("allProductCell"), row),
                                                QSizeF(tableView->size().width(), 96), 0, row};
                             });
    collectionView->setDataSource([this](int) { return numberOfItems(); },
                                  [this](int, int row) {
                                      return ListRow{QStringLiteral("MaizeAllProductCell"),
                                                     cellValues(QStringLiteral("MaizeAllProductCell"), row),
                                                     gridCellSize(collectionView), 0, row};
                                  });
    tableView->setDidSelectRow([this](int, int row) { didSelectRow(row); });
    collectionView->setDidSelectRow([this](int, int row) { didSelectRow(row); });
    const QString range = maizeCanola();
    if (range == QLatin1String("maize")) {
        leftBarButtonRemoved = true;
        setTitle(QStringLiteral("Mısır Tohum Ürünleri"));
    } else if (range == QLatin1String("canola")) {
        setTitle(QStringLiteral("Kanola Tohum Ürünleri"));
    }
    collectionView->setHidden(true);
    tableView->setHidden(false);
    emit layoutChanged();
    loadProducts();
    onEditingChanged(searchBar, [this] { searchTextChanged(searchBar); });
    searchBar->setShouldReturn([this](TextField*) {
        searchBarSearchButtonClicked(searchBar);
        return true;
    });
    searchBegin = false;
}

void MaizeAllViewController::loadProducts() {
    const QString range = maizeCanola();
    QString path;
    if (range == QLatin1String("canola")) path = QStringLiteral("/?do=productCatalog/products&catalog=canola-catalog");
    else if (range == QLatin1String("maize"))
        path = id.isEmpty() ? QStringLiteral("/?do=productCatalog/products&catalog=maize-catalog")
                            : QStringLiteral("/?do=productCatalog/products&catalog=maize-catalog&pgroup=") + id;
    // Not cleared first: the other range's rows can show until the reply.
    GetMaizeAllProduct().getMaizeProducts(path, [screen = strong(this)](const std::optional<MaizeProducts>&, const Error& error) {
        if (error) return showAlert(QStringLiteral("Bilinmeyen bir hata oluştu"), screen.get());
        screen->tableView->reloadData();
        screen->collectionView->reloadData();
    });
}

int MaizeAllViewController::numberOfItems() const {
    if (searchBegin) return int(indexArr.size());
    return maizeProducts() ? int(maizeProducts()->data.size()) : 0;
}

QVariantMap MaizeAllViewController::cellValues(const QString& reuseIdentifier, int row) const {
    const QList<MaizeProductsSubData> none;
    const auto& products = maizeProducts() ? maizeProducts()->data : none;
    const int n = searchBegin ? indexArr.value(row) : row;
    const MaizeProductsSubData product = products.value(n);
    QVariantMap values{{QStringLiteral("reuseIdentifier"), reuseIdentifier},
                       {QStringLiteral("label1"), searchBegin ? product.group : product.title},
                       {QStringLiteral("label2"), searchBegin ? product.title : product.group},
                       {QStringLiteral("imgView"), product.image}};
    if (reuseIdentifier == QLatin1String("allProductCell")) values.insert(QStringLiteral("borderWidth"), 0.4);
    return values;
}

void MaizeAllViewController::searchTextChanged(QObject*) {
    indexArr.clear();
    if (searchBar->text().isEmpty()) {
        loadProducts();
        searchBegin = false;
    } else {
        searchBegin = true;
        if (!maizeProducts()) fatal(QStringLiteral("Fatal error: Unexpectedly found nil while unwrapping an Optional value (maizeProducts)"));
        const auto& products = maizeProducts()->data;
        if (products.isEmpty()) fatal(QStringLiteral("Fatal error: Range requires lowerBound <= upperBound"));
        const QString needle = searchBar->text().toLower();
        // One short of the end, as in the plant-protection list.
        for (int i = 0; i < products.size() - 1; ++i)
            if (products.at(i).title.toLower().contains(needle)) indexArr.append(i);
    }
    tableView->reloadData();
    collectionView->reloadData();
}

// The row as it stands, also during a search.
void MaizeAllViewController::didSelectRow(int row) {
    if (!maizeProducts() || row < 0 || row >= maizeProducts()->data.size()) fatal(QStringLiteral("Fatal error: Index out of range"));
    auto* detail = qobject_cast<MaizeDetailViewController*>(
        Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("MaizeDetailSB")));
    if (!detail) fatal(QStringLiteral("Could not cast value to MaizeDetailViewController"));
    detail->id = QString::number(maizeProducts()->data.at(row).id);
    if (auto* nav = navigationController()) nav->pushViewController(detail, true);
}

void MaizeAllViewController::changeGridWithSender(QObject*) {
    changeGrid(isList, tableView, collectionView, rightBarButtonItem());
    emit layoutChanged();
}
void MaizeAllViewController::searchBarSearchButtonClicked(QObject*) { searchBar->resignFirstResponder(); }
void MaizeAllViewController::scrollViewWillBeginDragging(QObject*) { endEditing(); }

// ---- detail

QVariantMap SeedCard::values() const {
    return {{QStringLiteral("kind"), kind},           {QStringLiteral("title"), title},
            {QStringLiteral("canolaTitle"), canolaTitle}, {QStringLiteral("detail"), detail},
            {QStringLiteral("imgView"), imageUrl},    {QStringLiteral("imgViewHidden"), imgViewHidden},
            {QStringLiteral("titleHidden"), titleHidden}, {QStringLiteral("hidden"), hidden}};
}

QList<SeedCard> seedCards(const Json& section, int row, const QString& range) {
    QList<SeedCard> cards;
    const Json blocks = sub(section, QStringLiteral("data"));
    if (range == QLatin1String("maize")) {
        for (int j = 0; j < jsonCount(blocks); ++j) {
            const Json block = at(blocks, j);
            const auto type = text(sub(block, QStringLiteral("type")));
            const Json data = sub(block, QStringLiteral("data"));
            if (type == QStringLiteral("contentBox")) {
                const Json box = sub(data, QStringLiteral("contentBox"));
                SeedCard card{QStringLiteral("MaizeDetailAfter2CB")};
                card.hidden = box.isUndefined() || box.isNull();
                card.title = text(sub(box, QStringLiteral("title"))).value_or(QString());
                card.detail = text(sub(box, QStringLiteral("description"))).value_or(QString());
                card.imageUrl = text(sub(box, QStringLiteral("src"))).value_or(QString());
                cards.append(card);
            } else if (type == QStringLiteral("image")) {
                const Json image = sub(data, QStringLiteral("image"));
                SeedCard card{QStringLiteral("MaizeDetailAfter2Img")};
                card.hidden = image.isUndefined() || image.isNull();
                card.imageUrl = text(sub(image, QStringLiteral("src"))).value_or(QString());
                cards.append(card);
            }
        }
        return cards;
    }
    if (range != QLatin1String("canola")) return cards;
    // Canola goes by position: row 1 is one picture; elsewhere paragraph and headline pairs.
    if (row == 1) {
        print(QString::number(row));
        SeedCard card{QStringLiteral("MaizeDetailAfter2Img")};
        card.imageUrl = text(path(at(blocks, 0), {QStringLiteral("data"), QStringLiteral("image"), QStringLiteral("src")})).value_or(QString());
        cards.append(card);
        return cards;
    }
    const int n = jsonCount(blocks);
    for (int k = 0, i = 0; k < n / 2; ++k, i += 2) {
        SeedCard card{QStringLiteral("MaizeDetailAfter2CB")};
        card.imgViewHidden = true;
        card.titleHidden = true;
        card.canolaTitle = text(at(sub(sub(at(blocks, i + 1), QStringLiteral("data")), QStringLiteral("headline")), 0)).value_or(QString());
        card.detail = text(at(sub(sub(at(blocks, i), QStringLiteral("data")), QStringLiteral("paragraph")), 0)).value_or(QString());
        card.imageUrl = text(path(at(blocks, 0), {QStringLiteral("data"), QStringLiteral("contentBox"), QStringLiteral("src")})).value_or(QString());
        cards.append(card);
    }
    return cards;
}

MaizeDetailViewController::MaizeDetailViewController(QObject* parent)
    : ViewController(parent), productImg(makeControl<ImageView>("productImg")), backgroundImg(makeControl<ImageView>("backgroundImg")),
      productNameLbl(makeControl<Label>("productNameLbl")), groupNameLbl(makeControl<Label>("groupNameLbl")),
      productName2Lbl(makeControl<Label>("productName2Lbl")), productSloganLbl(makeControl<Label>("productSloganLbl")),
      tableView1(makeControl<TableView>("tableView1")), tableView1Height(new LayoutConstraint(QStringLiteral("tableView1Height"), 0, this)),
      tableView2(makeControl<TableView>("tableView2")), tableView2Height(new LayoutConstraint(QStringLiteral("tableView2Height"), 0, this)),
      topView(makeControl<View>("topView")), fullImageView(makeControl<View>("fullImageView")),
      largeImageView(makeControl<ImageView>("largeImageView")), closeImageButton(makeControl<Button>("closeImageButton")) {
    fullImageView->setHidden(true);
    closeImageButton->addTarget(this, &MaizeDetailViewController::closeImageView);
}

QUrl MaizeDetailViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Seeds/MaizeDetailView.qml")); }

Json MaizeDetailViewController::data() const { return maizeDetailJSON() ? sub(*maizeDetailJSON(), QStringLiteral("data")) : nil(); }

void MaizeDetailViewController::viewDidLoad() {
    tableView1->setDataSource([this](int) { return jsonCount(sub(data(), QStringLiteral("documents"))); },
                              [this](int, int row) {
                                  const Json document = at(sub(data(), QStringLiteral("documents")), row);
                                  return ListRow{QStringLiteral("tableView1Cell"),
                                                 {{QStringLiteral("imgView"), QStringLiteral("dokuman")},
                                                  {QStringLiteral("titleLabel"), text(sub(document, QStringLiteral("extra"))).value_or(QString())}},
                                                 QSizeF(tableView1->size().width(), DocumentRowHeight), 0, row};
                              });
    tableView2->setDataSource([this](int) { return jsonCount(sub(data(), QStringLiteral("contents"))); },
                              [this](int, int row) { return sectionCell(row); });
    tableView1->setDidSelectRow([this](int, int row) { didSelectDocument(row); });
    tableView2->setDidSelectRow([this](int, int row) { didSelectSection(row); });
    const QString range = maizeCanola();
    if (range == QLatin1String("maize")) {
        backgroundImg->setImage(QStringLiteral("misirDetail"));
        setTitle(QStringLiteral("Mısır Tohum Ürünleri"));
    } else if (range == QLatin1String("canola")) {
        backgroundImg->setImage(QStringLiteral("kanola"));
        setTitle(QStringLiteral("Kanola Tohum Ürünleri"));
    }
    loadMaizeDetail();
}

void MaizeDetailViewController::loadMaizeDetail() {
    const QString range = maizeCanola();
    QString path;
    if (range == QLatin1String("canola")) path = QStringLiteral("/?do=productCatalog/product-detail&catalog=canola-catalog&id=") + id;
    else if (range == QLatin1String("maize")) path = QStringLiteral("/?do=productCatalog/product-detail&catalog=maize-catalog&id=") + id;
    GetMaizeProductDetail().getMaizeProductDetail(path, [screen = strong(this)](const std::optional<Json>&, const Error& error) {
        if (error) return showAlert(QStringLiteral("Bilinmeyen bir hata oluştu"), screen.get());
        screen->fillMaizeHeader();
    });
}

void MaizeDetailViewController::fillMaizeHeader() {
    const Json d = data();
    const QString group = text(sub(d, QStringLiteral("group"))).value_or(QStringLiteral(""));
    productNameLbl->setText(group);
    if (maizeCanola() == QLatin1String("maize")) {
        groupNameLbl->setHidden(false);
        groupNameLbl->setText(QStringLiteral("Ürün Grubu: ") + group);
    } else {
        groupNameLbl->setHidden(true);
    }
    productSloganLbl->setText(text(sub(d, QStringLiteral("title"))).value_or(QString()));
    productImg->setImageWithURL(QUrl(text(sub(d, QStringLiteral("path"))).value_or(QString())));
    tableView1->reloadData();
    // The document table follows its content size, with nothing added.
    tableView1Height->setConstant(ProductDetailViewController::contentHeight(tableView1));
    updateSectionHeight();
}

void MaizeDetailViewController::updateSectionHeight() {
    tableView2->reloadData();
    tableView2Height->setConstant(ProductDetailViewController::contentHeight(tableView2));
}

ListRow MaizeDetailViewController::sectionCell(int row) const {
    const Json section = at(sub(data(), QStringLiteral("contents")), row);
    const QString header = text(sub(section, QStringLiteral("header"))).value_or(QString());
    const double width = tableView2->size().width();
    if (row != selectedIndex)
        return ListRow{QStringLiteral("MaizeProductDetailBefore2Cell"), {{QStringLiteral("title"), header}}, QSizeF(width, HeaderHeight), 0, row};
    const QList<SeedCard> cards = seedCards(section, row, maizeCanola());
    QVariantList stack;
    double height = HeaderHeight;
    for (const auto& card : cards) {
        stack.append(card.values());
        if (!card.hidden) height += card.kind == QLatin1String("MaizeDetailAfter2Img") ? PictureHeight : CardHeight;
    }
    return ListRow{QStringLiteral("MaizeProductDetailAfter2Cell"), {{QStringLiteral("title"), header}, {QStringLiteral("stackView"), stack}},
                   QSizeF(width, height + 8), 0, row};
}

void MaizeDetailViewController::didSelectSection(int row) {
    if (row != selectedIndex) {
        selectedIndex = row;
        updateSectionHeight();
        return;
    }
    if (maizeCanola() != QLatin1String("maize")) return;
    const Json blocks = sub(at(sub(data(), QStringLiteral("contents")), row), QStringLiteral("data"));
    for (int j = 0; j < jsonCount(blocks); ++j) {
        const Json block = at(blocks, j);
        if (text(sub(block, QStringLiteral("type"))) != QStringLiteral("image")) continue;
        fullImageView->setHidden(false);
        largeImageView->setImageWithURL(QUrl(text(path(block, {QStringLiteral("data"), QStringLiteral("image"), QStringLiteral("src")})).value_or(QString())));
    }
}

void MaizeDetailViewController::didSelectDocument(int row) {
    const Json document = at(sub(data(), QStringLiteral("documents")), row);
    auto* viewer = qobject_cast<MaizeDocumentViewController*>(Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("MaizeDocSB")));
    if (!viewer) fatal(QStringLiteral("Could not cast value to MaizeDocumentViewController"));
    viewer->setTitle(forcedText(sub(document, QStringLiteral("extra")), "extra"));
    viewer->url = forcedText(sub(document, QStringLiteral("path")), "path");
    if (auto* nav = navigationController()) nav->pushViewController(viewer, true);
}

void MaizeDetailViewController::callButton(QObject*) { callRegionAttendant(this, CallerScreen::MaizeDetail); }
void MaizeDetailViewController::closeImageView(QObject*) { fullImageView->setHidden(true); }

void registerScreens() {
    Storyboard::registerIdentifier(QStringLiteral("MaizeSB"), [] { return new MaizeHomeViewController; });
    Storyboard::registerIdentifier(QStringLiteral("MaizeAllSB"), [] { return new MaizeAllViewController; });
    Storyboard::registerIdentifier(QStringLiteral("MaizeDetailSB"), [] { return new MaizeDetailViewController; });
}

} // namespace ekinora::seeds
