#pragma once

namespace ekinora::grants {

// "grantVC" and the screens behind it, in the storyboard.
void registerScreens();

} // namespace ekinora::grants
