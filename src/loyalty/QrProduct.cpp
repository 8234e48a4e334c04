#include "QrProduct.h"

#include <QJsonObject>

namespace ekinora::loyalty {

std::optional<QrProduct> QrProduct::decode(const platform::Json& value, QString* error) {
    auto fail = [error](const QString& why) -> std::optional<QrProduct> {
        if (error) *error = why;
        return std::nullopt;
    };
    if (!value.isObject()) return fail(QStringLiteral("typeMismatch(QrProduct: expected an object)"));
    const QJsonObject object = value.toObject();
    QrProduct product;
    for (auto [key, field] : {std::pair{"id", &product.id}, std::pair{"product_name", &product.product_name},
                              std::pair{"product_image_url", &product.product_image_url}}) {
        const QString name = QString::fromLatin1(key);
        if (!object.contains(name) || object.value(name).isNull()) return fail(QStringLiteral("keyNotFound(%1)").arg(name));
        if (!object.value(name).isString()) return fail(QStringLiteral("typeMismatch(String, %1)").arg(name));
        *field = object.value(name).toString();
    }
    return product;
}

} // namespace ekinora::loyalty
