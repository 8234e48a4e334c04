#pragma once

#include "core/Envelope.h"

#include <cstddef>
#include <optional>
#include <string_view>

#include <nlohmann/json.hpp>

namespace ekinora::server::limits {

using Json = nlohmann::ordered_json;

// The longest text one parameter may carry, in characters; the areas keep tighter limits of their own.
inline constexpr size_t MaxTextLength = 4000;

inline const std::string InvalidText = "Gönderilen bilgide geçersiz karakterler var.";
inline const std::string TextTooLong = "En fazla 4000 karakter girilebilir.";

bool validUtf8(std::string_view text);
// Characters of a valid UTF-8 text.
size_t characters(std::string_view text);

// The first text among the parameters (names and values, inside lists and objects too) that is not
// valid UTF-8 or is too long, as a rejection under the parameter's name; nullopt when all are fine.
std::optional<Json> textRejection(const Json& params);

} // namespace ekinora::server::limits
