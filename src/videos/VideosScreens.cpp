#include "VideosScreens.h"

#include "VideoViewController.h"
#include "platform/Storyboard.h"

namespace ekinora::videos {

void registerScreens() {
    platform::Storyboard::registerIdentifier(QStringLiteral("videoVC"), [] { return new VideoViewController; });
}

} // namespace ekinora::videos
