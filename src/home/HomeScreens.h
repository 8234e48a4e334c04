#pragma once

namespace ekinora::home {
// Registers the farmer's home as the storyboard's first screen.
void registerScreens();
} // namespace ekinora::home
