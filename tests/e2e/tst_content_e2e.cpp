// The content feeds end to end: the real application in-process, offscreen, against the real reference
// service, driven through the object contract as a farmer would.

#include "EndToEnd.h"
#include "accounts/DemoAccounts.h"
#include "core/Server.h"
#include "events/EventDetailViewController.h"
#include "platform/NavigationController.h"
#include "platform/Platform.h"
#include "platform/SideMenuViewController.h"
#include "videos/DeviceOrientation.h"

#include <QTest>

using namespace ekinora;
using namespace ekinora::testing;

class ContentEndToEnd : public EndToEnd {
    Q_OBJECT
private slots:
    void init() {
        startService();
        startApp();
        signIn(server::accounts::demoAccount("farmer").phone);
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "presentLeftMenuViewController"), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
    }
    void cleanup() { stopAll(); }

    void newsPagesAndOpens() {
        openMenu("Haberler", "NewsViewController");
        QTRY_COMPARE_WITH_TIMEOUT(listCount("tblNews"), 6, 5000);
        QTest::qWait(500);
        saveScreenshot(window(), QStringLiteral("news-list"));
        // Flicks to the end of the list until the service has no more.
        for (int i = 0; i < 8 && listCount("tblNews") < 14; ++i) {
            flickUp("tblNews");
            QTest::qWait(900);
        }
        QCOMPARE(listCount("tblNews"), 14);
        QTest::qWait(300);
        // The last card whose middle is inside the list: the list keeps cards beyond its edge too.
        QQuickItem* list = itemNamed(window(), "tblNews");
        const QRectF shown = list->mapRectToScene(QRectF(0, 0, list->width(), list->height()));
        QQuickItem* cell = nullptr;
        for (QQuickItem* c : itemsNamed(window()->contentItem(), "NewsCell"))
            if (shown.contains(c->mapToScene(QPointF(c->width() / 2, c->height() / 2)))) cell = c;
        QVERIFY(cell);
        const QString header = text(cell, "lblContent");
        tapItem(window(), cell);
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "NewsDetailViewController"), 5000);
        QTRY_COMPARE_WITH_TIMEOUT(itemNamed(window(), "lblTitle")->property("text").toString(), header, 5000);
        QTest::qWait(800);
        saveScreenshot(window(), QStringLiteral("news-detail"));
        tap("backButton");
        QTRY_VERIFY(!itemNamed(window(), "NewsDetailViewController"));
    }

    void eventFromTheSliderPageIsJoined() {
        openMenu("Etkinlikler", "EventViewController");
        QTRY_VERIFY_WITH_TIMEOUT(!itemsNamed(window()->contentItem(), "EventCell").isEmpty(), 5000);
        QVERIFY(itemNamed(window(), "slider"));
        QTest::qWait(800);
        saveScreenshot(window(), QStringLiteral("events-list"));
        QQuickItem* row = nullptr;
        for (QQuickItem* cell : itemsNamed(window()->contentItem(), "EventCell"))
            if (text(cell, "lblTitle") == QStringLiteral("Mısır Tarla Günü")) row = cell;
        QVERIFY(row);
        tapItem(window(), row);
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "EventDetailViewController"), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "btnAccept"), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 15000);
        tap("btnAccept");
        auto* detail = qobject_cast<events::EventDetailViewController*>(content()->topViewController());
        QVERIFY(detail);
        QTRY_COMPARE_WITH_TIMEOUT(detail->btnAccept->image(), QStringLiteral("check"), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 15000);
        QTest::qWait(500);
        saveScreenshot(window(), QStringLiteral("events-joined"));
        // Back on the list, the answer shows.
        tap("backButton");
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "EventDetailViewController"), 5000);
    }

    void legalPagesAndTheGuide() {
        openMenu("Bilgilendirme", "InfoViewController");
        QTRY_COMPARE_WITH_TIMEOUT(itemsNamed(window()->contentItem(), "InfoCell").size(), 3, 5000);
        saveScreenshot(window(), QStringLiteral("info-list"));
        const QStringList names{QStringLiteral("Genel Kullanım Şartları"),
                                QStringLiteral("Kişisel Verilerin Korunması ve İşlenmesi Aydınlatma Metni"),
                                QStringLiteral("Yarışma Şart ve Koşullar")};
        for (int i = 0; i < 3; ++i) {
            tapItem(window(), itemsNamed(window()->contentItem(), "InfoCell").at(i));
            QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "InfoDetailViewController"), 5000);
            QTRY_COMPARE_WITH_TIMEOUT(itemNamed(window(), "navBar")->property("text").toString(), names.at(i), 5000);
            QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 20000);
            QTest::qWait(300);
            saveScreenshot(window(), QStringLiteral("info-page-%1").arg(i + 1));
            tap("close");
            QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "InfoDetailViewController"), 5000);
        }
        tap("openSiteGuide");
        QTRY_COMPARE_WITH_TIMEOUT(itemsNamed(window()->contentItem(), "HeaderCell1").size(), 2, 5000);
        tapItem(window(), itemsNamed(window()->contentItem(), "ButtonToShowHide").at(1));
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "textLabel"), 5000);
        QVERIFY(itemNamed(window(), "textLabel")->property("text").toString().contains(QStringLiteral("Üç kez")) ||
                itemNamed(window(), "textLabel")->property("text").toString().contains(QStringLiteral("orijinal ambalaj")));
        QTest::qWait(300);
        saveScreenshot(window(), QStringLiteral("info-guide"));
        tap("closeButtonTapped");
    }

    void videoPlaysAndComesBackInPortrait() {
        auto& device = videos::DeviceOrientation::current();
        openMenu("Videolar", "VideoViewController");
        QTRY_COMPARE_WITH_TIMEOUT(listCount("tblVideo"), 4, 5000);
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
        QTest::qWait(500);
        saveScreenshot(window(), QStringLiteral("videos-list"));
        tapItem(window(), itemsNamed(window()->contentItem(), "VideoCell").first());
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "PlayerViewController"), 5000);
        QVERIFY(device.interfaceIsLandscape());
        QTRY_COMPARE_WITH_TIMEOUT(itemNamed(window(), "playbackState")->property("text").toString(), QStringLiteral("Oynatılıyor"), 8000);
        QCOMPARE(itemNamed(window(), "playerStage")->rotation(), 90.0);
        QTest::qWait(1000);
        saveScreenshot(window(), QStringLiteral("videos-playing"));
        // At the end: portrait while the player is still up.
        QTRY_VERIFY_WITH_TIMEOUT(!device.interfaceIsLandscape(), 10000);
        QCOMPARE(app->platform().application().supportedInterfaceOrientations(), 2);
        QTRY_COMPARE(itemNamed(window(), "playerStage")->rotation(), 0.0);
        saveScreenshot(window(), QStringLiteral("videos-ended"));
        tap("close");
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "PlayerViewController"), 5000);
        // Back on the list, still in portrait.
        QCOMPARE(app->platform().application().supportedInterfaceOrientations(), 2);
    }

private:
    void openMenu(const QString& label, const char* screen) {
        tapItem(window(), itemNamed(window(), "presentLeftMenuViewController"));
        QTRY_VERIFY(root()->isMenuVisible());
        QTest::qWait(400);
        QQuickItem* row = nullptr;
        for (QQuickItem* cell : itemsNamed(window()->contentItem(), "Cell"))
            if (cell->property("content").toMap().value("text").toString() == label) row = cell;
        QVERIFY2(row, qPrintable(label));
        // The lower rows of the menu are scrolled into view first.
        QQuickItem* menu = row->parentItem();
        while (menu && menu->objectName() != QStringLiteral("tableView")) menu = menu->parentItem();
        QVERIFY(menu);
        QMetaObject::invokeMethod(menu, "positionViewAtIndex", Q_ARG(int, row->property("row").toInt()), Q_ARG(int, 2));
        QTest::qWait(200);
        tapItem(window(), row);
        QTRY_VERIFY_WITH_TIMEOUT(!root()->isMenuVisible(), 5000);
        QTest::qWait(400);
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), screen), 5000);
    }
    int listCount(const char* list) const {
        QQuickItem* view = itemNamed(window(), list);
        return view ? view->property("count").toInt() : -1;
    }
    // A quick upward drag in the list's middle that leaves it coasting.
    void flickUp(const char* list) {
        QQuickItem* view = itemNamed(window(), list);
        const QPoint start = view->mapToScene(QPointF(view->width() / 2, view->height() * 0.8)).toPoint();
        QTest::mousePress(window(), Qt::LeftButton, Qt::NoModifier, start);
        for (int step = 1; step <= 8; ++step) {
            QTest::mouseMove(window(), start - QPoint(0, step * 50), 8);
        }
        QTest::mouseRelease(window(), Qt::LeftButton, Qt::NoModifier, start - QPoint(0, 400), 8);
    }
    static QString text(QQuickItem* within, const char* name) {
        const auto found = within ? itemsNamed(within, name) : QList<QQuickItem*>{};
        return found.isEmpty() ? QString() : found.first()->property("text").toString();
    }
};

EKINORA_GUI_TEST_MAIN(ContentEndToEnd)
#include "tst_content_e2e.moc"
