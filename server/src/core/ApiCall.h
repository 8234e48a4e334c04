#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

namespace ekinora::server {

using Json = nlohmann::ordered_json;

// One command as a handler sees it.
struct ApiCall {
    std::string method;  // as the client sent it, also for a GET that carried a body
    std::string command; // "do"
    Json params = Json::object();
    std::string token;       // the bearer token sent, "" for none
    std::int64_t userId = 0; // the account of the token, for commands that need one
    std::string role;        // that account's "type"; "" for public commands
    std::string baseUrl;     // "http://host:port" the client reached, for absolute media addresses
};

using QueryItems = std::vector<std::pair<std::string, std::string>>;

std::string percentDecode(std::string_view text, bool plusIsSpace);
// Name/value pairs of a raw query string, decoded, in the order sent (a repeated name stays repeated).
QueryItems parseQuery(std::string_view rawQuery);

struct Parameters {
    std::string command;
    Json params = Json::object();
    bool unreadableBody = false; // a body was sent that is not a JSON object
};

// The query gives the first value of each name; the members of a JSON object body are added for
// names the query lacks. "do" is the query's first one, else the body's. A body of blanks counts as
// none; any other body that is not a JSON object is marked unreadable and adds nothing.
Parameters mergeParameters(const QueryItems& query, std::string_view body);

} // namespace ekinora::server
