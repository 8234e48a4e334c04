#pragma once

#include "platform/Foundation.h"

#include <QString>

namespace ekinora::platform {
class UserDefaults;
}

namespace ekinora::service {

// The keys of the store, their defaults and the operations several screens share.
namespace StoreKey {
inline const QString Token = QStringLiteral("token");
inline const QString UserInfo = QStringLiteral("userInfo");
inline const QString HashCode = QStringLiteral("hashCode");
inline const QString NotifToken = QStringLiteral("notifToken");
inline const QString IsLogout = QStringLiteral("isLogout");
inline const QString WeatherKeys = QStringLiteral("weatherKeys");
inline const QString AppVersion = QStringLiteral("appVersion");
inline const QString MenuItemCounter = QStringLiteral("menuItemCounter");
inline const QString LibStat = QStringLiteral("libStat");
inline const QString MaizeCanola = QStringLiteral("maizeCanola");
inline const QString TransactionId = QStringLiteral("transaction_id");
} // namespace StoreKey

class LocalStore {
public:
    static platform::UserDefaults& defaults();

    // The five weather fields with their captions, in order.
    static QJsonArray defaultWeatherKeys();

    // The stored token, or a null text before login.
    static QString token();

    // The record of the last login-type reply, or nil when nobody is logged in.
    static platform::Json userInfo();
    static void setUserInfo(const platform::Json& record);

    // Logout and forced logout: favourites back to their default, the record and the token gone, the
    // farewell flag set, all in one write. Every other key stays.
    static void logoutReset();

    // The club invitation countdown. At each start: absent becomes "3", "3" to "1" step down, anything
    // else stays.
    static void stepLibStatAtStart();
    // Once per run at home for a loyalty member: steps down from "3", "2" or "1" and says whether the
    // invitation is due.
    static bool stepLibStatAtHome();
};

} // namespace ekinora::service
