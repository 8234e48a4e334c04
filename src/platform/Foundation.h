#pragma once

// Foundation-like conversions used by the screens. A JSON value stands for an object of the original
// platform: QJsonValue::Undefined is nil (an absent member), QJsonValue::Null is the null object. A
// default-constructed QJsonValue is Null, so a property that starts as nil must say so.
// Messaging nil yields zero or nil; messaging the null object with a selector it lacks is a fatal stop,
// and these helpers keep both behaviours.

#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <initializer_list>

namespace ekinora::platform {

using Json = QJsonValue;

inline Json nil() { return Json(QJsonValue::Undefined); }
inline Json nullObject() { return Json(QJsonValue::Null); }
inline bool isNil(const Json& v) { return v.isUndefined(); }
inline bool isNullObject(const Json& v) { return v.isNull(); }

// [dict objectForKey:key]: nil for nil, the member or nil for a dictionary, a fatal stop for anything
// else (the null object, a string, a number, an array do not answer objectForKey:).
Json member(const Json& v, const QString& key);
// Chained members: member(member(v, a), b) ...
Json path(const Json& v, std::initializer_list<QString> keys);

// [array objectAtIndex:i]: nil for nil, a fatal stop out of range or on a non-array.
Json element(const Json& v, int index);
// [x count]: 0 for nil, a fatal stop for a value that is neither an array nor a dictionary.
int count(const Json& v);

// intValue, integerValue, floatValue, doubleValue, boolValue of strings and numbers; zero for nil;
// a fatal stop for the null object, arrays and dictionaries.
int intValue(const Json& v);
qint64 integerValue(const Json& v);
float floatValue(const Json& v);
double doubleValue(const Json& v);
bool boolValue(const Json& v);

// The same conversions on texts, as NSString does them.
int intValueOfString(const QString& s);
qint64 integerValueOfString(const QString& s);
double doubleValueOfString(const QString& s);
bool boolValueOfString(const QString& s);

// [x isEqualToString:s] for a value that should be a string: false for nil and non-strings.
bool isString(const Json& v, const QString& s);
// A string member, or a null QString for nil and for any non-string.
QString stringOrNull(const Json& v);

// The text "%@" gives: "(null)" for nil, "<null>" for the null object, numbers as NSNumber writes
// them, dictionaries and arrays in the property-list form of -description.
QString description(const Json& v);

// +[NSDictionary(Utility) valueOrNil:]: nil when the argument is the null object, else the argument.
Json valueOrNil(const Json& v);

// An argument of stringWithFormat. Built from texts, numbers or JSON values.
class FormatArg {
public:
    FormatArg(const Json& v) : m_value(v) {}
    FormatArg(const QString& s) : m_value(s.isNull() ? nil() : Json(s)) {}
    FormatArg(const char* s) : m_value(s ? Json(QString::fromUtf8(s)) : nil()) {}
    FormatArg(int n) : m_value(n) {}
    FormatArg(long n) : m_value(qint64(n)) {}
    FormatArg(long long n) : m_value(qint64(n)) {}
    FormatArg(unsigned n) : m_value(qint64(n)) {}
    FormatArg(unsigned long n) : m_value(qint64(n)) {}
    FormatArg(double d) : m_value(d) {}
    const Json& value() const { return m_value; }

private:
    Json m_value;
};

// +[NSString stringWithFormat:] for the conversions the screens use: %@ %d %i %ld %li %lu %u %x %08x
// %s %f %.Nf %g %c %%, with flags and widths.
QString stringWithFormat(const QString& format, std::initializer_list<FormatArg> args = {});

// NSDateFormatter with a fixed pattern ("yyyy-MM-dd HH:mm:ss", "dd.MM.yyyy", ...) in local time.
QString formatDate(const QDateTime& when, const QString& pattern);

// The decoded JSON of a body, or nil when it is not JSON (NSJSONSerialization with no options: the top
// level must be an object or an array).
Json decodeJson(const QByteArray& body);
QByteArray encodeJson(const Json& v);

// A fatal stop: the null object asked for a selector, a forced unwrap of nothing, an index out of range.
[[noreturn]] void fatal(const QString& reason);

} // namespace ekinora::platform
