#include "FarmsScreens.h"

#include "FarmsViewController.h"
#include "platform/Storyboard.h"

namespace ekinora::farms {

void registerScreens() {
    platform::Storyboard::registerIdentifier(QStringLiteral("farmVC"), [] { return new FarmsViewController; });
}

} // namespace ekinora::farms
