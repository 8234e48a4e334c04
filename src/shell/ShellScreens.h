#pragma once

namespace ekinora::shell {
// Registers the shell's controllers with the storyboard.
void registerScreens();
} // namespace ekinora::shell
