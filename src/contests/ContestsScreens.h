#pragma once

namespace ekinora::contests {
// Registers the contest screens with the storyboard: "gameVC" (the list), the question flow and the
// results.
void registerScreens();
} // namespace ekinora::contests
