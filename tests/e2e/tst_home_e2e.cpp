// The farmer's home and crop calendar, and the club member's invitation.

#include "EndToEnd.h"
#include "farms/DocumentViewController.h"
#include "farms/ProductDetailViewController.h"

#include <QDate>

using namespace ekinora;
using namespace ekinora::testing;

class HomeEndToEnd : public EndToEnd {
    Q_OBJECT
private slots:
    void init() {
        startService();
        // The campaign card of the poll belongs to the sign-in journeys.
        service->setPopupActive(false);
    }
    void cleanup() { stopAll(); }

    void farmerSeesWeatherFarmsCalendarAndDocument() {
        startApp();
        signIn(server::accounts::demoAccount("farmer").phone);

        // Today's weather for his county, and his two farms with their periods.
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "ViewController"), 5000);
        QTRY_COMPARE_WITH_TIMEOUT(textOf("lblWeatherLocation"), QStringLiteral("Çumra"), 5000);
        const QDate today = QDate::currentDate();
        QTRY_COMPARE(textOf("lblWeatherDate"), QStringLiteral("%1.%2.%3").arg(today.day()).arg(today.month()).arg(today.year()));
        QVERIFY(QRegularExpression(QStringLiteral("^-?\\d+$")).match(textOf("lblWeatherTemprature")).hasMatch());
        QQuickItem* icon = itemNamed(window(), "imgWeatherCondition");
        QTRY_COMPARE_WITH_TIMEOUT(icon->property("status").toInt(), 1, 5000); // Image.Ready
        QVERIFY(icon->property("source").toString().endsWith("_day.svg"));
        const auto weatherCalls = sent("weather/weather-json");
        QCOMPARE(weatherCalls.size(), size_t(1));
        QVERIFY(weatherCalls.front().target.find("date=" + today.toString("yyyy-MM-dd").toStdString()) != std::string::npos);
        QVERIFY(weatherCalls.front().target.find("bearer") == std::string::npos);

        QTRY_COMPARE_WITH_TIMEOUT(cells("FarmCell").size(), 2, 5000);
        const auto farms = cells("FarmCell");
        QCOMPARE(farms.at(0)->property("content").toMap().value("lblFarm").toString(), QStringLiteral("Buğday"));
        QCOMPARE(farms.at(1)->property("content").toMap().value("lblFarm").toString(), QStringLiteral("Şeker Pancarı"));
        QVERIFY(!farms.at(0)->property("content").toMap().value("lblPeriod").toString().isEmpty());
        QVERIFY(itemNamed(window(), "NewFarmCell"));
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
        screenshot(QStringLiteral("home-farmer"));

        // The wheat's calendar: the farm's period marked, its pests listed.
        tapItem(window(), farms.at(0));
        QTRY_VERIFY_WITH_TIMEOUT(calendar(), 3000);
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
        QCOMPARE(calendar()->lblTitle->text(), QStringLiteral("Buğday Bitkisi İçin Çözümler"));
        const int current = calendar()->currentPeriod;
        const int currentRow = periodRow(current);
        QVERIFY(currentRow >= 0);
        QCOMPARE(pictureSide(currentRow), farms::ProductDetailViewController::periodPictureSide() + 10);
        const QStringList pestsBefore = pestNames();
        QVERIFY(!pestsBefore.isEmpty());
        QVERIFY(!cells("PestCell").isEmpty());
        QTest::qWait(900); // scrolled to the present period
        screenshot(QStringLiteral("calendar-wheat"));

        // Another period: its pests arrive and it is marked.
        const int otherRow = currentRow + 1 < int(calendar()->arrPeriods.size()) ? currentRow + 1 : currentRow - 1;
        const int other = calendar()->arrPeriods.at(otherRow).toObject().value("id").toInt();
        tapItem(window(), periodCellItem(otherRow));
        QTRY_COMPARE_WITH_TIMEOUT(sent("produce/set-period").size(), size_t(1), 3000);
        QTRY_VERIFY_WITH_TIMEOUT(pestNames() != pestsBefore, 5000);
        QCOMPARE(calendar()->currentPeriod, other);
        QTRY_COMPARE(pictureSide(otherRow), farms::ProductDetailViewController::periodPictureSide() + 10);
        QCOMPARE(pictureSide(currentRow), farms::ProductDetailViewController::periodPictureSide());
        QTest::qWait(900);
        screenshot(QStringLiteral("calendar-wheat-other-period"));

        // Closed: the home appears again and its card names the new period. The sugar beet's farm
        // opens its period's document instead.
        const QString otherName = calendar()->arrPeriods.at(otherRow).toObject().value("name").toString();
        tapItem(window(), itemNamed(window(), "btnCancel"));
        QTRY_VERIFY(!calendar());
        QTRY_COMPARE_WITH_TIMEOUT(cells("FarmCell").at(0)->property("content").toMap().value("lblPeriod").toString(),
                                  otherName, 5000);
        tapItem(window(), cells("FarmCell").at(1));
        QTRY_VERIFY_WITH_TIMEOUT(document(), 3000);
        QVERIFY(document()->navBar->text().startsWith(QStringLiteral("Şeker Pancarı - ")));
        QVERIFY(document()->webViewDocument->url().toString().endsWith(".pdf"));
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 20000);
        QTest::qWait(1200); // the viewer draws the pages
        screenshot(QStringLiteral("document-sugar-beet"));
        tapItem(window(), itemNamed(window(), "close"));
        QTRY_VERIFY(!document());

        // A third farm: crop and size in the panel, then the list is full.
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
        tapUntilShown("NewFarmCell", "viewNewProduce");
        tapUntilShown("openPlantsView", "viewPlant");
        screenshot(QStringLiteral("home-crop-list"));
        QQuickItem* maize = nullptr;
        for (QQuickItem* cell : cells("PlantCell"))
            if (cell->property("content").toMap().value("lblPlantName").toString() == QStringLiteral("Mısır")) maize = cell;
        QVERIFY(maize);
        tapUntilGone(maize, "viewPlant");
        QCOMPARE(itemsNamed(itemNamed(window(), "viewNewProduce"), "lblFarm").first()->property("text").toString(), QStringLiteral("Mısır"));
        typeInto("txtFarmSize", "25");
        screenshot(QStringLiteral("home-new-farm"));
        tapUntilGone("btnNewProduce", "viewNewProduce");
        QTRY_COMPARE_WITH_TIMEOUT(cells("FarmCell").size(), 3, 5000);
        QVERIFY(!itemNamed(window(), "NewFarmCell"));
        QVERIFY(itemNamed(window(), "lblProductAlert"));
        screenshot(QStringLiteral("home-three-farms"));
    }

    void clubMemberIsInvitedInHisFirstRunsOnly() {
        startApp();
        signIn(server::accounts::demoAccount("loyalty").phone);
        // First run: the invitation.
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "alert"), 5000);
        QQuickItem* alert = itemNamed(window(), "alert");
        QCOMPARE(alert->property("title").toString(), QStringLiteral("Bilgilendirme"));
        QCOMPARE(alert->property("message").toString(), QStringLiteral("Bereket Kulübümüz başladı, tıklayın, siz de kazanın!"));
        const auto buttons = itemsNamed(alert, "alertButton");
        QCOMPARE(buttons.size(), 2);
        QCOMPARE(buttons.at(0)->property("text").toString(), QStringLiteral("Bereket Kulübü"));
        QCOMPARE(buttons.at(1)->property("text").toString(), QStringLiteral("Kapat"));
        screenshot(QStringLiteral("home-club-invitation"));
        dismissAlert(1);

        // Second run, on the stored session: once more.
        restartApp();
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "alert"), 5000);
        dismissAlert(1);

        // Third run: the home and his vineyard, no invitation.
        const size_t profilesBefore = sent("farmer/profile").size();
        restartApp();
        QTRY_VERIFY_WITH_TIMEOUT(sent("farmer/profile").size() > profilesBefore, 5000);
        QTRY_COMPARE_WITH_TIMEOUT(cells("FarmCell").size(), 1, 5000);
        QTest::qWait(500);
        QVERIFY(!itemNamed(window(), "alert"));
        QCOMPARE(app->platform().defaults().stringForKey("libStat"), QStringLiteral("0"));
        screenshot(QStringLiteral("home-club-member-third-run"));

        // The home's menu button is on screen by its name and opens the side menu.
        QQuickItem* menuBtn = itemNamed(window(), "menuBtn");
        QVERIFY(menuBtn && menuBtn->isVisible());
        tapItem(window(), menuBtn);
        QTRY_VERIFY(root()->isMenuVisible());
        QTest::qWait(400);
        screenshot(QStringLiteral("home-menu-open"));
    }

private:
    // No picture of the scene still loading.
    static int loadingPictures(QQuickItem* item) {
        int n = item->isVisible() && item->inherits("QQuickImage") && item->property("status").toInt() == 2 ? 1 : 0;
        for (QQuickItem* child : item->childItems()) n += loadingPictures(child);
        return n;
    }
    void screenshot(const QString& name) {
        QTRY_COMPARE_WITH_TIMEOUT(loadingPictures(window()->contentItem()), 0, 5000);
        QTest::qWait(300);
        saveScreenshot(window(), name);
    }

    farms::ProductDetailViewController* calendar() const { return presented<farms::ProductDetailViewController>(); }
    farms::DocumentViewController* document() const { return presented<farms::DocumentViewController>(); }

    int periodRow(int id) const {
        const QJsonArray& periods = calendar()->arrPeriods;
        for (int i = 0; i < periods.size(); ++i)
            if (periods.at(i).toObject().value("id").toInt() == id) return i;
        return -1;
    }
    QQuickItem* periodCellItem(int row) const {
        for (QQuickItem* cell : cells("PeriodCell"))
            if (cell->property("row").toInt() == row) return cell;
        return nullptr;
    }
    double pictureSide(int row) const {
        QQuickItem* cell = periodCellItem(row);
        const auto pictures = cell ? itemsNamed(cell, "imgPeriod") : QList<QQuickItem*>{};
        return pictures.isEmpty() ? -1 : pictures.first()->width();
    }
    QStringList pestNames() const {
        QStringList names;
        for (auto* c : {calendar()->collYabanciOtlar, calendar()->collZararliCanlilar, calendar()->collHastaliklar})
            for (auto* cell : c->visibleCells()) names << static_cast<farms::PestsCollectionViewCell*>(cell)->lblTitle->text();
        return names;
    }

};

EKINORA_GUI_TEST_MAIN(HomeEndToEnd)
#include "tst_home_e2e.moc"
