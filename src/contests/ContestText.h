#pragma once

#include "platform/Foundation.h"

#include <QString>

namespace ekinora::contests {

// The height a text needs when set in the named font and size within the width, plus the padding.
// The screens' font stands in for the named one; without a GUI (controller tests) an average glyph
// width estimates it.
double getTextHeightFromString(const QString& text, double viewWidth, double padding, const QString& fontName,
                               double fontSize);

// "dd.MM.yyyy" of a number of seconds since 1970; a value that is not a number reads as 0.
QString dayOf(const platform::Json& seconds);

} // namespace ekinora::contests
