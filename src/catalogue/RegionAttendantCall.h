#pragma once

#include "platform/ViewController.h"

namespace ekinora::catalogue {

// The two detail screens ring their region's representative by the same steps; they differ only where
// they are kept apart on purpose.
enum class CallerScreen {
    ProductDetail, // warning button "tamam"; a set error would skip everything
    MaizeDetail,   // prints the reply first; warning button "Tamam"
};

void callRegionAttendant(platform::ViewController* screen, CallerScreen caller);
// The action of "Ara": the number as it stands, blanks included.
void placeCall(const QString& phone);

} // namespace ekinora::catalogue
