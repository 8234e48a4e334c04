#pragma once

namespace ekinora::market {

// "farmingStockVC" and the crop's price detail, in the storyboard.
void registerScreens();

} // namespace ekinora::market
