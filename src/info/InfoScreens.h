#pragma once

namespace ekinora::info {
// Registers the info screens with the storyboard.
void registerScreens();
} // namespace ekinora::info
