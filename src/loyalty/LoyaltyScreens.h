#pragma once

namespace ekinora::loyalty {

// The farmer's scan, his QR code, the dealer's entry screens and the loyalty portal.
void registerScreens();

} // namespace ekinora::loyalty
