#pragma once

// Reading a detail tree by hand, as a subscripting JSON library does: a missing member or a wrong kind
// gives nil, never a stop; the count of a node that is no array or object is 0.

#include "platform/Foundation.h"

namespace ekinora::catalogue {

inline platform::Json sub(const platform::Json& v, const QString& key) {
    return v.isObject() ? v.toObject().value(key) : platform::nil();
}
inline platform::Json at(const platform::Json& v, int i) {
    return v.isArray() && i >= 0 && i < v.toArray().size() ? v.toArray().at(i) : platform::nil();
}
inline int jsonCount(const platform::Json& v) {
    return v.isArray() ? int(v.toArray().size()) : v.isObject() ? int(v.toObject().size()) : 0;
}
// A text or nil; a number or anything else is nil as well.
inline std::optional<QString> text(const platform::Json& v) {
    return v.isString() ? std::optional<QString>(v.toString()) : std::nullopt;
}
// A text that must be there: nil stops the application.
QString forcedText(const platform::Json& v, const char* what);

// The page around a section's body, as measured and shown.
QString htmlPage(const QString& body, double width);
// The bodies of every section of "data"."contents", one entry per block with the blocks so far.
QStringList buildContentStrings(const platform::Json& tree);

} // namespace ekinora::catalogue
