#pragma once

#include "platform/Foundation.h"

#include <QString>
#include <optional>

namespace ekinora::loyalty {

// One product code on a dealer's sale list.
struct QrProduct {
    QString id; // the service's identifier of the code on the list, always a text
    QString product_name;
    QString product_image_url;

    // Decodes from an object with exactly "id", "product_name" and "product_image_url", all texts; a
    // missing key or a value of another kind is a decoding failure (nothing, with the reason).
    static std::optional<QrProduct> decode(const platform::Json& value, QString* error = nullptr);
};

} // namespace ekinora::loyalty
