// The crop calendar against a fake platform: the lists by group name, the scroll to the present period
// and the flashes at their delays, the chain's drawing, the pest cards and their reuse, choosing and
// cancelling a period, and the document and product screens.

#include "FakePlatform.h"
#include "farms/DocumentViewController.h"
#include "farms/ProductDetailViewController.h"
#include "platform/AlertController.h"
#include "platform/Storyboard.h"
#include "service/ServiceRoots.h"
#include "widgets/ProductDetailFlowLayout.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTest>

using namespace ekinora;
using namespace ekinora::testing;
using farms::PeriodCollectionViewCell;
using farms::PestsCollectionViewCell;
using farms::ProductDetailViewController;
using platform::CollectionView;

namespace {

const QColor Leaf(120, 185, 48);

QJsonObject period(int id, const QString& name) {
    return QJsonObject{{"id", id}, {"name", name}, {"image", QStringLiteral("http://svc.test/p/%1.svg").arg(id)}};
}

QJsonObject pest(const QString& name, const QJsonValue& image, const QList<int>& products) {
    QJsonArray aps;
    for (int id : products) aps.append(QJsonObject{{"id", id}, {"image", QStringLiteral("http://svc.test/aps/%1.svg").arg(id)}});
    return QJsonObject{{"name", name}, {"image", image}, {"path", "/zirai-sorunlar/x"}, {"aps", aps}};
}

QJsonObject group(const QString& name, const QJsonArray& pests) { return QJsonObject{{"name", name}, {"data", pests}}; }

QJsonObject periodsReply(int current, const QJsonArray& periods, const QJsonArray& groups) {
    return QJsonObject{{"status", 200},
                       {"data", QJsonObject{{"periodId", current}, {"periods", periods}, {"pests", groups}}}};
}

const QJsonArray WheatPeriods{period(101, "Ekim"), period(102, "Çıkış"), period(103, "Kardeşlenme"), period(104, "Sapa Kalkma")};

} // namespace

class CropCalendarTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        fake = new FakePlatform;
        service::Roots::configure(QStringLiteral("http://svc.test"));
        platform::Storyboard::clear();
        platform::Storyboard::registerIdentifier("DocumentViewController", [] { return new farms::DocumentViewController; });
        presenter = new platform::ViewController;
        fake->platform->window().setRootViewController(presenter);
        fake->platform->window().makeKeyAndVisible();
        fake->clock->advance(0);
    }
    void cleanup() {
        delete fake;
        platform::Storyboard::clear();
    }

    void groupsFillTheirListsByExactName() {
        reply(103, WheatPeriods,
              QJsonArray{group("Zararlı Canlılar", QJsonArray{pest("Süne", QJsonValue::Null, {})}),
                         group("Mantari Hastalıklar", QJsonArray{pest("Septorya", QJsonValue::Null, {})}),
                         group("Yabancı otlar", QJsonArray{pest("Gelincik", QJsonValue::Null, {})}), // not the exact name
                         group("Bakteriyel Hastalıklar", QJsonArray{pest("Yanıklık", QJsonValue::Null, {})})});
        open();
        QCOMPARE(calendar->currentPeriod, 103);
        QCOMPARE(calendar->arrPeriods.size(), 4);
        QVERIFY(calendar->arrYabanciOtlar.isEmpty());
        QCOMPARE(names(calendar->arrZararliCanlilar), QStringList{"Süne"});
        QCOMPARE(names(calendar->arrHastaliklar), (QStringList{"Septorya", "Gelincik", "Yanıklık"}));
        // An empty list is hidden; the others show.
        QVERIFY(calendar->collYabanciOtlar->isHidden());
        QVERIFY(!calendar->collZararliCanlilar->isHidden());
        QVERIFY(!calendar->collHastaliklar->isHidden());
        QCOMPARE(calendar->collHastaliklar->numberOfSections(), 3);
        QCOMPARE(calendar->collYabanciOtlar->numberOfSections(), 0);
        QCOMPARE(fake->platform->window().hudCount(), 0);
    }

    void itScrollsToThePresentPeriodThenFlashesTheLists() {
        reply(103, WheatPeriods, QJsonArray{});
        QStringList flashes;
        open([&] {
            for (CollectionView* c : {calendar->collPeriods, calendar->collYabanciOtlar, calendar->collZararliCanlilar, calendar->collHastaliklar})
                connect(c, &CollectionView::scrollIndicatorsFlashed, this, [&flashes, c] { flashes << c->objectName(); });
        });
        fake->run(499);
        QCOMPARE(calendar->collPeriods->scrolledItem(), -1);
        fake->run(1);
        QCOMPARE(calendar->collPeriods->scrolledItem(), 2);
        QCOMPARE(calendar->collPeriods->scrolledPosition(), int(CollectionView::CenteredHorizontally));
        // The effect starts at 1.0 s and flashes 1.5, 3.0 and 4.5 s later.
        fake->run(1999);
        QVERIFY(flashes.isEmpty());
        fake->run(1);
        const QStringList once{"collHastaliklar", "collYabanciOtlar", "collZararliCanlilar", "collPeriods"};
        QCOMPARE(flashes, once);
        fake->run(1500);
        QCOMPARE(flashes.size(), 8);
        fake->run(1500);
        QCOMPARE(flashes, once + once + once);
        fake->run(10000);
        QCOMPARE(flashes.size(), 12);
    }

    void aPeriodNoPeriodHasIsNotScrolledToAndDrawsByNumber() {
        reply(150, WheatPeriods, QJsonArray{});
        open();
        fake->run(2000);
        QCOMPARE(calendar->collPeriods->scrolledItem(), -1);
        // Every id is below 150: the whole chain draws as past.
        for (int i = 0; i < 4; ++i) QCOMPARE(periodCell(i)->constraintImgPeriodWidth->constant(), B);
        QCOMPARE(periodCell(1)->imgPeriodRight->backgroundColor(), Leaf);
        QCOMPARE(periodCell(2)->lblTitle->textColor(), QColor(Qt::white));
    }

    void theChainMarksPastPresentAndFuture() {
        reply(103, WheatPeriods, QJsonArray{});
        open();
        PeriodCollectionViewCell *past = periodCell(1), *current = periodCell(2), *future = periodCell(3), *first = periodCell(0);
        QCOMPARE(past->imgPeriodLeft->backgroundColor(), Leaf);
        QCOMPARE(past->imgPeriodRight->backgroundColor(), Leaf);
        QCOMPARE(past->imgPeriod->borderColor(), QColor(Qt::white));
        QCOMPARE(past->constraintImgPeriodWidth->constant(), B);
        QCOMPARE(past->lblTitle->textColor(), QColor(Qt::white));

        QCOMPARE(current->imgPeriodLeft->backgroundColor(), Leaf);
        QCOMPARE(current->imgPeriodRight->backgroundColor(), QColor(Qt::white));
        QCOMPARE(current->imgPeriod->borderColor(), Leaf);
        QCOMPARE(current->constraintImgPeriodHeight->constant(), B + 10);
        QCOMPARE(current->lblTitle->textColor(), Leaf);

        QCOMPARE(future->imgPeriodLeft->backgroundColor(), QColor(Qt::white));
        // No loose ends.
        QCOMPARE(first->imgPeriodLeft->backgroundColor(), QColor(Qt::transparent));
        QCOMPARE(future->imgPeriodRight->backgroundColor(), QColor(Qt::transparent));

        // The picture's radius once more when it has come, for the record that asked.
        current->imgPeriod->setCornerRadius(0);
        current->imgPeriod->imageLoadEnded(QUrl("http://svc.test/p/103.svg"), true);
        QCOMPARE(current->imgPeriod->cornerRadius(), (B + 10) / 2);
    }

    void aSinglePeriodLosesOnlyItsLeftBar() {
        reply(101, QJsonArray{period(101, "Ekim")}, QJsonArray{});
        open();
        QCOMPARE(periodCell(0)->imgPeriodLeft->backgroundColor(), QColor(Qt::transparent));
        QCOMPARE(periodCell(0)->imgPeriodRight->backgroundColor(), QColor(Qt::white));
    }

    void pestCardsLayTheirProductsOutInARow() {
        reply(103, WheatPeriods,
              QJsonArray{group("Yabancı Otlar", QJsonArray{pest("Yabani Yulaf", "http://svc.test/pests/ot.svg", {59, 56, 51})})});
        open([&] { calendar->collYabanciOtlar->setSize(QSizeF(355, 180)); });
        auto* cell = pestCell(calendar->collYabanciOtlar, 0);
        QCOMPARE(cell->lblTitle->text(), QStringLiteral("Yabani Yulaf"));
        QCOMPARE(cell->size(), QSizeF(323, 148));
        const auto pictures = cell->productImages();
        QCOMPARE(pictures.size(), 3);
        for (int i = 0; i < 3; ++i) QCOMPARE(pictures[i]->frame(), QRectF(8 + 68 * i, 8, 60, cell->viewPestHeight() - 16));
        QCOMPARE(pictures[1]->tag(), 56);
        QCOMPARE(pictures[1]->imageUrl(), QUrl("http://svc.test/aps/56.svg"));
        QVERIFY(!pictures[1]->clipsToBounds());
        pictures[1]->imageLoadEnded(pictures[1]->imageUrl(), true);
        QVERIFY(pictures[1]->clipsToBounds());
        // The card rounds once its picture has come.
        QCOMPARE(cell->imgBack->imageUrl(), QUrl("http://svc.test/pests/ot.svg"));
        QCOMPARE(cell->viewPest->cornerRadius(), 0.0);
        cell->imgBack->imageLoadEnded(cell->imgBack->imageUrl(), false);
        QCOMPARE(cell->viewPest->cornerRadius(), 3.0);
        QVERIFY(cell->viewPest->clipsToBounds() && cell->imgBack->clipsToBounds());
    }

    void aReusedCardKeepsHighTagsAndAMissingPicture() {
        int round = 0;
        fake->http->on("produce/periods", [&](const platform::HttpRequest&) {
            ++round;
            const QJsonArray weeds = round == 1
                                         ? QJsonArray{pest("Gelincik", "http://svc.test/pests/genis.svg", {7, 7, 150, 12})}
                                         : QJsonArray{pest("Yabani Hardal", QJsonValue::Null, {3})};
            return jsonReply(periodsReply(103, WheatPeriods, QJsonArray{group("Yabancı Otlar", weeds)}));
        });
        fake->http->on("produce/set-period", jsonReply(QJsonObject{{"status", 200}}));
        open([&] { calendar->collYabanciOtlar->setSize(QSizeF(355, 180)); });
        auto* before = pestCell(calendar->collYabanciOtlar, 0);
        calendar->collPeriods->selectItem(0, 3);
        fake->run(0);
        auto* after = pestCell(calendar->collYabanciOtlar, 0);
        QCOMPARE(after, before);
        QCOMPARE(after->lblTitle->text(), QStringLiteral("Yabani Hardal"));
        // Tags below 100 go one at a time (one of the two 7s stays); 150 stays; the new picture lies above.
        QList<int> tags;
        for (auto* picture : after->productImages()) tags << picture->tag();
        QCOMPARE(tags, (QList<int>{7, 150, 3}));
        QCOMPARE(after->productImages().last()->frame().x(), 8.0);
        // No picture of its own: the last pest's picture stays.
        QCOMPARE(after->imgBack->imageUrl(), QUrl("http://svc.test/pests/genis.svg"));
    }

    void choosingAPeriodSendsItAndReloads() {
        reply(103, WheatPeriods, QJsonArray{});
        fake->http->on("produce/set-period", jsonReply(QJsonObject{{"status", 200}}));
        open();
        calendar->objectID = 42;
        calendar->btnEdit->tap();
        QCOMPARE(calendar->lblTitle->text(), QStringLiteral("Dönem Seçimi Yapın"));
        QCOMPARE(calendar->btnEdit->title(), QStringLiteral("ONAYLA"));
        QCOMPARE(calendar->btnEdit->targetCount(), 2);
        QCOMPARE(calendar->btnCancel->targetCount(), 2);

        calendar->collYabanciOtlar->selectItem(0, 0); // another list: nothing
        QCOMPARE(fake->http->requestsFor("produce/set-period").size(), 0);
        calendar->collPeriods->selectItem(0, 1);
        QCOMPARE(calendar->tempPeriod, 103);
        QCOMPARE(calendar->currentPeriod, 102);
        const auto sent = fake->http->requestsFor("produce/set-period");
        QCOMPARE(sent.size(), 1);
        QCOMPARE(queryValues(sent.first(), "id"), QStringList{"42"});
        QCOMPARE(queryValues(sent.first(), "periodId"), QStringList{"102"});
        QCOMPARE(fake->platform->window().hudCount(), 0); // no indicator for the choice
        fake->run(0);
        // Browsing again, with the old actions still attached (each pair once), and the periods asked for again.
        QCOMPARE(calendar->lblTitle->text(), QStringLiteral("Buğday Bitkisi İçin Çözümler"));
        QCOMPARE(calendar->btnEdit->image(), QStringLiteral("productEdit"));
        QCOMPARE(calendar->btnEdit->targetCount(), 2);
        QCOMPARE(calendar->btnCancel->targetCount(), 2);
        QCOMPARE(fake->http->requestsFor("produce/periods").size(), 2);
        // A second cycle: the one tap runs both attached actions, and the choice goes out once.
        calendar->btnEdit->tap();
        QCOMPARE(fake->http->requestsFor("produce/set-period").size(), 2);
        fake->run(0);
        calendar->btnEdit->tap();
        QCOMPARE(calendar->btnEdit->targetCount(), 2);
        QCOMPARE(fake->http->requestsFor("produce/set-period").size(), 3);
    }

    void aFailedChoiceChangesNothingButTheNumber() {
        reply(103, WheatPeriods, QJsonArray{});
        open();
        calendar->btnEdit->tap();
        calendar->collPeriods->selectItem(0, 3);
        fake->run(0);
        QCOMPARE(calendar->currentPeriod, 104);
        QCOMPARE(calendar->btnEdit->title(), QStringLiteral("ONAYLA"));
        // The chain was not drawn again.
        QCOMPARE(periodCell(2)->constraintImgPeriodWidth->constant(), B + 10);
        calendar->cancelEditing();
        QCOMPARE(calendar->currentPeriod, 103);
        QCOMPARE(periodCell(2)->constraintImgPeriodWidth->constant(), B + 10);
        QCOMPARE(fake->http->requestsFor("produce/periods").size(), 1);
        // İPTAL keeps the close action it had: a tap closes the calendar.
        calendar->btnEdit->tap();
        calendar->btnCancel->tap();
        QVERIFY(!presenter->presentedViewController());
    }

    void cancellingBeforeAnyTapDrawsEveryPeriodAsFuture() {
        reply(103, WheatPeriods, QJsonArray{});
        open();
        calendar->activateEditing();
        calendar->cancelEditing();
        QCOMPARE(calendar->currentPeriod, 0);
        for (int i = 0; i < 4; ++i) {
            QCOMPARE(periodCell(i)->constraintImgPeriodWidth->constant(), B);
            QCOMPARE(periodCell(i)->lblTitle->textColor(), QColor(Qt::white));
        }
        QCOMPARE(periodCell(1)->imgPeriodLeft->backgroundColor(), QColor(Qt::white));
    }

    void theBannerGetsItsShadeWhenThePictureHasCome() {
        reply(103, WheatPeriods, QJsonArray{});
        open();
        QCOMPARE(calendar->imgBannerCrop->imageUrl(), QUrl("http://svc.test/farms/bugday.svg"));
        QVERIFY(calendar->viewBannerShade->isHidden());
        calendar->imgBannerCrop->setFrameSize(QSizeF(390, 200));
        calendar->imgBannerCrop->imageLoadEnded(QUrl("http://svc.test/farms/bugday.svg"), true);
        QVERIFY(!calendar->viewBannerShade->isHidden());
    }

    void aFailedLoadOnlyTakesTheIndicatorAway() {
        open();
        QCOMPARE(fake->platform->window().hudCount(), 0);
        QVERIFY(calendar->arrPeriods.isEmpty());
        fake->run(2000);
        QCOMPARE(calendar->collPeriods->scrolledItem(), -1);
    }

    void aDiseaseDocumentOpensOnTheProductSite() {
        reply(103, WheatPeriods,
              QJsonArray{group("Mantari Hastalıklar", QJsonArray{QJsonObject{{"name", "Sarı Pas"}, {"path", "/zirai-sorunlar/sarı pas;v=2"}}})});
        open();
        QObject indexPath;
        indexPath.setProperty("row", 0);
        calendar->performSegueWithIdentifier("DocumentSegue", &indexPath);
        auto* document = qobject_cast<farms::DocumentViewController*>(calendar->presentedViewController());
        QVERIFY(document);
        QCOMPARE(document->urlString, QStringLiteral("http://svc.test/site/zirai-sorunlar/sar%C4%B1%20pas%3Bv=2"));
        QCOMPARE(document->titleString, QStringLiteral("Sarı Pas"));
    }

    void theDocumentLoadsUnderItsIndicator() {
        auto* document = new farms::DocumentViewController;
        document->titleString = "Şeker Pancarı - Yaprak Gelişimi Dönemi";
        document->urlString = "http://svc.test/documents/periods/702.pdf";
        presenter->presentViewController(document);
        QCOMPARE(document->navBar->text(), QStringLiteral("Şeker Pancarı - Yaprak Gelişimi Dönemi"));
        QCOMPARE(document->webViewDocument->url(), QUrl("http://svc.test/documents/periods/702.pdf"));
        QCOMPARE(fake->platform->window().hudCount(), 1);
        document->webViewDocument->navigationFinished();
        QCOMPARE(fake->platform->window().hudCount(), 0);
        document->close();
        QVERIFY(!presenter->presentedViewController());
    }

    void theProductCardShowsAPlainName() {
        auto* card = new farms::ProductViewController;
        card->dictProduct = QJsonObject{{"name", "Tarvenza<sup>&reg;</sup> 250 EC"}, {"image", "http://svc.test/aps/51.svg"}};
        presenter->presentViewController(card);
        QCOMPARE(card->labelName->text(), QStringLiteral("Tarvenza® 250 EC"));
        QCOMPARE(card->imageLogo->imageUrl(), QUrl("http://svc.test/aps/51.svg"));
        card->closeView();
        QVERIFY(!presenter->presentedViewController());
    }

private:
    void reply(int current, const QJsonArray& periods, const QJsonArray& groups) {
        fake->http->on("produce/periods", jsonReply(periodsReply(current, periods, groups)));
    }

    // The calendar of farm 7, presented; the hook runs before it loads.
    void open(std::function<void()> beforeLoad = {}) {
        calendar = new ProductDetailViewController;
        calendar->objectID = 7;
        calendar->produceName = QStringLiteral("Buğday");
        calendar->produceImage = QStringLiteral("http://svc.test/farms/bugday.svg");
        if (beforeLoad) beforeLoad();
        presenter->presentViewController(calendar);
        fake->run(0);
    }

    PeriodCollectionViewCell* periodCell(int item) const {
        return static_cast<PeriodCollectionViewCell*>(calendar->collPeriods->cellForItem(0, item));
    }
    static PestsCollectionViewCell* pestCell(CollectionView* c, int section) {
        return static_cast<PestsCollectionViewCell*>(c->cellForItem(section, 0));
    }
    static QStringList names(const QJsonArray& list) {
        QStringList out;
        for (const auto& v : list) out << v.toObject().value("name").toString();
        return out;
    }

    static constexpr double B = 390.0 / 2 - 64 - 53 - 20;
    FakePlatform* fake = nullptr;
    platform::ViewController* presenter = nullptr;
    ProductDetailViewController* calendar = nullptr;
};

QTEST_GUILESS_MAIN(CropCalendarTest)
#include "tst_crop_calendar.moc"
