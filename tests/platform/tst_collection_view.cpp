// Collection views and their reused cells, an image view's wait for its picture, and what a
// full-screen presentation does to the screens below it.

#include "FakePlatform.h"
#include "platform/AlertController.h"
#include "platform/CollectionView.h"
#include "platform/NavigationController.h"

#include <QSignalSpy>
#include <QTest>

using namespace ekinora;
using namespace ekinora::platform;
using namespace ekinora::testing;

namespace {

// Counts its appearances.
class Screen : public ViewController {
    Q_OBJECT
public:
    QStringList calls;
    void viewWillAppear(bool) override { calls << "willAppear"; }
    void viewDidAppear(bool) override { calls << "didAppear"; }
    void viewWillDisappear(bool) override { calls << "willDisappear"; }
    void viewDidDisappear(bool) override { calls << "didDisappear"; }
};

class TitledCell : public CollectionViewCell {
    Q_OBJECT
public:
    TitledCell() : CollectionViewCell(QStringLiteral("Cell")) {}
    QString title;
    QString leftOver; // set once, never again
};

} // namespace

class CollectionViewTest : public QObject {
    Q_OBJECT
private slots:
    void init() { fake = new FakePlatform; }
    void cleanup() { delete fake; }

    void aReloadHandsTheSameCellsOutAgainInOrder() {
        CollectionView collection(QStringLiteral("coll"));
        QStringList items{"a", "b", "c"};
        int made = 0;
        collection.registerCell(QStringLiteral("Cell"), [&made] {
            ++made;
            return new TitledCell;
        });
        collection.setDataSource([](CollectionView*) { return 1; }, [&](CollectionView*, int) { return int(items.size()); },
                                 [&](CollectionView* c, int section, int item) {
                                     auto* cell = c->dequeue<TitledCell>(QStringLiteral("Cell"), section, item);
                                     cell->title = items[item];
                                     if (cell->leftOver.isEmpty()) cell->leftOver = items[item];
                                     return cell;
                                 });
        collection.reloadData();
        const auto first = collection.visibleCells();
        QCOMPARE(first.size(), 3);
        QCOMPARE(made, 3);
        items = {"x", "y"};
        collection.reloadData();
        QCOMPARE(made, 3);
        QCOMPARE(collection.visibleCells(), (QList<CollectionViewCell*>{first[0], first[1]}));
        auto* cell = static_cast<TitledCell*>(collection.cellForItem(0, 1));
        QCOMPARE(cell->title, QStringLiteral("y"));
        QCOMPARE(cell->leftOver, QStringLiteral("b"));
        QCOMPARE(cell->item(), 1);
        items = {"p", "q", "r", "s"};
        collection.reloadData();
        QCOMPARE(made, 4);
    }

    void anImageViewWaitsOnlyForItsLastAddress() {
        ImageView view(QStringLiteral("img"));
        QStringList ended;
        view.setImageWithURL(QUrl("http://svc.test/a.svg"), [&](bool ok) { ended << QStringLiteral("a %1").arg(ok); });
        view.setImageWithURL(QUrl("http://svc.test/b.svg"), [&](bool ok) { ended << QStringLiteral("b %1").arg(ok); });
        view.imageLoadEnded(QUrl("http://svc.test/a.svg"), true);
        QVERIFY(ended.isEmpty());
        view.imageLoadEnded(QUrl("http://svc.test/b.svg"), false);
        view.imageLoadEnded(QUrl("http://svc.test/b.svg"), true);
        QCOMPARE(ended, QStringList{"b 0"});
        // A change of the view is not a change of the picture.
        QSignalSpy picture(&view, &ImageView::imageChanged);
        view.setClipsToBounds(true);
        view.setFrameSize(QSizeF(88, 88));
        QCOMPARE(picture.size(), 0);
    }

    void aFullScreenPresentationTakesThePresenterAwayUntilDismissed() {
        auto* nav = new NavigationController;
        auto* below = new Screen;
        nav->setViewControllers({below});
        fake->platform->window().setRootViewController(nav);
        fake->platform->window().makeKeyAndVisible();
        fake->clock->advance(0);
        below->calls.clear();

        auto* modal = new ViewController;
        below->presentViewController(modal);
        QCOMPARE(below->calls, (QStringList{"willDisappear", "didDisappear"}));
        QVERIFY(!below->isVisible());
        modal->dismissViewControllerAnimated(true);
        QCOMPARE(below->calls, (QStringList{"willDisappear", "didDisappear", "willAppear", "didAppear"}));
        QVERIFY(below->isVisible());

        // An alert and an over-full-screen card leave it in place.
        below->calls.clear();
        below->presentViewController(AlertController::simple("Uyarı", "x", "Tamam"));
        fake->alert()->tapButton(0);
        auto* card = new ViewController;
        card->modalPresentationStyle = 5;
        below->presentViewController(card);
        card->dismissViewControllerAnimated(true);
        QVERIFY(below->calls.isEmpty());
    }

private:
    FakePlatform* fake = nullptr;
};

QTEST_GUILESS_MAIN(CollectionViewTest)
#include "tst_collection_view.moc"
