// The farm list and the bell, as a farmer uses them.

#include "EndToEnd.h"
#include "farms/FarmsViewController.h"

using namespace ekinora;
using namespace ekinora::testing;

class FarmsEndToEnd : public EndToEnd {
    Q_OBJECT
private slots:
    void init() { startService(); }
    void cleanup() { stopAll(); }

    void farmerAddsEditsAndDeletesFarms() {
        openFarms();
        QTRY_COMPARE_WITH_TIMEOUT(cards().size(), 2, 5000);
        QVERIFY(itemNamed(window(), "NewFarmCell"));
        QVERIFY(!itemNamed(window(), "lblProductAlert"));
        QCOMPARE(textOf(cards().at(0), "lblFarm"), QStringLiteral("Buğday"));
        QCOMPARE(textOf(cards().at(0), "lblFarmSize"), QStringLiteral("180 dekar"));
        QCOMPARE(textOf(cards().at(0), "lblProducts"), QStringLiteral("Mirelo® 45 OD\nTarvenza® 250 EC\nSorimet® 5 EC"));
        QTRY_COMPARE_WITH_TIMEOUT(itemsNamed(cards().at(0), "imgBack").value(0)->property("status").toInt(), 1, 5000); // Image.Ready
        saveScreenshot(window(), QStringLiteral("farms-list"));

        tapUntilShown("NewFarmCell", "viewNewProduce");
        QCOMPARE(panelText("lblFarm"), QStringLiteral("Ürün Seçiniz"));
        QCOMPARE(panelText("lblProduct"), QStringLiteral("Zirai Ürün Seçiniz"));
        chooseCrop(QStringLiteral("Domates"));
        typeInto("txtFarmSize", "25");
        tapUntilShown("openProductView", "viewProduct");
        tapCell("ProductCell", "textLabel", QStringLiteral("Tarvenza® 250 EC"));
        tapCell("ProductCell", "textLabel", QStringLiteral("Nodrix® 480 SC"));
        shoot(QStringLiteral("farms-products"), 200);
        tapUntilGone("acceptProductView", "viewProduct");
        QCOMPARE(panelText("lblProduct"), QStringLiteral("Tarvenza® 250 EC\nNodrix® 480 SC"));
        saveScreenshot(window(), QStringLiteral("farms-new-farm"));
        tapUntilGone("btnNewProduce", "viewNewProduce");
        QTRY_COMPARE_WITH_TIMEOUT(cards().size(), 3, 5000);
        QCOMPARE(textOf(cards().at(2), "lblFarm"), QStringLiteral("Domates"));
        QCOMPARE(textOf(cards().at(2), "lblFarmSize"), QStringLiteral("25 dekar"));
        QCOMPARE(textOf(cards().at(2), "lblProducts"), QStringLiteral("Tarvenza® 250 EC\nNodrix® 480 SC"));
        // Three farms: no adding cell, the notice above the list instead.
        QVERIFY(!itemNamed(window(), "NewFarmCell"));
        QVERIFY(itemNamed(window(), "lblProductAlert"));
        QCOMPARE(itemNamed(window(), "collFarms")->y(), 32.0);
        shoot(QStringLiteral("farms-three"));

        tapUntilShown(cards().at(2), "btnUpdateProduce");
        QVERIFY(!itemNamed(window(), "btnNewProduce"));
        QCOMPARE(panelText("lblFarm"), QStringLiteral("Domates"));
        QCOMPARE(itemNamed(window(), "txtFarmSize")->property("text").toString(), QStringLiteral("25"));
        typeInto("txtFarmSize", "40", true);
        saveScreenshot(window(), QStringLiteral("farms-edit"));
        tapItem(window(), itemNamed(window(), "btnUpdateProduce"));
        QTRY_COMPARE_WITH_TIMEOUT(textOf(cards().value(2), "lblFarmSize"), QStringLiteral("40 dekar"), 5000);
        QCOMPARE(textOf(cards().at(2), "lblProducts"), QStringLiteral("Tarvenza® 250 EC\nNodrix® 480 SC"));

        // Deleting one brings the adding cell back.
        tapUntilShown(cards().at(1), "btnDeleteProduce");
        tapItem(window(), itemNamed(window(), "btnDeleteProduce"));
        QTRY_COMPARE_WITH_TIMEOUT(cards().size(), 2, 5000);
        QTRY_VERIFY(itemNamed(window(), "NewFarmCell"));
        QVERIFY(!itemNamed(window(), "lblProductAlert"));
        QCOMPARE(textOf(cards().at(1), "lblFarm"), QStringLiteral("Domates"));

        // The service refuses a farm without a size, and its message is what the farmer reads.
        tapUntilShown("NewFarmCell", "viewNewProduce");
        chooseCrop(QStringLiteral("Mısır"));
        tapItem(window(), itemNamed(window(), "btnNewProduce"));
        QTRY_COMPARE_WITH_TIMEOUT(alertText("title"), QStringLiteral("Uyarı"), 5000);
        QCOMPARE(alertText(), QStringLiteral("Tarla büyüklüğünü girmediniz."));
        shootSettled(QStringLiteral("farms-refused"), 300);
        dismissAlert();
        QVERIFY(itemNamed(window(), "viewNewProduce"));
        tapUntilGone("removeNewProduceView", "viewNewProduce");
        QCOMPARE(cards().size(), 2);
    }

    void bellCountsTheUnreadAndOpensTheList() {
        openFarms();
        // The demo farmer has two unread notices.
        QTRY_COMPARE_WITH_TIMEOUT(farmsScreen()->rightBarButtonItem()->badgeValue(), QStringLiteral("2"), 5000);
        QQuickItem* badge = nullptr;
        QTRY_VERIFY((badge = itemNamed(window(), "badge")));
        QString shown;
        for (QQuickItem* child : badge->childItems())
            if (child->property("text").isValid()) shown = child->property("text").toString();
        QCOMPARE(shown, QStringLiteral("2"));
        QQuickItem* bell = itemNamed(window(), "btnNotification");
        QVERIFY(bell);
        QVERIFY(bell->width() >= 44 && bell->height() >= 44);
        shootSettled(QStringLiteral("farms-bell"), 300);

        tapUntilShown(bell, "NotificationViewController");
        QTRY_COMPARE_WITH_TIMEOUT(cells("NotificationCell").size(), 4, 5000);
        QVERIFY(!itemNamed(window(), "lblInfo"));
        QQuickItem* newest = cells("NotificationCell").first();
        QVERIFY(itemsNamed(newest, "lblNotification").first()->property("text").toString().startsWith(QStringLiteral("Konya ve çevresinde")));
        QVERIFY(QRegularExpression(QStringLiteral("^\\d\\d\\.\\d\\d\\.\\d{4} \\d\\d:\\d\\d$"))
                    .match(itemsNamed(newest, "lblDate").first()->property("text").toString()).hasMatch());
        shootSettled(QStringLiteral("farms-notifications"), 300);
        tapUntilGone("closeView", "NotificationViewController");

        // The list left the badge alone; the next count finds them read.
        QCOMPARE(farmsScreen()->rightBarButtonItem()->badgeValue(), QStringLiteral("2"));
        app->platform().notificationCenter().postNotificationName(QStringLiteral("checkNotifBadge"));
        QTRY_COMPARE_WITH_TIMEOUT(farmsScreen()->rightBarButtonItem()->badgeValue(), QStringLiteral(""), 5000);
        QTRY_VERIFY(!itemNamed(window(), "badge"));
    }

private:
    void openFarms() {
        startApp();
        // The home's indicator waits for its farms and takes no touches meanwhile.
        signInAs("farmer");
        openMenu(QStringLiteral("Tarlalarım"), "FarmsViewController");
        QVERIFY(farmsScreen());
        QCOMPARE(content()->topTitle(), QStringLiteral("Tarlalarım"));
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
    }

    QList<QQuickItem*> cards() const { return cells("FarmCell"); }

    QString panelText(const char* name) const { return textOf(itemNamed(window(), "viewNewProduce"), name); }

    void chooseCrop(const QString& crop) {
        tapUntilShown("openPlantsView", "viewPlant");
        shoot(QStringLiteral("farms-crops"), 100);
        tapCell("PlantCell", "lblPlantName", crop);
        QTRY_VERIFY(!itemNamed(window(), "viewPlant"));
        QCOMPARE(panelText("lblFarm"), crop);
    }

    farms::FarmsViewController* farmsScreen() const {
        return content() ? qobject_cast<farms::FarmsViewController*>(content()->topViewController()) : nullptr;
    }
};

EKINORA_GUI_TEST_MAIN(FarmsEndToEnd)
#include "tst_farms_e2e.moc"
