// The store's keys between runs: the logout reset, the invitation countdown and the user record.

#include "FakePlatform.h"
#include "service/LocalStore.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTest>

using namespace ekinora;
using namespace ekinora::service;
using namespace ekinora::testing;

class LocalStoreTest : public QObject {
    Q_OBJECT
private slots:
    void init() { fake = new FakePlatform; }
    void cleanup() { delete fake; }

    void logoutResetsOnlyTheSessionAndTheFavourites() {
        auto& s = *fake->store;
        for (const QString& key : {StoreKey::NotifToken, StoreKey::HashCode, StoreKey::AppVersion, StoreKey::MenuItemCounter,
                                   StoreKey::LibStat, StoreKey::MaizeCanola, StoreKey::TransactionId, StoreKey::Token})
            s.setString(key, QStringLiteral("v"));
        s.setJson(StoreKey::UserInfo, QJsonObject{{"type", "farmer"}});
        s.setJson(StoreKey::WeatherKeys, QJsonArray{QJsonObject{{"temperature", "Sıcaklık"}}});

        LocalStore::logoutReset();

        QVERIFY(!s.contains(StoreKey::Token));
        QVERIFY(!s.contains(StoreKey::UserInfo));
        QCOMPARE(s.stringForKey(StoreKey::IsLogout), QStringLiteral("YES"));
        QCOMPARE(s.jsonForKey(StoreKey::WeatherKeys).toArray(), LocalStore::defaultWeatherKeys());
        for (const QString& key : {StoreKey::NotifToken, StoreKey::HashCode, StoreKey::AppVersion, StoreKey::MenuItemCounter,
                                   StoreKey::LibStat, StoreKey::MaizeCanola, StoreKey::TransactionId})
            QCOMPARE(s.stringForKey(key), QStringLiteral("v"));
    }

    void libStatCountsDownAcrossRunsAndStopsAtZero() {
        auto& s = *fake->store;
        LocalStore::stepLibStatAtStart(); // first run
        QCOMPARE(s.stringForKey(StoreKey::LibStat), QStringLiteral("3"));
        QVERIFY(LocalStore::stepLibStatAtHome()); // invitation, "3" to "2"
        QCOMPARE(s.stringForKey(StoreKey::LibStat), QStringLiteral("2"));
        LocalStore::stepLibStatAtStart(); // second run
        QCOMPARE(s.stringForKey(StoreKey::LibStat), QStringLiteral("1"));
        QVERIFY(LocalStore::stepLibStatAtHome()); // invitation again, "1" to "0"
        LocalStore::stepLibStatAtStart(); // third run
        QCOMPARE(s.stringForKey(StoreKey::LibStat), QStringLiteral("0"));
        QVERIFY(!LocalStore::stepLibStatAtHome());
        QCOMPARE(s.stringForKey(StoreKey::LibStat), QStringLiteral("0"));
        // Anything unexpected is left as it is.
        s.setString(StoreKey::LibStat, QStringLiteral("9"));
        LocalStore::stepLibStatAtStart();
        QVERIFY(!LocalStore::stepLibStatAtHome());
        QCOMPARE(s.stringForKey(StoreKey::LibStat), QStringLiteral("9"));
    }

    void anAbsentRecordMeansNobodyIsLoggedIn() {
        QVERIFY(LocalStore::userInfo().isUndefined());
        QVERIFY(LocalStore::token().isNull());
    }

private:
    FakePlatform* fake = nullptr;
};

QTEST_GUILESS_MAIN(LocalStoreTest)
#include "tst_local_store.moc"
