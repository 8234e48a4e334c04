#pragma once

namespace ekinora::farms {
// Registers the crop calendar, the document screen and the product card with the storyboard.
void registerCalendarScreens();
} // namespace ekinora::farms
