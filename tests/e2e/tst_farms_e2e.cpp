// The farm list and the bell, end to end: the real application in-process, offscreen, against the
// real reference service, driven through the object contract as a farmer would.

#include "EndToEnd.h"
#include "accounts/DemoAccounts.h"
#include "core/Server.h"
#include "farms/FarmsViewController.h"
#include "platform/NavigationController.h"
#include "platform/Platform.h"
#include "platform/SideMenuViewController.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace ekinora;
using namespace ekinora::testing;

class FarmsEndToEnd : public EndToEnd {
    Q_OBJECT
private slots:
    void init() {
        startService();
    }
    void cleanup() { stopAll(); }

    void farmerAddsEditsAndDeletesFarms() {
        openFarms();
        // The demo farmer's two farms and the adding cell.
        QTRY_COMPARE_WITH_TIMEOUT(cards().size(), 2, 5000);
        QVERIFY(itemNamed(window(), "NewFarmCell"));
        QVERIFY(!itemNamed(window(), "lblProductAlert"));
        QCOMPARE(text(cards().at(0), "lblFarm"), QStringLiteral("Buğday"));
        QCOMPARE(text(cards().at(0), "lblFarmSize"), QStringLiteral("180 dekar"));
        QCOMPARE(text(cards().at(0), "lblProducts"), QStringLiteral("Mirelo® 45 OD\nTarvenza® 250 EC\nSorimet® 5 EC"));
        QTRY_COMPARE_WITH_TIMEOUT(itemsNamed(cards().at(0), "imgBack").value(0)->property("status").toInt(), int(QQuickImage_Ready), 5000);
        saveScreenshot(window(), QStringLiteral("farms-list"));

        // A third farm: tomatoes with two products.
        tapItem(window(), itemNamed(window(), "NewFarmCell"));
        QTRY_VERIFY(itemNamed(window(), "viewNewProduce"));
        QCOMPARE(panelText("lblFarm"), QStringLiteral("Ürün Seçiniz"));
        QCOMPARE(panelText("lblProduct"), QStringLiteral("Zirai Ürün Seçiniz"));
        chooseCrop(QStringLiteral("Domates"));
        typeInto("txtFarmSize", "25");
        tapItem(window(), itemNamed(window(), "openProductView"));
        QTRY_VERIFY(itemNamed(window(), "viewProduct"));
        tapRow("ProductCell", "textLabel", QStringLiteral("Tarvenza® 250 EC"));
        tapRow("ProductCell", "textLabel", QStringLiteral("Nodrix® 480 SC"));
        QTest::qWait(200);
        saveScreenshot(window(), QStringLiteral("farms-products"));
        tapItem(window(), itemNamed(window(), "acceptProductView"));
        QTRY_VERIFY(!itemNamed(window(), "viewProduct"));
        QCOMPARE(panelText("lblProduct"), QStringLiteral("Tarvenza® 250 EC\nNodrix® 480 SC"));
        saveScreenshot(window(), QStringLiteral("farms-new-farm"));
        tapItem(window(), itemNamed(window(), "btnNewProduce"));
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "viewNewProduce"), 5000);
        QTRY_COMPARE_WITH_TIMEOUT(cards().size(), 3, 5000);
        QCOMPARE(text(cards().at(2), "lblFarm"), QStringLiteral("Domates"));
        QCOMPARE(text(cards().at(2), "lblFarmSize"), QStringLiteral("25 dekar"));
        QCOMPARE(text(cards().at(2), "lblProducts"), QStringLiteral("Tarvenza® 250 EC\nNodrix® 480 SC"));
        // Three farms: no adding cell, the notice above the list instead.
        QVERIFY(!itemNamed(window(), "NewFarmCell"));
        QVERIFY(itemNamed(window(), "lblProductAlert"));
        QCOMPARE(itemNamed(window(), "collFarms")->y(), 32.0);
        QTest::qWait(300);
        saveScreenshot(window(), QStringLiteral("farms-three"));

        // Its size changes.
        tapItem(window(), cards().at(2));
        QTRY_VERIFY(itemNamed(window(), "btnUpdateProduce"));
        QVERIFY(!itemNamed(window(), "btnNewProduce"));
        QCOMPARE(panelText("lblFarm"), QStringLiteral("Domates"));
        QCOMPARE(itemNamed(window(), "txtFarmSize")->property("text").toString(), QStringLiteral("25"));
        typeInto("txtFarmSize", "40", true);
        saveScreenshot(window(), QStringLiteral("farms-edit"));
        tapItem(window(), itemNamed(window(), "btnUpdateProduce"));
        QTRY_COMPARE_WITH_TIMEOUT(text(cards().value(2), "lblFarmSize"), QStringLiteral("40 dekar"), 5000);
        QCOMPARE(text(cards().at(2), "lblProducts"), QStringLiteral("Tarvenza® 250 EC\nNodrix® 480 SC"));

        // Deleting one brings the adding cell back.
        tapItem(window(), cards().at(1));
        QTRY_VERIFY(itemNamed(window(), "btnDeleteProduce"));
        tapItem(window(), itemNamed(window(), "btnDeleteProduce"));
        QTRY_COMPARE_WITH_TIMEOUT(cards().size(), 2, 5000);
        QTRY_VERIFY(itemNamed(window(), "NewFarmCell"));
        QVERIFY(!itemNamed(window(), "lblProductAlert"));
        QCOMPARE(text(cards().at(1), "lblFarm"), QStringLiteral("Domates"));

        // The service refuses a farm without a size, and its message is what the farmer reads.
        tapItem(window(), itemNamed(window(), "NewFarmCell"));
        QTRY_VERIFY(itemNamed(window(), "viewNewProduce"));
        chooseCrop(QStringLiteral("Mısır"));
        tapItem(window(), itemNamed(window(), "btnNewProduce"));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "alert"), 5000);
        QQuickItem* alert = itemNamed(window(), "alert");
        QCOMPARE(alert->property("title").toString(), QStringLiteral("Uyarı"));
        QCOMPARE(alert->property("message").toString(), QStringLiteral("Tarla büyüklüğünü girmediniz."));
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
        QTest::qWait(300);
        saveScreenshot(window(), QStringLiteral("farms-refused"));
        tapItem(window(), itemsNamed(alert, "alertButton").first());
        QTRY_VERIFY(!itemNamed(window(), "alert"));
        QVERIFY(itemNamed(window(), "viewNewProduce"));
        tapItem(window(), itemNamed(window(), "removeNewProduceView"));
        QTRY_VERIFY(!itemNamed(window(), "viewNewProduce"));
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
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
        QTest::qWait(300);
        saveScreenshot(window(), QStringLiteral("farms-bell"));

        tapItem(window(), bell);
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "NotificationViewController"), 5000);
        QTRY_COMPARE_WITH_TIMEOUT(itemsNamed(window()->contentItem(), "NotificationCell").size(), 4, 5000);
        QVERIFY(!itemNamed(window(), "lblInfo"));
        QQuickItem* newest = itemsNamed(window()->contentItem(), "NotificationCell").first();
        QVERIFY(itemsNamed(newest, "lblNotification").first()->property("text").toString().startsWith(QStringLiteral("Konya ve çevresinde")));
        QVERIFY(QRegularExpression(QStringLiteral("^\\d\\d\\.\\d\\d\\.\\d{4} \\d\\d:\\d\\d$"))
                    .match(itemsNamed(newest, "lblDate").first()->property("text").toString()).hasMatch());
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
        QTest::qWait(300);
        saveScreenshot(window(), QStringLiteral("farms-notifications"));
        tapItem(window(), itemNamed(window(), "closeView"));
        QTRY_VERIFY(!itemNamed(window(), "NotificationViewController"));

        // The list left the badge alone; the next count finds them read.
        QCOMPARE(farmsScreen()->rightBarButtonItem()->badgeValue(), QStringLiteral("2"));
        app->platform().notificationCenter().postNotificationName(QStringLiteral("checkNotifBadge"));
        QTRY_COMPARE_WITH_TIMEOUT(farmsScreen()->rightBarButtonItem()->badgeValue(), QStringLiteral(""), 5000);
        QTRY_VERIFY(!itemNamed(window(), "badge"));
    }

private:
    static constexpr int QQuickImage_Ready = 1;

    void openFarms() {
        startApp();
        signIn(server::accounts::demoAccount("farmer").phone);
        QTRY_VERIFY_WITH_TIMEOUT(content() && content()->topViewController(), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "presentLeftMenuViewController"), 5000);
        // The home's indicator waits for its farms and takes no touches meanwhile.
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
        tapItem(window(), itemNamed(window(), "presentLeftMenuViewController"));
        QTRY_VERIFY(root()->isMenuVisible());
        QTest::qWait(400);
        QQuickItem* row = nullptr;
        for (QQuickItem* cell : itemsNamed(window()->contentItem(), "Cell"))
            if (cell->property("content").toMap().value("text").toString() == QStringLiteral("Tarlalarım")) row = cell;
        QVERIFY(row);
        tapItem(window(), row);
        QTRY_VERIFY_WITH_TIMEOUT(farmsScreen(), 5000);
        QTRY_VERIFY(!root()->isMenuVisible());
        QTest::qWait(400); // the content slides back
        QCOMPARE(content()->topTitle(), QStringLiteral("Tarlalarım"));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "FarmsViewController"), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
    }

    QList<QQuickItem*> cards() const { return itemsNamed(window()->contentItem(), "FarmCell"); }

    static QString text(QQuickItem* within, const char* name) {
        const auto found = within ? itemsNamed(within, name) : QList<QQuickItem*>{};
        return found.isEmpty() ? QString() : found.first()->property("text").toString();
    }
    QString panelText(const char* name) const { return text(itemNamed(window(), "viewNewProduce"), name); }

    // A row of a list, by the text of one of its labels.
    void tapRow(const char* cellName, const char* labelName, const QString& label) {
        QQuickItem* found = nullptr;
        QTRY_VERIFY_WITH_TIMEOUT(!itemsNamed(window()->contentItem(), cellName).isEmpty(), 5000);
        for (QQuickItem* cell : itemsNamed(window()->contentItem(), cellName))
            if (text(cell, labelName) == label) found = cell;
        QVERIFY2(found, qPrintable(label));
        tapItem(window(), found);
    }

    void chooseCrop(const QString& crop) {
        tapItem(window(), itemNamed(window(), "openPlantsView"));
        QTRY_VERIFY(itemNamed(window(), "viewPlant"));
        QTest::qWait(100);
        saveScreenshot(window(), QStringLiteral("farms-crops"));
        tapRow("PlantCell", "lblPlantName", crop);
        QTRY_VERIFY(!itemNamed(window(), "viewPlant"));
        QCOMPARE(panelText("lblFarm"), crop);
    }




    farms::FarmsViewController* farmsScreen() const {
        return content() ? qobject_cast<farms::FarmsViewController*>(content()->topViewController()) : nullptr;
    }

};

EKINORA_GUI_TEST_MAIN(FarmsEndToEnd)
#include "tst_farms_e2e.moc"
