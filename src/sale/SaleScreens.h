#pragma once

namespace ekinora::sale {
// Registers the dealer's sale screens with the storyboard.
void registerScreens();
} // namespace ekinora::sale
