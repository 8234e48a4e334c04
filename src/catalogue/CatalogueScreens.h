#pragma once

namespace ekinora::catalogue {

// "HomeSB" (the side menu's plant-protection entry), the full list and the filter's result.
void registerScreens();

} // namespace ekinora::catalogue
