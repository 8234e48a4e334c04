// What a first start leaves in the store, what the service sees, and the maintenance alert.

#include "EndToEnd.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSettings>

using namespace ekinora;
using namespace ekinora::testing;

namespace {

int indexOf(const std::vector<server::RecordedRequest>& requests, const std::string& path, const std::string& target = {}) {
    for (size_t i = 0; i < requests.size(); ++i)
        if (requests[i].path == path && (target.empty() || requests[i].target == target)) return int(i);
    return -1;
}

} // namespace

class StartEndToEnd : public EndToEnd {
    Q_OBJECT
private slots:
    void init() { startService(); }
    void cleanup() { stopAll(); }

    void firstStartSeedsTheStoreAndAsksTheService() {
        startApp();
        // maintenance at once, the probe at two seconds.
        QTRY_VERIFY_WITH_TIMEOUT(indexOf(service->requests(), "/check") >= 0, 6000);
        const auto requests = service->requests();
        const int maintenance = indexOf(requests, "/api/", "/api/?do=maintenance&do=maintenance");
        const int probe = indexOf(requests, "/check");
        QVERIFY2(maintenance >= 0, "maintenance was not sent with do twice");
        QVERIFY(maintenance < probe);
        QVERIFY(headerOf(requests[size_t(maintenance)], "Authorization").isNull());
        QCOMPARE(headerOf(requests[size_t(probe)], "Authorization"), QStringLiteral("Bearer (null)"));

        // The store file, as a fresh reader sees it.
        app->platform().defaults().synchronize();
        QSettings ini(settings->filePath("store.ini"), QSettings::IniFormat);
        QCOMPARE(ini.value("appVersion").toString(), Ekinora::version());
        QVERIFY(QDateTime::fromString(ini.value("menuItemCounter").toString(), "yyyy-MM-dd HH:mm:ss").isValid());
        QCOMPARE(ini.value("libStat").toString(), QStringLiteral("3"));
        const QJsonArray keys = QJsonDocument::fromJson(ini.value("weatherKeys").toString().toUtf8()).array();
        QCOMPARE(keys.size(), 5);
        const QStringList order{"weatherCondition", "temperature", "precipitation", "windspeed", "winddirection"};
        for (int i = 0; i < 5; ++i) QCOMPARE(keys.at(i).toObject().keys().value(0), order[i]);
        QCOMPARE(keys.at(1).toObject().value("temperature").toString(), QStringLiteral("Sıcaklık"));

        // No one is logged in: no popup and no alert on screen.
        QVERIFY(!itemNamed(window(), "alert"));
        QVERIFY(!answered("do=popup"));
        saveScreenshot(window(), QStringLiteral("start-shell"));
    }

    // Before any test that shows a web view: the engine, once loaded, stays for the process.
    void firstStartKeepsTheSplashOverTheSignInAndNoWebEngine() {
        startApp();
        // The home hands over to the sign-in at once; the splash stays over it until a second later.
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "txtLoginPhone"), 5000);
        QQuickItem* splash = itemNamed(window(), "imgLoading");
        QVERIFY(splash);
        QVERIFY(splash->z() > 0);
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "imgLoading"), 5000);
        QVERIFY(itemNamed(window(), "txtLoginPhone"));
        // The sign-in's texts are in their views' models, and no web view is on screen: no engine.
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
        QFile maps(QStringLiteral("/proc/self/maps"));
        QVERIFY(maps.open(QIODevice::ReadOnly));
        QVERIFY(!maps.readAll().contains("libQt6WebEngineCore"));
    }

    void maintenanceAlertEndsTheProcessWithZero() {
        service->setMaintenance(true, "Planlı bakım nedeniyle hizmet veremiyoruz.");
        startApp();
        QList<int> endings;
        app->platform().application().setEnding([&](int code) { endings << code; });
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "alert"), 5000);
        QQuickItem* alert = itemNamed(window(), "alert");
        QCOMPARE(alert->property("title").toString(), QStringLiteral("Bilgilendirme"));
        QCOMPARE(alert->property("message").toString(), QStringLiteral("Planlı bakım nedeniyle hizmet veremiyoruz."));
        const auto buttons = itemsNamed(alert, "alertButton");
        QCOMPARE(buttons.size(), 1);
        QCOMPARE(buttons.first()->property("text").toString(), QStringLiteral("Tamam"));
        shoot(QStringLiteral("maintenance-alert"));
        tapItem(window(), buttons.first());
        QTRY_COMPARE(endings, QList<int>{0});
    }

    void probeDownEndsTheProcessWithTwo() {
        service->setProbeDown(true, "Sunucuya şu anda ulaşılamıyor.");
        startApp();
        QList<int> endings;
        app->platform().application().setEnding([&](int code) { endings << code; });
        QTRY_COMPARE_WITH_TIMEOUT(alertText(), QStringLiteral("Sunucuya şu anda ulaşılamıyor."), 6000);
        tapItem(window(), itemsNamed(itemNamed(window(), "alert"), "alertButton").first());
        QTRY_COMPARE(endings, QList<int>{2});
    }

    void firstStartWithoutNetworkStillSeedsAndShowsNoAlert() {
        // A logout whose request failed before the last run ended left its mark behind.
        QSettings(settings->filePath("store.ini"), QSettings::IniFormat).setValue("isLogout", "YES");
        startApp({}, QStringLiteral("http://127.0.0.1:9"));
        QTRY_VERIFY(itemNamed(window(), "LoginViewController"));
        QVERIFY(!itemNamed(window(), "viewLogout")); // no farewell on a fresh start
        QTest::qWait(2500); // past both checks
        QVERIFY(!itemNamed(window(), "alert"));
        app->platform().defaults().synchronize();
        QSettings ini(settings->filePath("store.ini"), QSettings::IniFormat);
        QCOMPARE(ini.value("libStat").toString(), QStringLiteral("3"));
        QVERIFY(ini.contains("weatherKeys"));
        QVERIFY(!ini.contains("isLogout"));
        QVERIFY(!ini.contains("notifToken")); // the desktop has no push service
    }

    void signedInFarmerSeesTheCampaignAtTheNextPollAndClosesIt() {
        // A farmer signed in on an earlier run: his record and token are in the store.
        const auto& farmer = server::accounts::demoAccount("farmer");
        {
            QSettings ini(settings->filePath("store.ini"), QSettings::IniFormat);
            ini.setValue("token", QString::fromStdString(farmer.token));
            ini.setValue("userInfo", QStringLiteral("{\"type\":\"farmer\",\"token\":\"%1\"}").arg(QString::fromStdString(farmer.token)));
        }
        service->setPopupActive(true);
        startApp();
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "PopupViewController"), 15000);
        QQuickItem* title = itemNamed(window(), "lblTitle");
        QVERIFY(title);
        QVERIFY(!title->property("text").toString().isEmpty());
        // The indicator goes half a second after the body has loaded; then the card can be closed.
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 15000);
        shoot(QStringLiteral("campaign-popup"));
        tapUntilGone("closePopup", "PopupViewController");
        const auto polls = requestsWith("do=popup");
        QVERIFY(!polls.empty());
        for (const auto& r : polls)
            QCOMPARE(headerOf(r, "Authorization"), QStringLiteral("Bearer ") + QString::fromStdString(farmer.token));
    }

};

EKINORA_GUI_TEST_MAIN(StartEndToEnd)
#include "tst_start_e2e.moc"
