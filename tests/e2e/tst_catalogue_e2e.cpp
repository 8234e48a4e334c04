// The plant-protection catalogue as a farmer narrows it by plant, group and illness, and searches it.

#include "EndToEnd.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <cmath>

using namespace ekinora;
using namespace ekinora::testing;

class CatalogueEndToEnd : public EndToEnd {
    Q_OBJECT
private slots:
    void init() {
        startService();
        service->setPopupActive(false); // the campaign card would cover the lists
    }
    void cleanup() { stopAll(); }

    void farmerNarrowsTheCatalogueAndSearchesIt() {
        openCatalogue();
        saveScreenshot(window(), QStringLiteral("catalogue-home"));

        // A plant first: the panel lists every plant of the catalogue.
        tapUntilShown("bitkiAdiView", "categoriesView");
        QTRY_VERIFY_WITH_TIMEOUT(rowNamed(QStringLiteral("Domates")), 5000);
        shoot(QStringLiteral("catalogue-plants"), 200);
        tapUntilGone(rowNamed(QStringLiteral("Domates")), "categoriesView");
        QCOMPARE(textOf("plantNameLbl"), QStringLiteral("Domates"));
        // The narrowed lists show at the next opening of the panel, once their reply is in.
        QTRY_VERIFY_WITH_TIMEOUT(answered("&plant="), 5000);
        QTest::qWait(300);

        // Then a group among those the service left for tomatoes. The row shows "Fungisit" but takes
        // the id at its position from the first fetch, so the result is that of another group.
        tap("urunGrubuView");
        QTRY_VERIFY_WITH_TIMEOUT(rowNamed(QStringLiteral("Fungisit")), 5000);
        QVERIFY(!rowNamed(QStringLiteral("Herbisit")));
        tapItem(window(), rowNamed(QStringLiteral("Fungisit")));
        QCOMPARE(textOf("productGrpLbl"), QStringLiteral("Fungisit"));
        tapUntilShown("selectedProductButtonTapped", "SelectedProductViewController");
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "waitOverlay"), 5000);
        QTRY_COMPARE(cells("topCollectionViewCell").size(), 2);
        QTest::qWait(300);
        QCOMPARE(cells("selectedProductCell").size(), 0); // no herbicide for tomatoes
        saveScreenshot(window(), QStringLiteral("catalogue-stale-result"));

        // Back: the labels stay, the choice behind them is gone.
        tapUntilShown("backButton", "HomeViewController");
        QCOMPARE(textOf("plantNameLbl"), QStringLiteral("Domates"));
        tap("selectedProductButtonTapped");
        QTRY_COMPARE(alertText(), QStringLiteral("Hiç bir tercih yapmadınız"));
        dismissAlert();

        // An illness alone, on fresh lists: downy mildew's sprays and seed dressings, as a grid.
        tap("hastalikView");
        QTRY_VERIFY_WITH_TIMEOUT(rowNamed(QStringLiteral("Mildiyö")), 5000);
        tapItem(window(), rowNamed(QStringLiteral("Mildiyö")));
        tapUntilShown("selectedProductButtonTapped", "SelectedProductViewController");
        QTRY_VERIFY_WITH_TIMEOUT(cells("selectedProductCell").size() > 0, 5000);
        for (QQuickItem* cell : cells("selectedProductCell"))
            QVERIFY((QStringList{"Fungisit", "Tohum İlacı"}).contains(textOf(cell, "label2")));
        tapUntilShown("changeGridWithSender", "collectionViewBottom");
        QTRY_VERIFY(cells("productCell").size() > 1);
        waitForPictures("productCell");
        saveScreenshot(window(), QStringLiteral("catalogue-result-grid"));

        tapUntilShown("backButton", "HomeViewController");
        tap("showAllProducts");
        QTRY_VERIFY_WITH_TIMEOUT(cells("productCell").size() > 4, 5000);
        QVERIFY(textOf(cells("productCell").first(), "label1").contains(QStringLiteral("®")));
        waitForPictures("productCell");
        saveScreenshot(window(), QStringLiteral("catalogue-all"));
        typeInto("searchBar", "gard");
        // Rows of the earlier keystrokes go as the list settles.
        QTRY_VERIFY(allMatch("productCell", QStringLiteral("gard")));
        tapUntilShown("changeGridWithSender", "collectionView");
        QTRY_VERIFY(cells("allProductCell").size() >= 3);
        waitForPictures("allProductCell");
        saveScreenshot(window(), QStringLiteral("catalogue-search-grid"));
    }

    // A long list flicked through fast, then left to settle: every row on show draws its own
    // product's picture, as the same address drawn alone on a fresh load does.
    void picturesStayWithTheirRowsAfterScrolling() {
        openCatalogue();
        tap("showAllProducts");
        QTRY_VERIFY_WITH_TIMEOUT(cells("productCell").size() > 4, 5000);
        waitForPictures("productCell");
        QQuickItem* list = itemNamed(window(), "tableView");
        const double end = list->property("contentHeight").toDouble() - list->height();
        for (int round = 0; round < 3; ++round) {
            for (double y = 0; y <= end; y += 170) list->setProperty("contentY", y), QTest::qWait(3);
            for (double y = end; y >= 0; y -= 230) list->setProperty("contentY", y), QTest::qWait(3);
        }
        list->setProperty("contentY", std::round(end / 2));
        waitForPictures("productCell");
        shoot(QStringLiteral("catalogue-scrolled"));
        const QImage shot = window()->grabWindow();
        const QRectF shown = list->mapRectToScene(QRectF(0, 0, list->width(), list->height()));
        int compared = 0;
        for (QQuickItem* cell : cells("productCell")) {
            QQuickItem* picture = itemsNamed(cell, "imgView").value(0);
            const QRectF at = picture->mapRectToScene(QRectF(0, 0, picture->width(), picture->height()));
            if (!shown.contains(at)) continue;
            ++compared;
            QVERIFY2(shot.copy(at.toRect()) == drawnAlone(picture, at.size().toSize()), qPrintable(textOf(cell, "label1")));
        }
        QVERIFY(compared >= 5);
    }

private:
    // The picture's address drawn alone in a window of its own, loaded afresh (not from the cache).
    QImage drawnAlone(QQuickItem* picture, const QSize& size) {
        QQuickWindow alone;
        alone.resize(size.width() + 20, size.height() + 20);
        alone.show();
        QQmlComponent component(qmlEngine(picture));
        component.setData("import QtQuick\nImage { x: 10; y: 10; cache: false; fillMode: Image.PreserveAspectFit }", QUrl());
        std::unique_ptr<QObject> made(component.create());
        auto* image = qobject_cast<QQuickItem*>(made.get());
        if (!image) return {};
        image->setSize(size);
        image->setProperty("sourceSize", picture->property("sourceSize"));
        image->setProperty("source", picture->property("source"));
        image->setParentItem(alone.contentItem());
        if (!QTest::qWaitFor([&] { return image->property("status").toInt() == 1; }, 5000)) return {};
        QTest::qWait(50);
        return alone.grabWindow().copy(10, 10, size.width(), size.height());
    }

    void openCatalogue() {
        startApp();
        signInAs("farmer");
        openMenu(QStringLiteral("Bitki Koruma Ürünleri  YENİ "));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "HomeViewController"), 5000);
        QCOMPARE(topIdentifier(), QStringLiteral("HomeSB"));
        // The warning comes at each load of the screen.
        QTRY_COMPARE(alertText(), QStringLiteral("Kullanmadan önce talimatları mutlaka okuyunuz!"));
        shoot(QStringLiteral("catalogue-warning"));
        dismissAlert();
        QTest::qWait(300);
    }

    bool allMatch(const char* cellName, const QString& needle) {
        const auto found = cells(cellName);
        for (QQuickItem* cell : found)
            if (!textOf(cell, "label1").toLower().contains(needle)) return false;
        return found.size() >= 3;
    }
    QQuickItem* rowNamed(const QString& name) { return cellWith("categories", "textLabel", name); }
    // Cells come and go while waiting, so they are looked up afresh each time.
    void waitForPictures(const char* cellName) {
        QTRY_VERIFY_WITH_TIMEOUT(picturesReady(cellName), 5000);
    }
    bool picturesReady(const char* cellName) {
        for (QQuickItem* cell : cells(cellName))
            for (QQuickItem* image : itemsNamed(cell, "imgView"))
                if (image->property("status").toInt() != 1) return false;
        return true;
    }
};

EKINORA_GUI_TEST_MAIN(CatalogueEndToEnd)
#include "tst_catalogue_e2e.moc"
