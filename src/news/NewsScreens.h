#pragma once

namespace ekinora::news {
// Registers the news screens with the storyboard.
void registerScreens();
} // namespace ekinora::news
