#pragma once

#include "core/Access.h"
#include "core/ApiCall.h"
#include "core/Auth.h"

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace ekinora::server {

class Database;

using Handler = std::function<Json(const ApiCall&)>;

// Command name ("do") to handler, with who may send it. Access is decided here, once: a command
// that needs a token runs only with one of an active account of an allowed role, and gets that
// account's id and role in ApiCall::userId and ApiCall::role.
class Dispatch {
public:
    explicit Dispatch(TokenResolver resolver) : m_resolver(std::move(resolver)) {}

    void add(const std::string& name, Access access, Handler handler);
    // A handler of an area that needs only the database.
    void add(const std::string& name, Access access, Json (*handler)(Database&, const ApiCall&),
             Database& db) {
        add(name, access, Handler([handler, &db](const ApiCall& call) { return handler(db, call); }));
    }
    // A handler with its area's context (the database, a clock, ...), of which the table keeps a copy.
    template <class Context>
    void add(const std::string& name, Access access, Json (*handler)(const Context&, const ApiCall&),
             Context context) {
        add(name, access, Handler([handler, context = std::move(context)](const ApiCall& call) {
                return handler(context, call);
            }));
    }

    // The body a command accepts, in bytes; the media upload has its own, larger limit.
    static constexpr size_t DefaultBodyLimit = 64 * 1024;
    void setBodyLimit(const std::string& name, size_t bytes);
    // An unknown command's is the default.
    size_t bodyLimit(const std::string& name) const;
    // What a body naming its command only inside itself may carry before the command is known.
    size_t largestBodyLimit() const;

    bool contains(const std::string& name) const { return m_commands.count(name) > 0; }
    // Every command with its access, by name.
    std::vector<std::pair<std::string, Access>> commands() const;

    // The envelope for the call; handler exceptions become a 500 envelope.
    Json handle(ApiCall call) const;

private:
    struct Command {
        Access access;
        Handler handler;
        size_t bodyLimit = DefaultBodyLimit;
    };
    TokenResolver m_resolver;
    std::map<std::string, Command> m_commands;
};

} // namespace ekinora::server
