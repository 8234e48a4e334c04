#pragma once

namespace ekinora::accounts {
// Registers the sign-in screen with the storyboard.
void registerScreens();
} // namespace ekinora::accounts
