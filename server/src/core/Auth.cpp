#include "core/Auth.h"

#include <string_view>

namespace ekinora::server::auth {

namespace {

std::string_view trim(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t'))
        s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t'))
        s.remove_suffix(1);
    return s;
}

std::string stripScheme(std::string_view value) {
    value = trim(value);
    constexpr std::string_view scheme = "Bearer";
    if (value.size() >= scheme.size() && value.substr(0, scheme.size()) == scheme &&
        (value.size() == scheme.size() || value[scheme.size()] == ' '))
        value = trim(value.substr(scheme.size()));
    // The scan screen writes "Bearer%20" into its URL and then encodes the whole URL once more, so
    // the parameter arrives as "Bearer%20<token>" after decoding.
    else if (value.substr(0, scheme.size() + 3) == "Bearer%20")
        value = trim(value.substr(scheme.size() + 3));
    if (value == "(null)") return {};
    return std::string(value);
}

} // namespace

std::string bearerToken(const std::optional<std::string>& authorizationHeader, const Json& params) {
    if (authorizationHeader) {
        auto token = stripScheme(*authorizationHeader);
        if (!token.empty()) return token;
    }
    auto it = params.find("bearer");
    if (it != params.end() && it->is_string()) return stripScheme(it->get<std::string>());
    return {};
}

} // namespace ekinora::server::auth
