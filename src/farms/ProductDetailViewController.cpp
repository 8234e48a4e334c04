#include "ProductDetailViewController.h"

#include "DocumentViewController.h"
#include "FarmerProductRequest.h"
#include "platform/Overlays.h"
#include "platform/Platform.h"
#include "service/ServiceCall.h"
#include "service/ServiceRoots.h"
#include "service/TextHelpers.h"
#include "widgets/Colors.h"
#include "widgets/ProductDetailFlowLayout.h"

#include <QPointer>

namespace ekinora::farms {

using namespace platform;
namespace Colors = widgets::Colors;

namespace {

Platform& P() { return Platform::current(); }

const QString WeedsGroup = QStringLiteral("Yabancı Otlar");
const QString CreaturesGroup = QStringLiteral("Zararlı Canlılar");

QString titleFor(const Json& produceName) {
    return stringWithFormat(QStringLiteral("%@ Bitkisi İçin Çözümler"), {produceName});
}

widgets::ProductDetailFlowLayout* pestLayout(const QString& name) {
    auto* layout = new widgets::ProductDetailFlowLayout;
    layout->setObjectName(name);
    // The delegate's values for the pest lists.
    layout->setMinimumLineSpacing(16);
    layout->setMinimumInteritemSpacing(16);
    layout->setSectionInset(QMarginsF(16, 8, 16, 16));
    return layout;
}

} // namespace

void SideLabel::make(double width, const QString& fontName, double fontSize, const QColor& color, const QString& text,
                     double rotation) {
    set(m_width, width);
    set(m_fontName, fontName);
    set(m_fontSize, fontSize);
    setTextColor(color);
    setText(text);
    set(m_rotation, rotation);
}

ProductDetailViewController::ProductDetailViewController(QObject* parent)
    : ViewController(parent), lblTitle(makeControl<Label>("lblTitle")), btnEdit(makeControl<Button>("btnEdit")),
      btnCancel(makeControl<Button>("btnCancel")), imgBannerCrop(makeControl<ImageView>("imgBannerCrop")),
      viewBannerShade(makeControl<View>("viewBannerShade")),
      constBannerShadeHeight(makeControl<LayoutConstraint>("constBannerShadeHeight", 0.0)),
      viewYabanciOtlar(makeControl<View>("viewYabanciOtlar")), viewZararliCanlilar(makeControl<View>("viewZararliCanlilar")),
      viewHastaliklar(makeControl<View>("viewHastaliklar")), lblYabanciOtlar(makeControl<SideLabel>("lblYabanciOtlar")),
      lblZararliCanlilar(makeControl<SideLabel>("lblZararliCanlilar")), lblHastaliklar(makeControl<SideLabel>("lblHastaliklar")),
      collPeriods(makeControl<CollectionView>("collPeriods")), collYabanciOtlar(makeControl<CollectionView>("collYabanciOtlar")),
      collZararliCanlilar(makeControl<CollectionView>("collZararliCanlilar")),
      collHastaliklar(makeControl<CollectionView>("collHastaliklar")),
      layoutYabanciOtlar(addControl(pestLayout(QStringLiteral("layoutYabanciOtlar")))),
      layoutZararliCanlilar(addControl(pestLayout(QStringLiteral("layoutZararliCanlilar")))),
      layoutHastaliklar(addControl(pestLayout(QStringLiteral("layoutHastaliklar")))) {
    // As the layout file connects them.
    btnEdit->setImage(QStringLiteral("productEdit"));
    btnEdit->addTarget(this, &ProductDetailViewController::activateEditing);
    btnCancel->setImage(QStringLiteral("crossWhite"));
    btnCancel->addTarget(this, &ProductDetailViewController::closeViewController);
    lblTitle->setNumberOfLines(2);
    viewBannerShade->setHidden(true);
    for (SideLabel* label : {lblYabanciOtlar, lblZararliCanlilar, lblHastaliklar}) label->setHidden(true);

    collPeriods->registerCell(QStringLiteral("PeriodCell"), [] { return new PeriodCollectionViewCell; });
    collPeriods->setDataSource([](CollectionView*) { return 1; },
                               [this](CollectionView*, int) { return int(arrPeriods.size()); },
                               [this](CollectionView* c, int, int item) { return periodCell(c, item); });
    const std::pair<CollectionView*, widgets::ProductDetailFlowLayout*> pests[] = {
        {collYabanciOtlar, layoutYabanciOtlar}, {collZararliCanlilar, layoutZararliCanlilar}, {collHastaliklar, layoutHastaliklar}};
    for (auto [collection, layout] : pests) {
        collection->registerCell(QStringLiteral("PestCell"), [] { return new PestsCollectionViewCell; });
        // One section a pest, one item a section.
        collection->setDataSource([this](CollectionView* c) { return int(listOf(c).size()); },
                                  [this](CollectionView* c, int) { return listOf(c).isEmpty() ? 0 : 1; },
                                  [this](CollectionView* c, int section, int) { return pestCell(c, section); });
        // The layout follows the collection's size and its sections.
        connect(collection, &CollectionView::sizeChanged, layout, [this, collection, layout] {
            layout->setCollectionViewSize(collection->size());
            layout->setItemSize(pestItemSize(collection));
        });
        connect(collection, &CollectionView::cellsChanged, layout, [collection, layout] {
            QList<int> counts;
            for (int s = 0; s < collection->numberOfSections(); ++s) counts << collection->numberOfItemsInSection(s);
            layout->setSectionItemCounts(counts);
        });
    }
    for (CollectionView* c : {collPeriods, collYabanciOtlar, collZararliCanlilar, collHastaliklar})
        c->setDidSelectItem([this](CollectionView* c, int section, int item) { didSelectItem(c, section, item); });
    addSegue(QStringLiteral("DocumentSegue"), SegueKind::Present, QStringLiteral("DocumentViewController"));
}

QUrl ProductDetailViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Farms/ProductDetailView.qml")); }

double ProductDetailViewController::screenWidth() { return Window::Width; }

QSizeF ProductDetailViewController::pestItemSize(const CollectionView* collection) const {
    return QSizeF(collection->size().width() - 32, collection->size().height() - 32);
}

const QJsonArray& ProductDetailViewController::listOf(const CollectionView* collection) const {
    if (collection == collYabanciOtlar) return arrYabanciOtlar;
    if (collection == collZararliCanlilar) return arrZararliCanlilar;
    if (collection == collHastaliklar) return arrHastaliklar;
    return arrPeriods;
}

void ProductDetailViewController::viewDidLoad() {
    // 1.
    arrPeriods = QJsonArray();
    arrYabanciOtlar = QJsonArray();
    arrZararliCanlilar = QJsonArray();
    arrHastaliklar = QJsonArray();
    // 2.
    lblTitle->setText(titleFor(produceName));
    // 3. Each list's name, reading upwards beside it.
    const std::pair<SideLabel*, QString> sides[] = {{lblYabanciOtlar, WeedsGroup},
                                                    {lblZararliCanlilar, CreaturesGroup},
                                                    {lblHastaliklar, QStringLiteral("Hastalıklar")}};
    for (const auto& [label, text] : sides) {
        label->make(35, QStringLiteral("AvenirNext-Medium"), 16, Colors::black(), text, -90);
        label->setHidden(false);
    }
    // 4. Once the banner has come (or failed), a dark shade lies over it and a little below.
    if (!produceImage.isNull()) {
        QPointer<ProductDetailViewController> self(this);
        auto shade = [self](bool) {
            if (!self) return;
            self->constBannerShadeHeight->setConstant(self->imgBannerCrop->frameSize().height() + 100);
            self->viewBannerShade->setBackgroundColor(Qt::black);
            self->viewBannerShade->setAlpha(0.75);
            self->viewBannerShade->setHidden(false);
        };
        const QUrl url(stringOrNull(produceImage));
        imgBannerCrop->setImageWithURL(url, shade);
        // An address that is no address ends its load at once.
        if (url.isEmpty()) imgBannerCrop->imageLoadEnded(url, false);
    }
    // 5.
    getPeriods();
}

void ProductDetailViewController::getPeriods() {
    service::ScreenCall call(this, QStringLiteral("produce/periods"), service::ScreenCall::WithHudOnScreen);
    FarmerProductRequest request;
    request.doParam = QStringLiteral("produce/periods");
    request.objectID = objectID;
    request.requestData(call.done([self = this](const Json& response) {
            const Json data = member(response, QStringLiteral("data"));
            self->currentPeriod = intValue(member(data, QStringLiteral("periodId")));
            self->arrPeriods = QJsonArray();
            self->arrYabanciOtlar = QJsonArray();
            self->arrZararliCanlilar = QJsonArray();
            self->arrHastaliklar = QJsonArray();
            const Json periods = member(data, QStringLiteral("periods"));
            for (int i = 0, n = count(periods); i < n; ++i) self->arrPeriods.append(element(periods, i));
            // Groups by their exact names; every other group is a disease group.
            const Json groups = member(data, QStringLiteral("pests"));
            for (int g = 0, n = count(groups); g < n; ++g) {
                const Json group = element(groups, g);
                const Json name = member(group, QStringLiteral("name"));
                QJsonArray& list = isString(name, WeedsGroup)       ? self->arrYabanciOtlar
                                   : isString(name, CreaturesGroup) ? self->arrZararliCanlilar
                                                                    : self->arrHastaliklar;
                const Json pests = member(group, QStringLiteral("data"));
                for (int i = 0, m = count(pests); i < m; ++i) list.append(element(pests, i));
            }
            for (CollectionView* c : {self->collPeriods, self->collYabanciOtlar, self->collZararliCanlilar, self->collHastaliklar})
                c->reloadData();
            self->collYabanciOtlar->setHidden(self->arrYabanciOtlar.isEmpty());
            self->collZararliCanlilar->setHidden(self->arrZararliCanlilar.isEmpty());
            self->collHastaliklar->setHidden(self->arrHastaliklar.isEmpty());
            auto later = strong(self);
            P().scheduler().after(500, [later] { later->swipeToCurrent(); });
            P().scheduler().after(1000, [later] { later->swipeEffect(); });
        }),
        call.failed());
}

void ProductDetailViewController::swipeToCurrent() {
    const QString current = stringWithFormat(QStringLiteral("%d"), {int(currentPeriod)});
    int found = -1;
    for (int i = 0; i < arrPeriods.size(); ++i)
        if (description(member(arrPeriods.at(i), QStringLiteral("id"))) == current) found = i;
    if (found >= 0) collPeriods->scrollToItem(0, found, CollectionView::CenteredHorizontally, true);
}

void ProductDetailViewController::swipeEffect() {
    // Three flashes, so that the farmer sees the lists scroll.
    auto self = strong(this);
    for (int ms : {1500, 3000, 4500}) {
        P().scheduler().after(ms, [self] {
            for (CollectionView* c : {self->collHastaliklar, self->collYabanciOtlar, self->collZararliCanlilar, self->collPeriods})
                c->flashScrollIndicators();
        });
    }
}

CollectionViewCell* ProductDetailViewController::periodCell(CollectionView* collection, int item) {
    auto* cell = collection->dequeue<PeriodCollectionViewCell>(QStringLiteral("PeriodCell"), 0, item);
    cell->setSize(QSizeF(periodItemSide(), periodItemSide()));
    const Json period = arrPeriods.at(item);
    const double b = periodPictureSide();
    const int id = intValue(member(period, QStringLiteral("id")));
    const bool past = id < currentPeriod, current = id == currentPeriod;
    const QColor leaf = Colors::leaf(), white = Qt::white;

    cell->lblTitle->setText(stringOrNull(member(period, QStringLiteral("name"))));
    const double side = current ? b + 10 : b;
    const Json image = member(period, QStringLiteral("image"));
    if (!image.isNull()) {
        ImageView* picture = cell->imgPeriod;
        // Once more when the picture has come, for the record that asked.
        picture->setImageWithURL(QUrl(stringOrNull(image)), [picture, side](bool) { picture->setCornerRadius(side / 2); });
    }
    cell->imgPeriodLeft->setBackgroundColor(past || current ? leaf : white);
    cell->constraintImgPeriodLeftHeight->setConstant(past || current ? 2 : 1);
    cell->imgPeriodRight->setBackgroundColor(past ? leaf : white);
    cell->constraintImgPeriodRightHeight->setConstant(past ? 2 : 1);
    cell->imgPeriod->setBorderColor(current ? leaf : white);
    cell->imgPeriod->setBorderWidth(current ? 3 : 1);
    cell->constraintImgPeriodWidth->setConstant(side);
    cell->constraintImgPeriodHeight->setConstant(side);
    cell->imgPeriod->setCornerRadius(side / 2);
    cell->lblTitle->setTextColor(current ? leaf : white);
    cell->imgPeriod->setClipsToBounds(true);
    // No loose ends; with a single period only the left bar goes.
    if (item == 0) cell->imgPeriodLeft->setBackgroundColor(Qt::transparent);
    else if (item == arrPeriods.size() - 1) cell->imgPeriodRight->setBackgroundColor(Qt::transparent);
    return cell;
}

CollectionViewCell* ProductDetailViewController::pestCell(CollectionView* collection, int section) {
    auto* cell = collection->dequeue<PestsCollectionViewCell>(QStringLiteral("PestCell"), section, 0);
    cell->setSize(pestItemSize(collection));
    const Json pest = listOf(collection).at(section);
    // 1.
    cell->lblTitle->setText(stringOrNull(member(pest, QStringLiteral("name"))));
    // 2. Pictures tagged below 100 go, one a tag; a picture with a higher tag stays under the new ones.
    for (int tag = 0; tag < 100; ++tag) cell->removeSubviewWithTag(tag);
    // 3.
    const Json products = member(pest, QStringLiteral("aps"));
    for (int i = 0, n = count(products); i < n; ++i) {
        const Json product = element(products, i);
        ProductImageView* picture = cell->addProductImage(QRectF(8 + 68 * i, 8, 60, cell->viewPestHeight() - 16),
                                                          intValue(member(product, QStringLiteral("id"))));
        picture->setImageWithURL(QUrl(stringOrNull(member(product, QStringLiteral("image")))),
                                 [picture](bool) { picture->setClipsToBounds(true); });
    }
    // 4. A pest without a picture keeps the one the cell showed before.
    const Json image = member(pest, QStringLiteral("image"));
    if (!image.isNull()) {
        PestsCollectionViewCell* card = cell;
        cell->imgBack->setImageWithURL(QUrl(stringOrNull(image)), [card](bool) {
            card->imgBack->setClipsToBounds(true);
            card->viewPest->setCornerRadius(3);
            card->viewPest->setClipsToBounds(true);
        });
    }
    return cell;
}

void ProductDetailViewController::didSelectItem(CollectionView* collection, int section, int item) {
    // Only a period answers a tap, in browsing as in choosing.
    if (collection != collPeriods || item < 0 || item >= arrPeriods.size()) return;
    tempPeriod = currentPeriod;
    currentPeriod = intValue(member(arrPeriods.at(item), QStringLiteral("id")));
    selectPeriod();
}

void ProductDetailViewController::activateEditing(QObject*) {
    lblTitle->setText(QStringLiteral("Dönem Seçimi Yapın"));
    // Actions are only ever added: the earlier ones stay attached.
    btnEdit->setImage(QString());
    btnEdit->setTitle(QStringLiteral("ONAYLA"));
    btnEdit->addTarget(this, &ProductDetailViewController::selectPeriod);
    btnCancel->setImage(QString());
    btnCancel->setTitle(QStringLiteral("İPTAL"));
    btnCancel->addTarget(this, &ProductDetailViewController::cancelEditing);
}

void ProductDetailViewController::endEditingMode() {
    btnEdit->setTitle(QString(""));
    btnEdit->setImage(QStringLiteral("productEdit"));
    btnEdit->addTarget(this, &ProductDetailViewController::activateEditing);
    btnCancel->setTitle(QString(""));
    btnCancel->setImage(QStringLiteral("crossWhite"));
    btnCancel->addTarget(this, &ProductDetailViewController::closeViewController);
    lblTitle->setText(titleFor(produceName));
}

void ProductDetailViewController::selectPeriod(QObject*) {
    FarmerProductRequest request;
    request.doParam = QStringLiteral("produce/set-period");
    request.objectID = objectID;
    request.periodID = stringWithFormat(QStringLiteral("%d"), {int(currentPeriod)});
    service::ScreenCall call(this, QStringLiteral("produce/set-period"));
    request.requestData(call.done([this](const Json&) {
                            endEditingMode();
                            getPeriods();
                        }),
                        // The tapped period stays chosen on the screen; cancelling is the way back.
                        call.failed());
}

void ProductDetailViewController::cancelEditing(QObject*) {
    endEditingMode();
    currentPeriod = tempPeriod;
    collPeriods->reloadData();
}

void ProductDetailViewController::closeViewController(QObject*) { dismissViewControllerAnimated(true); }

void ProductDetailViewController::prepareForSegue(const StoryboardSegue& segue, QObject* sender) {
    if (segue.identifier != QLatin1String("DocumentSegue")) return;
    auto* document = qobject_cast<DocumentViewController*>(segue.destination);
    const int row = sender ? sender->property("row").toInt() : -1;
    if (!document || row < 0 || row >= arrHastaliklar.size()) return;
    const Json disease = arrHastaliklar.at(row);
    // The page's path with the characters a URL path allows left as they are.
    const QByteArray path = stringOrNull(member(disease, QStringLiteral("path"))).toUtf8().toPercentEncoding("!$&'()*+,=:@/");
    document->urlString = service::Roots::ProductSiteBase + QString::fromLatin1(path);
    document->titleString = stringOrNull(member(disease, QStringLiteral("name")));
}

} // namespace ekinora::farms
