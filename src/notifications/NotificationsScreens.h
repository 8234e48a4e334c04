#pragma once

namespace ekinora::notifications {
// Registers the notice list with the storyboard.
void registerScreens();
} // namespace ekinora::notifications
