#pragma once

#include "core/Envelope.h"

#include <string>
#include <utility>

namespace ekinora::server::loyalty {

// The loyalty screens read "message" as an object: "type" ("success" or "warning") and "text", the
// words they show. A warning is a rejection: status 400 with the same text under the field.
inline Json done(Json data, const std::string& text) {
    return envelope::success(std::move(data), Json{{"type", "success"}, {"text", text}});
}

inline Json warning(const std::string& field, const std::string& text) {
    return Json{{"status", envelope::Rejected},
                {"message", Json{{"type", "warning"}, {"text", text}}},
                {"errors", Json{{field, text}}},
                {"data", nullptr}};
}

// A product's name as a plain label shows it: the registered mark as "®", other tags dropped.
inline std::string plainName(std::string name) {
    static const std::pair<std::string, std::string> replacements[] = {
        {"<sup>&reg;</sup>", "®"}, {"<sup>", ""}, {"</sup>", ""}};
    for (const auto& [from, to] : replacements)
        for (auto at = name.find(from); at != std::string::npos; at = name.find(from, at + to.size()))
            name.replace(at, from.size(), to);
    return name;
}

} // namespace ekinora::server::loyalty
