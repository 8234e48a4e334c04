#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include <nlohmann/json.hpp>

namespace ekinora::server {

using Json = nlohmann::ordered_json;

namespace auth {

// The token a request carries: the "Authorization" header ("Bearer <token>"), else the "bearer"
// parameter, which some screens also prefix with "Bearer ". Before login the app sends
// "Bearer (null)", which counts as no token, as does an empty value.
std::string bearerToken(const std::optional<std::string>& authorizationHeader, const Json& params);

} // namespace auth

// The signed-in account a token stands for.
struct Caller {
    std::int64_t id = 0;
    std::string role; // the account's "type"
};

// Finds the account of a token; nullopt for an unknown token or an account that is not active.
using TokenResolver = std::function<std::optional<Caller>(const std::string& token)>;

} // namespace ekinora::server
