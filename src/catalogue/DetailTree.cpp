#include "DetailTree.h"

#include "platform/Platform.h"

namespace ekinora::catalogue {

using namespace platform;

QString forcedText(const Json& v, const char* what) {
    if (!v.isString())
        fatal(QStringLiteral("Fatal error: Unexpectedly found nil while unwrapping an Optional value (%1)").arg(QLatin1String(what)));
    return v.toString();
}

namespace {
// A double as the platform prints it: always with a fractional part.
QString printedDouble(double d) {
    QString s = QString::number(d, 'g', 15);
    if (!s.contains(u'.') && !s.contains(u'e') && !s.contains(u'n') && !s.contains(u'i')) s += QStringLiteral(".0");
    return s;
}
} // namespace

QString htmlPage(const QString& body, double width) {
    static const QString first = QStringLiteral("<html>\n<head>\n<meta name=\"viewport\", content=\"width=");
    static const QString second = QStringLiteral(
        ", initial-scale=1, minimum-scale=1, maximum-scale=1, user-scalable=no\">\n<style>\nbody { font-size: 100%; "
        "text-align: justify;}\np { margin:0 !important; }\nspan { line-height:normal !important }\ntable { width: 100% "
        "!important;}\nimg { max-width:100%; width: 100%; height:auto; padding:0; border:0; margin:0; "
        "vertical-align:bottom;}\n</style>\n</head>\n<body>\n");
    static const QString third = QStringLiteral("\n</body>\n</html>");
    return first + printedDouble(width) + second + body + third;
}

QStringList buildContentStrings(const Json& tree) {
    QStringList strings;
    const Json contents = sub(sub(tree, QStringLiteral("data")), QStringLiteral("contents"));
    for (int i = 0; i < jsonCount(contents); ++i) {
        QString html = QStringLiteral("");
        const Json blocks = sub(at(contents, i), QStringLiteral("data"));
        for (int j = 0; j < jsonCount(blocks); ++j) {
            const Json block = at(blocks, j);
            const auto type = text(sub(block, QStringLiteral("type")));
            const Json data = sub(block, QStringLiteral("data"));
            const auto wrap = [&](const char* key, const char* open, const char* close) {
                const Json lines = sub(data, QLatin1String(key));
                for (int k = 0; k < jsonCount(lines); ++k)
                    html += QLatin1String(open) + forcedText(at(lines, k), key) + QLatin1String(close);
            };
            if (type == QStringLiteral("list")) wrap("list", "<li>", "</li>");
            else if (type == QStringLiteral("paragraph")) wrap("paragraph", "<p>", "</p>");
            else if (type == QStringLiteral("headline")) wrap("headline", "<h3>", "</h3>");
            else if (type == QStringLiteral("table"))
                html = forcedText(at(sub(data, QStringLiteral("table")), 0), "table").remove(u'\\');
            // Once per block: a section of three blocks leaves three entries.
            Platform::current().application().log(html);
            strings.append(html);
        }
    }
    return strings;
}

} // namespace ekinora::catalogue
