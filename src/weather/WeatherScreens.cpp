#include "WeatherScreens.h"

#include "WeatherDetailInfoViewController.h"
#include "WeatherDetailViewController.h"
#include "platform/Storyboard.h"

namespace ekinora::weather {

void registerScreens() {
    platform::Storyboard::registerIdentifier(QStringLiteral("weatherVC"), [] { return new WeatherDetailViewController; });
    platform::Storyboard::registerIdentifier(QStringLiteral("weatherDetailInfoVC"),
                                             [] { return new WeatherDetailInfoViewController; });
}

} // namespace ekinora::weather
