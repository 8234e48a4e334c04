// The news, events, legal pages and videos as a farmer reads them.

#include "EndToEnd.h"
#include "events/EventDetailViewController.h"
#include "videos/DeviceOrientation.h"

using namespace ekinora;
using namespace ekinora::testing;

class ContentEndToEnd : public EndToEnd {
    Q_OBJECT
private slots:
    void init() {
        startService();
        startApp();
        signInAs("farmer");
    }
    void cleanup() { stopAll(); }

    void newsPagesAndOpens() {
        openMenu("Haberler", "NewsViewController");
        QTRY_COMPARE_WITH_TIMEOUT(listCount("tblNews"), 6, 5000);
        shoot(QStringLiteral("news-list"), 500);
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
        for (QQuickItem* c : cells("NewsCell"))
            if (shown.contains(c->mapToScene(QPointF(c->width() / 2, c->height() / 2)))) cell = c;
        QVERIFY(cell);
        const QString header = textOf(cell, "lblContent");
        tapUntilShown(cell, "NewsDetailViewController");
        QTRY_COMPARE_WITH_TIMEOUT(itemNamed(window(), "lblTitle")->property("text").toString(), header, 5000);
        shoot(QStringLiteral("news-detail"), 800);
        tapUntilGone("backButton", "NewsDetailViewController");
    }

    void eventFromTheSliderPageIsJoined() {
        openMenu("Etkinlikler", "EventViewController");
        QTRY_VERIFY_WITH_TIMEOUT(!cells("EventCell").isEmpty(), 5000);
        QVERIFY(itemNamed(window(), "slider"));
        shoot(QStringLiteral("events-list"), 800);
        QQuickItem* row = nullptr;
        for (QQuickItem* cell : cells("EventCell"))
            if (textOf(cell, "lblTitle") == QStringLiteral("Mısır Tarla Günü")) row = cell;
        QVERIFY(row);
        tapUntilShown(row, "EventDetailViewController");
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "btnAccept"), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 15000);
        tap("btnAccept");
        auto* detail = qobject_cast<events::EventDetailViewController*>(content()->topViewController());
        QVERIFY(detail);
        QTRY_COMPARE_WITH_TIMEOUT(detail->btnAccept->image(), QStringLiteral("check"), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 15000);
        shoot(QStringLiteral("events-joined"), 500);
        tapUntilGone("backButton", "EventDetailViewController");
    }

    void legalPagesAndTheGuide() {
        openMenu("Bilgilendirme", "InfoViewController");
        QTRY_COMPARE_WITH_TIMEOUT(cells("InfoCell").size(), 3, 5000);
        saveScreenshot(window(), QStringLiteral("info-list"));
        const QStringList names{QStringLiteral("Genel Kullanım Şartları"),
                                QStringLiteral("Kişisel Verilerin Korunması ve İşlenmesi Aydınlatma Metni"),
                                QStringLiteral("Yarışma Şart ve Koşullar")};
        for (int i = 0; i < 3; ++i) {
            tapUntilShown(cells("InfoCell").at(i), "InfoDetailViewController");
            QTRY_COMPARE_WITH_TIMEOUT(itemNamed(window(), "navBar")->property("text").toString(), names.at(i), 5000);
            QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 20000);
            shoot(QStringLiteral("info-page-%1").arg(i + 1));
            tapUntilGone("close", "InfoDetailViewController");
        }
        tap("openSiteGuide");
        QTRY_COMPARE_WITH_TIMEOUT(cells("HeaderCell1").size(), 2, 5000);
        tapUntilShown(cells("ButtonToShowHide").at(1), "textLabel");
        QVERIFY(textOf("textLabel").contains(QStringLiteral("Üç kez")) ||
                textOf("textLabel").contains(QStringLiteral("orijinal ambalaj")));
        shoot(QStringLiteral("info-guide"));
        tap("closeButtonTapped");
    }

    void videoPlaysAndComesBackInPortrait() {
        auto& device = videos::DeviceOrientation::current();
        openMenu("Videolar", "VideoViewController");
        QTRY_COMPARE_WITH_TIMEOUT(listCount("tblVideo"), 4, 5000);
        shootSettled(QStringLiteral("videos-list"), 500);
        tapUntilShown(cells("VideoCell").first(), "PlayerViewController");
        QVERIFY(device.interfaceIsLandscape());
        QTRY_COMPARE_WITH_TIMEOUT(itemNamed(window(), "playbackState")->property("text").toString(), QStringLiteral("Oynatılıyor"), 8000);
        QCOMPARE(itemNamed(window(), "playerStage")->rotation(), 90.0);
        shoot(QStringLiteral("videos-playing"), 1000);
        // At the end: portrait while the player is still up.
        QTRY_VERIFY_WITH_TIMEOUT(!device.interfaceIsLandscape(), 10000);
        QCOMPARE(app->platform().application().supportedInterfaceOrientations(), 2);
        QTRY_COMPARE(itemNamed(window(), "playerStage")->rotation(), 0.0);
        saveScreenshot(window(), QStringLiteral("videos-ended"));
        tapUntilGone("close", "PlayerViewController");
        // Back on the list, still in portrait.
        QCOMPARE(app->platform().application().supportedInterfaceOrientations(), 2);
    }

private:
    int listCount(const char* list) const {
        QQuickItem* view = itemNamed(window(), list);
        return view ? view->property("count").toInt() : -1;
    }
    // A quick upward drag in the list's middle that leaves it coasting.
    void flickUp(const char* list) {
        QQuickItem* view = itemNamed(window(), list);
        const QPoint start = view->mapToScene(QPointF(view->width() / 2, view->height() * 0.8)).toPoint();
        QTest::mousePress(window(), Qt::LeftButton, Qt::NoModifier, start);
        for (int step = 1; step <= 8; ++step) QTest::mouseMove(window(), start - QPoint(0, step * 50), 8);
        QTest::mouseRelease(window(), Qt::LeftButton, Qt::NoModifier, start - QPoint(0, 400), 8);
    }
};

EKINORA_GUI_TEST_MAIN(ContentEndToEnd)
#include "tst_content_e2e.moc"
