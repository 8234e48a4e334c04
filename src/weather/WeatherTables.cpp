#include "WeatherTables.h"

#include "service/ServiceRoots.h"

#include <cmath>

namespace ekinora::weather {

using namespace platform;

const QStringList& arrayWeatherTypes() {
    static const QStringList texts = {
        QStringLiteral("Açık"),
        QStringLiteral("Az Bulutlu"),
        QStringLiteral("Az Bulutlu"),
        QStringLiteral("Az Bulutlu"),
        QStringLiteral("Az Bulutlu"),
        QStringLiteral("Az Bulutlu"),
        QStringLiteral("Parçalı Bulutlu"),
        QStringLiteral("Parçalı Bulutlu"),
        QStringLiteral("Parçalı Çok Bulutlu"),
        QStringLiteral("Parçalı Çok Bulutlu"),
        QStringLiteral("Parçalı Çok Bulutlu"),
        QStringLiteral("Parçalı Çok Bulutlu"),
        QStringLiteral("Açık Hafif Sisli"),
        QStringLiteral("Açık ve Sisli"),
        QStringLiteral("Açık ve Sisli"),
        QStringLiteral("Sisli"),
        QStringLiteral("Sisli"),
        QStringLiteral("Sisli"),
        QStringLiteral("Parçalı Çok Bulutlu"),
        QStringLiteral("Parçalı Çok Bulutlu"),
        QStringLiteral("Çok Bulutlu"),
        QStringLiteral("Kapalı"),
        QStringLiteral("Yağmurlu"),
        QStringLiteral("Karlı"),
        QStringLiteral("Sağanak Yağışlı"),
        QStringLiteral("Etkin Kar Yağışı"),
        QStringLiteral("Gök Gürültülü Sağanak Yağış"),
        QStringLiteral("Gök Gürültülü Hafif Yağmurlu"),
        QStringLiteral("Kuvvetli Kar Sağanağı"),
        QStringLiteral("Kuvvetli Gök Gürültülü Sağanak Yağmur"),
        QStringLiteral("Parçalı Bulutlu Yağmurlu"),
        QStringLiteral("Parçalı Bulutlu Karlı"),
        QStringLiteral("Hafif Yağmurlu"),
        QStringLiteral("Hafif Karlı"),
        QStringLiteral("Karla Karışık Yağmurlu"),
    };
    return texts;
}

QString weatherTypeText(int code) {
    if (code < 1) return QString();
    const QStringList& texts = arrayWeatherTypes();
    if (code > texts.size())
        fatal(QStringLiteral("*** -[__NSArrayI objectAtIndex:]: index %1 beyond bounds [0 .. %2]").arg(code - 1).arg(texts.size() - 1));
    return texts.at(code - 1);
}

QString weatherIconUrl(const Json& pictocode) {
    return stringWithFormat(QStringLiteral("%@/static/media/images/weather/%@_day.svg"),
                            {service::Roots::ServiceRoot, pictocode});
}

QString getDirectionForAngle(float a) {
    if (a >= 337.5f || a < 22.5f) return QStringLiteral("Kuzey");
    if (a >= 22.5f && a < 67.5f) return QStringLiteral("Kuzeydoğu");
    if (a >= 67.5f && a < 112.5f) return QStringLiteral("Doğu");
    if (a >= 112.5f && a < 157.5f) return QStringLiteral("Güneydoğu");
    if (a >= 157.5f && a < 202.5f) return QStringLiteral("Güney");
    if (a >= 202.5f && a < 247.5f) return QStringLiteral("Güneybatı");
    if (a >= 247.5f && a < 292.5f) return QStringLiteral("Batı");
    if (a >= 292.5f && a < 337.5f) return QStringLiteral("Kuzeybatı");
    return QString(""); // not a number: every comparison fails
}

QString localizeWindType(const QString& code) {
    static const QStringList codes = {"N", "NE", "E", "SE", "S", "SW", "W", "NW"};
    static const QStringList texts = {QStringLiteral("Kuzey"),      QStringLiteral("Kuzey doğu"), QStringLiteral("Doğu"),
                                      QStringLiteral("Güney Doğu"), QStringLiteral("Güney"),      QStringLiteral("Güney Batı"),
                                      QStringLiteral("Batı"),       QStringLiteral("Kuzey Batı")};
    const qsizetype at = codes.indexOf(code);
    if (at < 0)
        fatal(QStringLiteral("*** -[__NSArrayI objectAtIndex:]: index 9223372036854775807 beyond bounds [0 .. 7]"));
    return texts.at(at);
}

} // namespace ekinora::weather
