#pragma once

namespace ekinora::weather {

// The week's list ("weatherVC") and the day's hours ("weatherDetailInfoVC").
void registerScreens();

} // namespace ekinora::weather
