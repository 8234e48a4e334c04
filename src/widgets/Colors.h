#pragma once

#include <QColor>

namespace ekinora::widgets {

// The colour set of the screens; the views' theme (Theme.qml) holds the same values.
namespace Colors {
inline QColor leaf() { return QColor(120, 185, 48); }
inline QColor cerulean() { return QColor(0, 144, 197); }
inline QColor squash() { return QColor(229, 159, 14); }
inline QColor buttonDefault() { return QColor(230, 230, 230); }
inline QColor black() { return QColor(51, 51, 51); }
inline QColor border() { return QColor(155, 155, 155); }
} // namespace Colors

} // namespace ekinora::widgets
