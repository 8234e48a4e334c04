// Grant search and market prices, end to end: the real application in-process, offscreen, against the
// real reference service, driven as a farmer would.

#include "EndToEnd.h"
#include "accounts/DemoAccounts.h"
#include "grants/GrantDocDetailViewController.h"
#include "market/FarmingStockViewController.h"

#include <QTest>

using namespace ekinora;
using namespace ekinora::testing;

class GrantsEndToEnd : public EndToEnd {
    Q_OBJECT
private slots:
    void init() { startService(); }
    void cleanup() { stopAll(); }

    void wheatInCumraToADocumentByMail() {
        QList<QUrl> opened;
        startApp([&](platform::Application& application) {
            application.setUrlChecker([](const QUrl&) { return true; });
            application.setUrlOpener([&](const QUrl& url) { opened << url; return true; });
        });
        signInToHome();
        openMenuItem(QStringLiteral("Hibe Destek"));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "GrantViewController"), 5000);
        // The farmer's own county is there; only the crop is chosen.
        QTRY_COMPARE_WITH_TIMEOUT(title("btnCity"), QStringLiteral("Konya"), 5000);
        QCOMPARE(title("btnCounty"), QStringLiteral("Çumra"));
        QCOMPARE(title("btnProduct"), QStringLiteral("Ürün Seçiniz"));
        tap("btnProduct");
        QTest::qWait(600);
        screenshot(QStringLiteral("grants-crops"));
        tapListRow(QStringLiteral("Buğday"));
        QTRY_COMPARE(title("btnProduct"), QStringLiteral("Buğday"));
        QTest::qWait(700); // the list rolls up over the search button
        tap("getGrants");
        QTRY_VERIFY_WITH_TIMEOUT(cells("GrantCell").size() >= 3, 5000);
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
        QVERIFY(text(cells("GrantCell").first(), "lblDate").startsWith(QStringLiteral("  Son Başvuru Tarihi: ")));
        screenshot(QStringLiteral("grants-found"));

        QQuickItem* irrigation = nullptr;
        for (QQuickItem* cell : cells("GrantCell"))
            if (text(cell, "lblTitle").contains(QStringLiteral("Basınçlı Sulama"))) irrigation = cell;
        QVERIFY(irrigation);
        // The third card shows its head above the bottom edge: a farmer taps what he sees.
        QTest::mouseClick(window(), Qt::LeftButton, Qt::NoModifier, irrigation->mapToScene(QPointF(irrigation->width() / 2, 20)).toPoint());
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "GrantDetailViewController"), 5000);
        QTest::qWait(400);
        screenshot(QStringLiteral("grants-detail"));
        tap("showDocs");
        QTRY_COMPARE_WITH_TIMEOUT(cells("GrantDocCell").size(), 3, 5000);
        QTest::qWait(400);
        screenshot(QStringLiteral("grants-documents"));

        tapItem(window(), cells("GrantDocCell").first());
        QTRY_VERIFY_WITH_TIMEOUT(document(), 3000);
        QCOMPARE(document()->navBar->text(), QStringLiteral("Başvuru Formu"));
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 20000);
        QTest::qWait(1200); // the viewer draws the pages
        screenshot(QStringLiteral("grants-pdf"));

        tap("sendMail");
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "MailComposeViewController"), 5000);
        const std::string email = "hasan.dogru@ornek.com.tr";
        QCOMPARE(itemNamed(window(), "lblRecipients")->property("text").toString(), QString::fromStdString(email));
        QCOMPARE(itemNamed(window(), "lblAttachment")->property("text").toString(), QStringLiteral("grantdoc.pdf"));
        auto* composer = qobject_cast<grants::MailComposeViewController*>(document()->presentedViewController());
        QVERIFY(composer && composer->attachmentData().startsWith("%PDF-1."));
        QTest::qWait(300);
        screenshot(QStringLiteral("grants-mail"));
        tap("send");
        QTRY_VERIFY(!itemNamed(window(), "MailComposeViewController"));
        QCOMPARE(opened.size(), 1);
        QCOMPARE(opened.first().toString(), QString::fromStdString("mailto:" + email));
        tap("close");
        QTRY_VERIFY(!document());
    }

    void pricesFromTheHomeBySourceGroupAndPlace() {
        startApp();
        signInToHome();
        tap("openEventView");
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "FarmingStockViewController"), 5000);
        QCOMPARE(topIdentifier(), QStringLiteral("farmingStockVC"));
        QTRY_VERIFY_WITH_TIMEOUT(cells("StockCell").size() >= 5, 5000);
        QCOMPARE(text(cells("StockCell").first(), "lblName"), QStringLiteral("Domates"));
        QTest::qWait(500);
        screenshot(QStringLiteral("market-produce"));

        tap("btnStockB");
        QTRY_COMPARE_WITH_TIMEOUT(text(cells("StockCell").value(0), "lblName"), QStringLiteral("Buğday"), 5000);
        QVERIFY(text(cells("StockCell").first(), "lblLowest").endsWith(QStringLiteral(" TL")));
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
        QTest::qWait(600);
        screenshot(QStringLiteral("market-groups"));
        tapListRow(QStringLiteral("Baklagiller"));
        QTest::qWait(700);
        QTRY_COMPARE_WITH_TIMEOUT(cells("StockCell").size(), 2, 5000);
        QCOMPARE(text(cells("StockCell").at(0), "lblName"), QStringLiteral("Nohut"));
        QCOMPARE(text(cells("StockCell").at(1), "lblLocation"), QStringLiteral("Konya"));
        QTest::qWait(500);
        screenshot(QStringLiteral("market-pulses-konya"));

        tapItem(window(), cells("StockCell").at(0));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "FSDetailViewController"), 5000);
        QCOMPARE(content()->topTitle(), QStringLiteral("Nohut"));
        QTRY_COMPARE_WITH_TIMEOUT(cells("StockCell").size(), 8, 5000); // two varieties in four cities
        QVERIFY(text(cells("StockCell").first(), "lblName").startsWith(QStringLiteral("Nohut - ")));
        QVERIFY(QRegularExpression(QStringLiteral("^Konya \\| \\d\\d\\.\\d\\d\\.\\d{4}$"))
                    .match(text(cells("StockCell").first(), "lblLocation")).hasMatch());
        QTest::qWait(500);
        screenshot(QStringLiteral("market-detail"));
    }

private:
    void signInToHome() {
        signIn(server::accounts::demoAccount("farmer").phone);
        QTRY_VERIFY_WITH_TIMEOUT(content() && content()->topViewController(), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "presentLeftMenuViewController"), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
    }
    void openMenuItem(const QString& label) {
        tap("presentLeftMenuViewController");
        QTRY_VERIFY(root()->isMenuVisible());
        QTest::qWait(400);
        QQuickItem* row = nullptr;
        for (QQuickItem* cell : cells("Cell"))
            if (cell->property("content").toMap().value("text").toString() == label) row = cell;
        QVERIFY(row);
        tapItem(window(), row);
        QTRY_VERIFY(!root()->isMenuVisible());
        QTest::qWait(400); // the content slides back
    }
    // A row of the open drop-down list, by its title.
    void tapListRow(const QString& title) {
        QQuickItem* found = nullptr;
        QTRY_VERIFY_WITH_TIMEOUT(!cells("Cell").isEmpty(), 3000);
        for (QQuickItem* cell : cells("Cell"))
            if (cell->property("title").toString() == title) found = cell;
        QVERIFY2(found, qPrintable(title));
        tapItem(window(), found);
    }
    QList<QQuickItem*> cells(const char* name) const { return itemsNamed(window()->contentItem(), name); }
    QString title(const char* button) const {
        QQuickItem* item = itemNamed(window(), button);
        return item ? item->property("text").toString() : QString();
    }
    static QString text(QQuickItem* within, const char* name) {
        const auto found = within ? itemsNamed(within, name) : QList<QQuickItem*>{};
        return found.isEmpty() ? QString() : found.first()->property("text").toString();
    }
    void screenshot(const QString& name) { saveScreenshot(window(), name); }
    grants::GrantDocDetailViewController* document() const {
        for (auto* c : app->platform().window().presentedControllers())
            if (auto* t = qobject_cast<grants::GrantDocDetailViewController*>(c)) return t;
        return nullptr;
    }
};

EKINORA_GUI_TEST_MAIN(GrantsEndToEnd)
#include "tst_grants_e2e.moc"
