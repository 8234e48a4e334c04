#pragma once

namespace ekinora::farms {

// Height of the crop-kind panel, two kinds a row of 50: as high as its rows while the screen (less
// the 64 of the bars) has room, else the screen's room less 50, and the list scrolls inside.
inline double plantPanelHeight(int plants, double screenHeight) {
    const int rows = plants / 2;
    const double room = screenHeight - 64;
    if (plants % 2 == 1) return room >= rows * 50.0 + 100 ? rows * 50.0 + 50 : room - 50;
    return room >= rows * 50.0 + 50 ? rows * 50.0 : room - 50;
}

} // namespace ekinora::farms
