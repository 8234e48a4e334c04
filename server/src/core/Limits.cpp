#include "core/Limits.h"

namespace ekinora::server::limits {

bool validUtf8(std::string_view text) {
    size_t i = 0;
    while (i < text.size()) {
        const auto c = static_cast<unsigned char>(text[i]);
        size_t extra = 0;
        unsigned min = 0, code = 0;
        if (c < 0x80) {
            ++i;
            continue;
        } else if ((c & 0xe0) == 0xc0) {
            extra = 1, min = 0x80, code = c & 0x1f;
        } else if ((c & 0xf0) == 0xe0) {
            extra = 2, min = 0x800, code = c & 0x0f;
        } else if ((c & 0xf8) == 0xf0) {
            extra = 3, min = 0x10000, code = c & 0x07;
        } else {
            return false;
        }
        if (i + extra >= text.size()) return false; // cut short
        for (size_t k = 1; k <= extra; ++k) {
            const auto next = static_cast<unsigned char>(text[i + k]);
            if ((next & 0xc0) != 0x80) return false;
            code = (code << 6) | (next & 0x3f);
        }
        // Overlong forms, surrogates and code points past Unicode are not UTF-8.
        if (code < min || (code >= 0xd800 && code <= 0xdfff) || code > 0x10ffff) return false;
        i += extra + 1;
    }
    return true;
}

size_t characters(std::string_view text) {
    size_t count = 0;
    for (const char c : text)
        if ((static_cast<unsigned char>(c) & 0xc0) != 0x80) ++count;
    return count;
}

namespace {

std::optional<std::string> problemOf(const Json& value) {
    if (value.is_string()) {
        const auto& text = value.get_ref<const std::string&>();
        if (!validUtf8(text)) return InvalidText;
        if (characters(text) > MaxTextLength) return TextTooLong;
    } else if (value.is_array()) {
        for (const auto& element : value)
            if (auto problem = problemOf(element)) return problem;
    } else if (value.is_object()) {
        for (auto it = value.begin(); it != value.end(); ++it) {
            if (!validUtf8(it.key())) return InvalidText;
            if (auto problem = problemOf(it.value())) return problem;
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<Json> textRejection(const Json& params) {
    for (auto it = params.begin(); it != params.end(); ++it) {
        const bool validName = validUtf8(it.key());
        auto problem = validName ? problemOf(it.value()) : std::optional<std::string>(InvalidText);
        // A name that is not text itself cannot be shown back; the message stands alone.
        if (problem) return envelope::rejection({{validName ? it.key() : std::string("params"), *problem}});
    }
    return std::nullopt;
}

} // namespace ekinora::server::limits
