#include "ProductDetailViewController.h"

#include "CatalogueAlerts.h"
#include "CatalogueRequests.h"
#include "DetailTree.h"
#include "DocumentViewers.h"
#include "RegionAttendantCall.h"
#include "platform/Platform.h"

namespace ekinora::catalogue {

using namespace platform;

namespace {
constexpr double SectionHeaderHeight = 56;
constexpr double DocumentRowHeight = 56;
constexpr double MediaCellWidth = 150;

void print(const QString& line) { Platform::current().application().log(line); }
} // namespace

ProductDetailViewController::ProductDetailViewController(QObject* parent)
    : ViewController(parent), productImg(makeControl<ImageView>("productImg")), productNameLbl(makeControl<Label>("productNameLbl")),
      productName2Lbl(makeControl<Label>("productName2Lbl")), productSloganLbl(makeControl<Label>("productSloganLbl")),
      tableView1(makeControl<TableView>("tableView1")), tableView1Height(new LayoutConstraint(QStringLiteral("tableView1Height"), 0, this)),
      tableView2(makeControl<TableView>("tableView2")), tableView2Height(new LayoutConstraint(QStringLiteral("tableView2Height"), 0, this)),
      collectionView(makeControl<TableView>("collectionView")),
      collectionViewHeight(new LayoutConstraint(QStringLiteral("collectionViewHeight"), 110, this)),
      fullImageView(makeControl<View>("fullImageView")), largeImageView(makeControl<ImageView>("largeImageView")),
      closeImageButton(makeControl<Button>("closeImageButton")), topView(makeControl<View>("topView")),
      productGroupLbl(makeControl<Label>("productGroupLbl")), productMatterLbl(makeControl<Label>("productMatterLbl")),
      productFormulationLbl(makeControl<Label>("productFormulationLbl")), productPackageLbl(makeControl<Label>("productPackageLbl")),
      openSectionWebView(makeControl<WebView>("openSectionWebView")) {
    addSegue(QStringLiteral("toDocumentViewerVC"), SegueKind::Show, QStringLiteral("DocumentViewerSB"));
    fullImageView->setHidden(true);
    productSloganLbl->setNumberOfLines(0);
    productNameLbl->setNumberOfLines(2);
    closeImageButton->addTarget(this, &ProductDetailViewController::closeImageView);
}

QUrl ProductDetailViewController::viewSource() const {
    return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Catalogue/ProductDetailView.qml"));
}

void ProductDetailViewController::setViewWidth(double w) {
    if (w <= 0 || w == m_viewWidth) return;
    m_viewWidth = w;
    emit viewWidthChanged();
}

Json ProductDetailViewController::data() const {
    return productDetailJSON() ? sub(*productDetailJSON(), QStringLiteral("data")) : nil();
}

void ProductDetailViewController::viewDidLoad() {
    setTitle(QStringLiteral("Bitki Koruma Ürünleri"));
    tableView1->setDataSource([this](int) { return jsonCount(sub(data(), QStringLiteral("documents"))); },
                              [this](int, int row) { return documentCell(row); });
    tableView2->setDataSource([this](int) { return jsonCount(sub(data(), QStringLiteral("contents"))); },
                              [this](int, int row) { return sectionCell(row); });
    collectionView->setDataSource([this](int) { return jsonCount(sub(data(), QStringLiteral("media"))); },
                                  [this](int, int row) { return mediaCell(row); });
    tableView1->setDidSelectRow([this](int, int row) { didSelectDocument(row); });
    tableView2->setDidSelectRow([this](int, int row) { didSelectSection(row); });
    collectionView->setDidSelectRow([this](int, int row) { didSelectMedia(row); });
    openSectionWebView->setBounces(false);
    openSectionWebView->setDecidePolicy([](WebView*, const QUrl&, int) { return true; });
    loadProductDetail();
}

void ProductDetailViewController::loadProductDetail() {
    const QString path = QStringLiteral("/?do=productCatalog/product-detail&catalog=product-catalog&id=") + selectedProductId();
    productDetailRecord().reset();
    GetProducDetailRequest().getProductDetail(path, [screen = strong(this)](const std::optional<Json>&, const Error& error) {
        if (error) return showAlert(QStringLiteral("Bilinmeyen bir hata oluştu"), screen.get());
        screen->fillProductHeader();
    });
}

void ProductDetailViewController::fillProductHeader() {
    const Json d = data();
    const Json facts = sub(d, QStringLiteral("specialities"));
    productNameLbl->setText(text(sub(d, QStringLiteral("group"))).value_or(QStringLiteral("")));
    productSloganLbl->setText(text(sub(d, QStringLiteral("title"))).value_or(QString()));
    productName2Lbl->setHidden(true);
    productImg->setImageWithURL(QUrl(forcedText(sub(d, QStringLiteral("path")), "path")));
    productGroupLbl->setText(text(sub(facts, QStringLiteral("group"))).value_or(QString()));
    productMatterLbl->setText(text(sub(facts, QStringLiteral("activeSubstance"))).value_or(QString()));
    productFormulationLbl->setText(text(sub(facts, QStringLiteral("formulation"))).value_or(QString()));
    productPackageLbl->setText(text(sub(facts, QStringLiteral("packageSizes"))).value_or(QString()));
    // Bodies are appended, never cleared: the screen makes one pass.
    contentStrings.append(buildContentStrings(*productDetailJSON()));
    measureContentStrings();
    updateDocumentTable();
    if (jsonCount(sub(d, QStringLiteral("media"))) == 0) collectionViewHeight->setConstant(0);
    else collectionView->reloadData();
    // The section table's first drawing: the first row open, its body perhaps not measured yet.
    tableView2->reloadData();
}

void ProductDetailViewController::updateDocumentTable() {
    tableView1->reloadData();
    Platform::current().scheduler().after(200, [screen = strong(this)] {
        screen->tableView1Height->setConstant(contentHeight(screen->tableView1) + 15);
    });
}

void ProductDetailViewController::measureContentStrings() {
    for (int n = 0; n < contentStrings.size(); ++n) {
        auto* web = new WebView(QStringLiteral("measurer%1").arg(n), this);
        web->setProperty("tag", n);
        web->setProperty("frameWidth", m_viewWidth - 16);
        web->setDidFinishNavigation([this](WebView* w) { webViewDidFinishNavigation(w); });
        web->setDecidePolicy([](WebView*, const QUrl&, int) { return true; });
        web->loadHTMLString(htmlPage(contentStrings.at(n), m_viewWidth - 32));
        measurers.append(web);
    }
    // The measuring views stay for the life of the screen.
    emit measuringViewsChanged();
}

void ProductDetailViewController::webViewDidFinishNavigation(WebView* webView) {
    checkWebView = true;
    const int tag = webView->property("tag").toInt();
    webView->evaluateJavaScript(QStringLiteral("document.readyState"), [screen = strong(this), webView, tag](const QVariant& state) {
        if (!state.isValid() || state.isNull()) return;
        webView->evaluateJavaScript(QStringLiteral("document.body.scrollHeight"), [screen, tag](const QVariant& height) {
            if (!height.isValid() || height.isNull())
                fatal(QStringLiteral("Fatal error: Unexpectedly found nil while unwrapping an Optional value (scrollHeight)"));
            screen->contentHeights.insert(tag, height.toDouble());
            if (screen->contentHeights.size() == screen->contentStrings.size()) screen->updateContentTable();
        });
    });
}

void ProductDetailViewController::updateContentTable() {
    tableView2->reloadData();
    tableView2Height->setConstant(contentHeight(tableView2));
}

double ProductDetailViewController::contentHeight(const TableView* table) {
    double h = 0;
    for (int r = 0; r < table->numberOfRows(); ++r) h += table->cellForRow(r).size.height();
    return h;
}

ListRow ProductDetailViewController::documentCell(int row) const {
    const Json document = at(sub(data(), QStringLiteral("documents")), row);
    QVariantMap values{{QStringLiteral("titleLabel"), text(sub(document, QStringLiteral("extra"))).value_or(QString())},
                       {QStringLiteral("imgView"), QStringLiteral("dokuman")},
                       {QStringLiteral("borderWidth"), 0.4},
                       {QStringLiteral("borderColor"), QColor::fromRgbF(0.11764705882352941, 0.3215686274509804, 0.5254901960784314)},
                       {QStringLiteral("cornerRadius"), 10}};
    return ListRow{QStringLiteral("tableView1Cell"), values, QSizeF(tableView1->size().width(), DocumentRowHeight), 0, row};
}

ListRow ProductDetailViewController::sectionCell(int row) {
    const QString header = text(sub(at(sub(data(), QStringLiteral("contents")), row), QStringLiteral("header"))).value_or(QString());
    const double width = tableView2->size().width() > 0 ? tableView2->size().width() : m_viewWidth - 32;
    if (row != selectedIndex)
        return ListRow{QStringLiteral("ProductDetail2BeforeCell"), {{QStringLiteral("titleLbl"), header}},
                       QSizeF(width, SectionHeaderHeight), 0, row};
    print(QString::number(contentStrings.size()));
    QVariantMap values{{QStringLiteral("titleLbl"), header}, {QStringLiteral("webViewHeight"), 0.0}};
    if (!contentStrings.isEmpty()) {
        if (contentStringIndex < 0 || contentStringIndex >= contentStrings.size()) fatal(QStringLiteral("Fatal error: Index out of range"));
        const QString page = htmlPage(contentStrings.at(contentStringIndex), width - 16);
        if (openSectionWebView->html() != page) openSectionWebView->loadHTMLString(page);
        if (!contentHeights.isEmpty()) {
            if (!contentHeights.contains(row))
                fatal(QStringLiteral("Fatal error: Unexpectedly found nil while unwrapping an Optional value (height)"));
            values.insert(QStringLiteral("webViewHeight"), contentHeights.value(row) + 16);
        }
    }
    return ListRow{QStringLiteral("ProductDetail2AfterCell"), values,
                   QSizeF(width, SectionHeaderHeight + values.value(QStringLiteral("webViewHeight")).toDouble()), 0, row};
}

ListRow ProductDetailViewController::mediaCell(int row) const {
    const Json entry = at(sub(data(), QStringLiteral("media")), row);
    const bool image = text(sub(entry, QStringLiteral("type"))) == QStringLiteral("image");
    const QString picture = text(sub(entry, image ? QStringLiteral("path") : QStringLiteral("extraFilePath"))).value_or(QString());
    return ListRow{QStringLiteral("ProductDetailCollecitonViewCell"),
                   {{QStringLiteral("imgView"), picture}, {QStringLiteral("playImg"), !image}},
                   QSizeF(MediaCellWidth, collectionViewHeight->constant()), 0, row};
}

void ProductDetailViewController::didSelectSection(int row) {
    contentStringIndex = row;
    if (selectedIndex != row) checkWebView = false;
    selectedIndex = row;
    updateContentTable();
}

void ProductDetailViewController::didSelectDocument(int row) {
    const Json document = at(sub(data(), QStringLiteral("documents")), row);
    documentPath() = forcedText(sub(document, QStringLiteral("path")), "path");
    documentTitle() = forcedText(sub(document, QStringLiteral("extra")), "extra");
    performSegueWithIdentifier(QStringLiteral("toDocumentViewerVC"), this);
}

void ProductDetailViewController::didSelectMedia(int row) {
    const Json entry = at(sub(data(), QStringLiteral("media")), row);
    const QString address = text(sub(entry, QStringLiteral("path"))).value_or(QString());
    if (text(sub(entry, QStringLiteral("type"))) == QStringLiteral("image")) {
        print(address);
        fullImageView->setHidden(false);
        largeImageView->setImageWithURL(QUrl(address));
        return;
    }
    auto* player = new PlayerViewController(QUrl(address));
    presentViewController(player, true, [player] { player->play(); });
}

void ProductDetailViewController::callButton(QObject*) { callRegionAttendant(this, CallerScreen::ProductDetail); }

void ProductDetailViewController::closeImageView(QObject*) { fullImageView->setHidden(true); }

} // namespace ekinora::catalogue
