#pragma once

namespace ekinora::videos {
// Registers the video screens with the storyboard.
void registerScreens();
} // namespace ekinora::videos
