#include "Replies.h"

#include "TextHelpers.h"

namespace ekinora::service {

using namespace platform;

int statusOf(const Json& response) { return intValue(member(response, QStringLiteral("status"))); }

QString firstError(const Json& response) {
    // The first value formatted with "%@": nothing renders as "(null)", never as an empty alert.
    const QString nothing = QStringLiteral("(null)");
    const Json errors = member(response, QStringLiteral("errors"));
    if (errors.isUndefined()) return nothing;
    if (!errors.isObject())
        fatal(QStringLiteral("-[%1 allValues]: unrecognized selector sent to instance").arg(errors.isNull() ? "NSNull" : "__NSCFObject"));
    const QJsonObject o = errors.toObject();
    if (o.isEmpty()) return nothing;
    const Json first = o.begin().value();
    return first.isString() ? first.toString() : description(first);
}

QJsonArray listOf(const Json& values) {
    QJsonArray list;
    for (int i = 0, n = count(values); i < n; ++i) list.append(element(values, i));
    return list;
}

QJsonArray plainProducts(const Json& aps) {
    QJsonArray products;
    for (int i = 0, n = count(aps); i < n; ++i) {
        QJsonObject product = element(aps, i).toObject();
        product.insert(QStringLiteral("name"), plainProductName(stringOrNull(product.value(QStringLiteral("name")))));
        products.append(product);
    }
    return products;
}

} // namespace ekinora::service
