#include "core/ApiCall.h"

namespace ekinora::server {

namespace {

int hexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

} // namespace

std::string percentDecode(std::string_view text, bool plusIsSpace) {
    std::string out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '%' && i + 2 < text.size()) {
            const int hi = hexValue(text[i + 1]);
            const int lo = hexValue(text[i + 2]);
            if (hi >= 0 && lo >= 0) {
                out.push_back(char(hi * 16 + lo));
                i += 2;
                continue;
            }
        }
        out.push_back(plusIsSpace && c == '+' ? ' ' : c);
    }
    return out;
}

QueryItems parseQuery(std::string_view rawQuery) {
    QueryItems items;
    size_t start = 0;
    while (start <= rawQuery.size()) {
        size_t end = rawQuery.find('&', start);
        if (end == std::string_view::npos) end = rawQuery.size();
        const std::string_view part = rawQuery.substr(start, end - start);
        if (!part.empty()) {
            const size_t eq = part.find('=');
            const auto name = percentDecode(part.substr(0, eq), true);
            const auto value =
                eq == std::string_view::npos ? std::string() : percentDecode(part.substr(eq + 1), true);
            items.emplace_back(name, value);
        }
        start = end + 1;
    }
    return items;
}

Parameters mergeParameters(const QueryItems& query, std::string_view body) {
    Parameters out;
    for (const auto& [name, value] : query)
        if (!out.params.contains(name)) out.params[name] = value;

    if (body.find_first_not_of(" \t\r\n") != std::string_view::npos) {
        Json parsed = Json::parse(body.begin(), body.end(), nullptr, false);
        if (parsed.is_object()) {
            for (auto it = parsed.begin(); it != parsed.end(); ++it)
                if (!out.params.contains(it.key())) out.params[it.key()] = it.value();
        } else {
            out.unreadableBody = true;
        }
    }

    auto command = out.params.find("do");
    if (command != out.params.end() && command->is_string()) out.command = command->get<std::string>();
    return out;
}

} // namespace ekinora::server
