#pragma once

namespace ekinora::farms {
// Registers the farm screens with the storyboard.
void registerScreens();
} // namespace ekinora::farms
