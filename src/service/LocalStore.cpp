#include "LocalStore.h"

#include "platform/Platform.h"

namespace ekinora::service {

using namespace platform;

UserDefaults& LocalStore::defaults() { return Platform::current().defaults(); }

QJsonArray LocalStore::defaultWeatherKeys() {
    return QJsonArray{
        QJsonObject{{QStringLiteral("weatherCondition"), QString()}},
        QJsonObject{{QStringLiteral("temperature"), QStringLiteral("Sıcaklık")}},
        QJsonObject{{QStringLiteral("precipitation"), QStringLiteral("Yağış")}},
        QJsonObject{{QStringLiteral("windspeed"), QStringLiteral("Rüzgar hızı")}},
        QJsonObject{{QStringLiteral("winddirection"), QStringLiteral("Rüzgar yönü")}},
    };
}

QString LocalStore::token() { return defaults().stringForKey(StoreKey::Token); }

Json LocalStore::userInfo() { return defaults().jsonForKey(StoreKey::UserInfo); }

void LocalStore::setUserInfo(const Json& record) { defaults().setJson(StoreKey::UserInfo, record); }

void LocalStore::logoutReset() {
    UserDefaults& d = defaults();
    d.setJson(StoreKey::WeatherKeys, defaultWeatherKeys());
    d.removeObjectForKey(StoreKey::UserInfo);
    d.removeObjectForKey(StoreKey::Token);
    d.setString(StoreKey::IsLogout, QStringLiteral("YES"));
    d.synchronize();
}

namespace {
// "3" to "2", "2" to "1", "1" to "0"; a null text for anything else.
QString lower(const QString& value) {
    if (value == QLatin1String("3")) return QStringLiteral("2");
    if (value == QLatin1String("2")) return QStringLiteral("1");
    if (value == QLatin1String("1")) return QStringLiteral("0");
    return {};
}
} // namespace

void LocalStore::stepLibStatAtStart() {
    UserDefaults& d = defaults();
    if (!d.contains(StoreKey::LibStat)) {
        d.setString(StoreKey::LibStat, QStringLiteral("3"));
        return;
    }
    const QString next = lower(d.stringForKey(StoreKey::LibStat));
    if (!next.isNull()) d.setString(StoreKey::LibStat, next);
}

bool LocalStore::stepLibStatAtHome() {
    UserDefaults& d = defaults();
    const QString next = lower(d.stringForKey(StoreKey::LibStat));
    if (next.isNull()) return false;
    d.setString(StoreKey::LibStat, next);
    return true;
}

} // namespace ekinora::service
