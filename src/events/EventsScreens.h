#pragma once

namespace ekinora::events {
// Registers the event screens with the storyboard.
void registerScreens();
} // namespace ekinora::events
