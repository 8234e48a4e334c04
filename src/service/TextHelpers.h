#pragma once

#include <QColor>
#include <QString>

namespace ekinora::service {

// A registered product name as the service writes it, made fit for a plain label: the registered mark
// becomes "®" and the other superscript tags go.
QString plainProductName(const QString& name);

// The colour set of the screens.
namespace Colors {
inline QColor leaf() { return QColor(120, 185, 48); }
inline QColor cerulean() { return QColor(0, 144, 197); }
inline QColor squash() { return QColor(229, 159, 14); }
inline QColor buttonDefault() { return QColor(230, 230, 230); }
inline QColor black() { return QColor(51, 51, 51); }
inline QColor border() { return QColor(155, 155, 155); }
} // namespace Colors

} // namespace ekinora::service
