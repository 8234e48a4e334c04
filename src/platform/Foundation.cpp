#include "Foundation.h"

#include "Application.h"

#include <QJsonDocument>
#include <QLocale>
#include <cmath>
#include <limits>

namespace ekinora::platform {

namespace {

QString className(const Json& v) {
    switch (v.type()) {
    case QJsonValue::Null: return QStringLiteral("NSNull");
    case QJsonValue::Bool:
    case QJsonValue::Double: return QStringLiteral("__NSCFNumber");
    case QJsonValue::String: return QStringLiteral("__NSCFString");
    case QJsonValue::Array: return QStringLiteral("__NSArrayI");
    case QJsonValue::Object: return QStringLiteral("__NSDictionaryI");
    case QJsonValue::Undefined: break;
    }
    return QStringLiteral("nil");
}

[[noreturn]] void unrecognized(const Json& v, const char* selector) {
    fatal(QStringLiteral("-[%1 %2]: unrecognized selector sent to instance").arg(className(v), selector));
}

// NSNumber's description: integers without a fraction, others with up to 17 significant digits.
QString numberText(double d) {
    if (std::isfinite(d) && d == std::floor(d) && std::fabs(d) < 1e15) return QString::number(qint64(d));
    QString s = QString::number(d, 'g', 17);
    // Prefer the shortest text that reads back as the same number, as NSNumber does.
    for (int p = 1; p <= 17; ++p) {
        QString t = QString::number(d, 'g', p);
        if (t.toDouble() == d) return t;
    }
    return s;
}

QString quoteIfNeeded(const QString& s) {
    if (s.isEmpty()) return QStringLiteral("\"\"");
    for (QChar c : s)
        if (!(c.isLetterOrNumber() || c == u'_' || c == u'.' || c == u'$' || c == u'/' || c == u':'))
            return u'"' + QString(s).replace(u'\\', QStringLiteral("\\\\")).replace(u'"', QStringLiteral("\\\""))
                       .replace(u'\n', QStringLiteral("\\n")) +
                   u'"';
    return s;
}

QString describe(const Json& v, int indent, bool nested) {
    const QString pad(indent * 4, u' ');
    switch (v.type()) {
    case QJsonValue::Undefined: return QStringLiteral("(null)");
    case QJsonValue::Null: return nested ? QStringLiteral("\"<null>\"") : QStringLiteral("<null>");
    case QJsonValue::Bool: return v.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case QJsonValue::Double: return numberText(v.toDouble());
    case QJsonValue::String: return nested ? quoteIfNeeded(v.toString()) : v.toString();
    // A collection opens at its own indentation, even after "key = " or an element's indentation.
    case QJsonValue::Array: {
        const QJsonArray a = v.toArray();
        if (a.isEmpty()) return QStringLiteral("%1(\n%1)").arg(pad);
        QStringList parts;
        for (const auto& e : a) parts << pad + QStringLiteral("    ") + describe(e, indent + 1, true);
        return pad + QStringLiteral("(\n") + parts.join(QStringLiteral(",\n")) + u'\n' + pad + u')';
    }
    case QJsonValue::Object: {
        const QJsonObject o = v.toObject();
        QString out = pad + QStringLiteral("{\n");
        for (auto it = o.begin(); it != o.end(); ++it)
            out += pad + QStringLiteral("    ") + quoteIfNeeded(it.key()) + QStringLiteral(" = ") +
                   describe(it.value(), indent + 1, true) + QStringLiteral(";\n");
        return out + pad + u'}';
    }
    }
    return {};
}

// Leading whitespace, an optional sign and digits, as -[NSString intValue] reads them.
qint64 leadingInteger(const QString& s, bool* any = nullptr) {
    int i = 0;
    while (i < s.size() && s[i].isSpace()) ++i;
    bool negative = false;
    if (i < s.size() && (s[i] == u'+' || s[i] == u'-')) negative = s[i++] == u'-';
    qint64 n = 0;
    bool digits = false, overflow = false;
    while (i < s.size() && s[i] >= u'0' && s[i] <= u'9') {
        digits = true;
        const int d = s[i].unicode() - u'0';
        if (n > (std::numeric_limits<qint64>::max() - d) / 10) overflow = true;
        else n = n * 10 + d;
        ++i;
    }
    if (any) *any = digits;
    // Out of range, the nearest end of the range.
    if (overflow) return negative ? std::numeric_limits<qint64>::min() : std::numeric_limits<qint64>::max();
    return negative ? -n : n;
}

} // namespace

Json member(const Json& v, const QString& key) {
    if (v.isUndefined()) return nil();
    if (!v.isObject()) unrecognized(v, "objectForKey:");
    const QJsonObject o = v.toObject();
    auto it = o.constFind(key);
    return it == o.constEnd() ? nil() : it.value();
}

Json path(const Json& v, std::initializer_list<QString> keys) {
    Json cur = v;
    for (const auto& k : keys) cur = member(cur, k);
    return cur;
}

Json element(const Json& v, int index) {
    if (v.isUndefined()) return nil();
    if (!v.isArray()) unrecognized(v, "objectAtIndex:");
    const QJsonArray a = v.toArray();
    if (index < 0 || index >= a.size())
        fatal(QStringLiteral("-[__NSArrayI objectAtIndex:]: index %1 beyond bounds [0 .. %2]")
                  .arg(index)
                  .arg(a.size() - 1));
    return a.at(index);
}

int count(const Json& v) {
    if (v.isUndefined()) return 0;
    if (v.isArray()) return int(v.toArray().size());
    if (v.isObject()) return int(v.toObject().size());
    unrecognized(v, "count");
}

int intValueOfString(const QString& s) {
    return int(qBound(qint64(std::numeric_limits<int>::min()), leadingInteger(s), qint64(std::numeric_limits<int>::max())));
}
qint64 integerValueOfString(const QString& s) { return leadingInteger(s); }

double doubleValueOfString(const QString& s) {
    // The longest leading prefix that reads as a decimal number; 0 when there is none.
    QString t = s.trimmed();
    int end = 0;
    bool seenDigit = false, seenDot = false, seenExp = false;
    for (int i = 0; i < t.size(); ++i) {
        QChar c = t[i];
        if (c.isDigit()) { seenDigit = true; end = i + 1; continue; }
        if ((c == u'+' || c == u'-') && (i == 0 || ((t[i - 1] == u'e' || t[i - 1] == u'E') && seenExp))) continue;
        if (c == u'.' && !seenDot && !seenExp) { seenDot = true; continue; }
        if ((c == u'e' || c == u'E') && seenDigit && !seenExp) { seenExp = true; continue; }
        break;
    }
    return seenDigit ? t.left(end).toDouble() : 0.0;
}

bool boolValueOfString(const QString& s) {
    // YES for a leading Y, y, T, t or a non-zero digit, after whitespace, a sign and zeros.
    int i = 0;
    while (i < s.size() && s[i].isSpace()) ++i;
    if (i < s.size() && (s[i] == u'+' || s[i] == u'-')) ++i;
    while (i < s.size() && s[i] == u'0') ++i;
    if (i >= s.size()) return false;
    const QChar c = s[i];
    return c == u'Y' || c == u'y' || c == u'T' || c == u't' || (c >= u'1' && c <= u'9');
}

qint64 integerValue(const Json& v) {
    switch (v.type()) {
    case QJsonValue::Undefined: return 0;
    case QJsonValue::Bool: return v.toBool() ? 1 : 0;
    case QJsonValue::Double: {
        const double d = v.toDouble();
        return std::isfinite(d) ? qint64(d) : 0;
    }
    case QJsonValue::String: return integerValueOfString(v.toString());
    default: unrecognized(v, "integerValue");
    }
}

int intValue(const Json& v) {
    if (v.isNull() || v.isArray() || v.isObject()) unrecognized(v, "intValue");
    // A text reads as the nearest end of the range of int when out of it; a number is cut.
    if (v.isString()) return intValueOfString(v.toString());
    return int(integerValue(v));
}

double doubleValue(const Json& v) {
    switch (v.type()) {
    case QJsonValue::Undefined: return 0;
    case QJsonValue::Bool: return v.toBool() ? 1 : 0;
    case QJsonValue::Double: return v.toDouble();
    case QJsonValue::String: return doubleValueOfString(v.toString());
    default: unrecognized(v, "doubleValue");
    }
}

float floatValue(const Json& v) {
    if (v.isNull() || v.isArray() || v.isObject()) unrecognized(v, "floatValue");
    return float(doubleValue(v));
}

bool boolValue(const Json& v) {
    switch (v.type()) {
    case QJsonValue::Undefined: return false;
    case QJsonValue::Bool: return v.toBool();
    case QJsonValue::Double: return v.toDouble() != 0;
    case QJsonValue::String: return boolValueOfString(v.toString());
    default: unrecognized(v, "boolValue");
    }
}

bool isString(const Json& v, const QString& s) { return v.isString() && v.toString() == s; }
QString stringOrNull(const Json& v) { return v.isString() ? v.toString() : QString(); }

QString description(const Json& v) { return describe(v, 0, false); }

Json valueOrNil(const Json& v) { return v.isNull() ? nil() : v; }

QString stringWithFormat(const QString& format, std::initializer_list<FormatArg> args) {
    QString out;
    auto next = args.begin();
    auto take = [&]() -> Json { return next == args.end() ? nil() : (next++)->value(); };
    for (int i = 0; i < format.size(); ++i) {
        const QChar c = format[i];
        if (c != u'%') {
            out += c;
            continue;
        }
        // %[flags][width][.precision][length]conversion
        int j = i + 1;
        QString flags;
        while (j < format.size() && QStringLiteral("-+ 0#").contains(format[j])) flags += format[j++];
        int width = 0;
        while (j < format.size() && format[j].isDigit()) width = width * 10 + format[j++].digitValue();
        int precision = -1;
        if (j < format.size() && format[j] == u'.') {
            ++j;
            precision = 0;
            while (j < format.size() && format[j].isDigit()) precision = precision * 10 + format[j++].digitValue();
        }
        while (j < format.size() && QStringLiteral("hlqLzjt").contains(format[j])) ++j;
        if (j >= format.size()) {
            out += format.mid(i);
            break;
        }
        const QChar conv = format[j];
        QString piece;
        switch (conv.unicode()) {
        case '%': piece = QStringLiteral("%"); break;
        case '@': piece = description(take()); break;
        case 'd':
        case 'i': {
            const Json a = take();
            qint64 n = a.isString() ? integerValueOfString(a.toString()) : qint64(a.toDouble());
            piece = QString::number(qAbs(n));
            if (precision >= 0) piece = piece.rightJustified(precision, u'0');
            const QString sign = n < 0 ? QStringLiteral("-") : flags.contains(u'+') ? QStringLiteral("+") : QString();
            if (flags.contains(u'0') && !flags.contains(u'-') && precision < 0)
                piece = piece.rightJustified(width - sign.size(), u'0');
            piece = sign + piece;
            break;
        }
        case 'u': piece = QString::number(quint64(take().toDouble())); break;
        case 'x':
        case 'X': {
            const quint64 n = quint64(qint64(take().toDouble())) & 0xffffffffULL;
            piece = QString::number(n, 16);
            if (conv == u'X') piece = piece.toUpper();
            if (flags.contains(u'0') && !flags.contains(u'-')) piece = piece.rightJustified(width, u'0');
            break;
        }
        case 'f':
        case 'F': piece = QString::number(take().toDouble(), 'f', precision < 0 ? 6 : precision); break;
        case 'e': piece = QString::number(take().toDouble(), 'e', precision < 0 ? 6 : precision); break;
        case 'g': piece = QString::number(take().toDouble(), 'g', precision < 0 ? 6 : qMax(precision, 1)); break;
        case 's': {
            const Json a = take();
            piece = a.isString() ? a.toString() : QStringLiteral("(null)");
            if (precision >= 0) piece = piece.left(precision);
            break;
        }
        case 'c': piece = QChar(char16_t(take().toDouble())); break;
        default: piece = format.mid(i, j - i + 1); break;
        }
        if (piece.size() < width)
            piece = flags.contains(u'-') ? piece.leftJustified(width, u' ') : piece.rightJustified(width, u' ');
        out += piece;
        i = j;
    }
    return out;
}

QString formatDate(const QDateTime& when, const QString& pattern) {
    // The patterns in use ("yyyy-MM-dd HH:mm:ss", "dd.MM.yyyy", "HH:mm", "EEEE") read the same in Qt,
    // except the weekday letters.
    QString qtPattern = pattern;
    qtPattern.replace(QStringLiteral("EEEE"), QStringLiteral("dddd")).replace(QStringLiteral("EEE"), QStringLiteral("ddd"));
    return QLocale(QLocale::Turkish, QLocale::Turkey).toString(when.toLocalTime(), qtPattern);
}

Json decodeJson(const QByteArray& body) {
    QJsonParseError error{};
    const QJsonDocument doc = QJsonDocument::fromJson(body, &error);
    if (error.error != QJsonParseError::NoError) return nil();
    if (doc.isObject()) return doc.object();
    if (doc.isArray()) return doc.array();
    return nil();
}

QByteArray encodeJson(const Json& v) {
    if (v.isObject()) return QJsonDocument(v.toObject()).toJson(QJsonDocument::Compact);
    if (v.isArray()) return QJsonDocument(v.toArray()).toJson(QJsonDocument::Compact);
    // Fragments: wrap and cut, so a lone value is written the way JSON writes it.
    QByteArray wrapped = QJsonDocument(QJsonArray{v}).toJson(QJsonDocument::Compact);
    return wrapped.mid(1, wrapped.size() - 2);
}

void fatal(const QString& reason) {
    Application::fatalStop(reason);
}

} // namespace ekinora::platform
