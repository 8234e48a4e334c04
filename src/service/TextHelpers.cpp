#include "TextHelpers.h"

namespace ekinora::service {

QString plainProductName(const QString& name) {
    QString text = name;
    text.replace(QStringLiteral("<sup>&reg;</sup>"), QStringLiteral("®"));
    text.replace(QStringLiteral("<sup>"), QString());
    text.replace(QStringLiteral("</sup>"), QString());
    return text;
}

} // namespace ekinora::service
