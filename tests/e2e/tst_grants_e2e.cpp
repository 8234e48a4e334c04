// Grant search and market prices, as a farmer uses them.

#include "EndToEnd.h"
#include "grants/GrantDocDetailViewController.h"
#include "market/FarmingStockViewController.h"

using namespace ekinora;
using namespace ekinora::testing;

class GrantsEndToEnd : public EndToEnd {
    Q_OBJECT
private slots:
    void init() { startService(); }
    void cleanup() { stopAll(); }

    void wheatInCumraToADocumentByMail() {
        startAppRecordingUrls();
        signInAs("farmer");
        openMenu(QStringLiteral("Hibe Destek"), "GrantViewController");
        // The farmer's own county is there; only the crop is chosen.
        QTRY_COMPARE_WITH_TIMEOUT(textOf("btnCity"), QStringLiteral("Konya"), 5000);
        QCOMPARE(textOf("btnCounty"), QStringLiteral("Çumra"));
        QCOMPARE(textOf("btnProduct"), QStringLiteral("Ürün Seçiniz"));
        tap("btnProduct");
        shoot(QStringLiteral("grants-crops"), 600);
        tapListRow(QStringLiteral("Buğday"));
        QTRY_COMPARE(textOf("btnProduct"), QStringLiteral("Buğday"));
        QTest::qWait(700); // the list rolls up over the search button
        tap("getGrants");
        QTRY_VERIFY_WITH_TIMEOUT(cells("GrantCell").size() >= 3, 5000);
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
        QVERIFY(textOf(cells("GrantCell").first(), "lblDate").startsWith(QStringLiteral("  Son Başvuru Tarihi: ")));
        saveScreenshot(window(), QStringLiteral("grants-found"));

        QQuickItem* irrigation = nullptr;
        for (QQuickItem* cell : cells("GrantCell"))
            if (textOf(cell, "lblTitle").contains(QStringLiteral("Basınçlı Sulama"))) irrigation = cell;
        QVERIFY(irrigation);
        // The third card shows its head above the bottom edge: a farmer taps what he sees.
        QTest::mouseClick(window(), Qt::LeftButton, Qt::NoModifier, irrigation->mapToScene(QPointF(irrigation->width() / 2, 20)).toPoint());
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "GrantDetailViewController"), 5000);
        shoot(QStringLiteral("grants-detail"), 400);
        tap("showDocs");
        QTRY_COMPARE_WITH_TIMEOUT(cells("GrantDocCell").size(), 3, 5000);
        shoot(QStringLiteral("grants-documents"), 400);

        tapItem(window(), cells("GrantDocCell").first());
        QTRY_VERIFY_WITH_TIMEOUT(document(), 3000);
        QCOMPARE(document()->navBar->text(), QStringLiteral("Başvuru Formu"));
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 20000);
        shoot(QStringLiteral("grants-pdf"), 1200); // the viewer draws the pages

        tapUntilShown("sendMail", "MailComposeViewController");
        const std::string email = "hasan.dogru@ornek.com.tr";
        QCOMPARE(itemNamed(window(), "lblRecipients")->property("text").toString(), QString::fromStdString(email));
        QCOMPARE(itemNamed(window(), "lblAttachment")->property("text").toString(), QStringLiteral("grantdoc.pdf"));
        auto* composer = qobject_cast<grants::MailComposeViewController*>(document()->presentedViewController());
        QVERIFY(composer && composer->attachmentData().startsWith("%PDF-1."));
        shoot(QStringLiteral("grants-mail"));
        tapUntilGone("send", "MailComposeViewController");
        QCOMPARE(opened.size(), 1);
        QCOMPARE(opened.first().toString(), QString::fromStdString("mailto:" + email));
        tap("close");
        QTRY_VERIFY(!document());
    }

    void pricesFromTheHomeBySourceGroupAndPlace() {
        startApp();
        signInAs("farmer");
        tapUntilShown("openEventView", "FarmingStockViewController");
        QCOMPARE(topIdentifier(), QStringLiteral("farmingStockVC"));
        QTRY_VERIFY_WITH_TIMEOUT(cells("StockCell").size() >= 5, 5000);
        QCOMPARE(textOf(cells("StockCell").first(), "lblName"), QStringLiteral("Domates"));
        shoot(QStringLiteral("market-produce"), 500);

        tap("btnStockB");
        QTRY_COMPARE_WITH_TIMEOUT(textOf(cells("StockCell").value(0), "lblName"), QStringLiteral("Buğday"), 5000);
        QVERIFY(textOf(cells("StockCell").first(), "lblLowest").endsWith(QStringLiteral(" TL")));
        // Kept to the farmer's city, hazelnuts have no price there.
        tap("switchLocation");
        auto* stock = qobject_cast<market::FarmingStockViewController*>(content()->topViewController());
        QVERIFY(stock);
        QTRY_COMPARE_WITH_TIMEOUT(stock->paramLocationType, 1, 3000);
        const int last = stock->tblStocks->numberOfRows() - 1;
        QTRY_COMPARE_WITH_TIMEOUT(stock->tblStocks->cellForRow(last).values.value("lblLocation").toString(),
                                  QStringLiteral("Fiyat bilgisi yok"), 5000);
        QCOMPARE(stock->tblStocks->cellForRow(last).values.value("lblName").toString(), QStringLiteral("Fındık"));
        tap("btnFilter");
        shoot(QStringLiteral("market-groups"), 600);
        tapListRow(QStringLiteral("Baklagiller"));
        QTest::qWait(700);
        QTRY_COMPARE_WITH_TIMEOUT(cells("StockCell").size(), 2, 5000);
        QCOMPARE(textOf(cells("StockCell").at(0), "lblName"), QStringLiteral("Nohut"));
        QCOMPARE(textOf(cells("StockCell").at(1), "lblLocation"), QStringLiteral("Konya"));
        shoot(QStringLiteral("market-pulses-konya"), 500);

        tapUntilShown(cells("StockCell").at(0), "FSDetailViewController");
        QCOMPARE(content()->topTitle(), QStringLiteral("Nohut"));
        QTRY_COMPARE_WITH_TIMEOUT(cells("StockCell").size(), 8, 5000); // two varieties in four cities
        QVERIFY(textOf(cells("StockCell").first(), "lblName").startsWith(QStringLiteral("Nohut - ")));
        QVERIFY(QRegularExpression(QStringLiteral("^Konya \\| \\d\\d\\.\\d\\d\\.\\d{4}$"))
                    .match(textOf(cells("StockCell").first(), "lblLocation")).hasMatch());
        shoot(QStringLiteral("market-detail"), 500);
    }

private:
    // A row of the open drop-down list, by its title.
    void tapListRow(const QString& title) {
        QQuickItem* found = nullptr;
        QTRY_VERIFY_WITH_TIMEOUT(!cells("Cell").isEmpty(), 3000);
        for (QQuickItem* cell : cells("Cell"))
            if (cell->property("title").toString() == title) found = cell;
        QVERIFY2(found, qPrintable(title));
        tapItem(window(), found);
    }
    grants::GrantDocDetailViewController* document() const {
        return presented<grants::GrantDocDetailViewController>();
    }
};

EKINORA_GUI_TEST_MAIN(GrantsEndToEnd)
#include "tst_grants_e2e.moc"
