#include "LoyaltyScreens.h"

#include "platform/Storyboard.h"

namespace ekinora::loyalty {

void registerScreens() {}

} // namespace ekinora::loyalty
