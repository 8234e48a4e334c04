#pragma once

#include "core/ApiCall.h"
#include "core/Auth.h"

#include <functional>
#include <map>
#include <string>

namespace ekinora::server {

using Handler = std::function<Json(const ApiCall&)>;

struct Command {
    bool needsAuth = false;
    Handler handler;
};

// Command name ("do") to handler. A command that needs a token gets the caller's account id in
// ApiCall::userId and never runs without one.
class Dispatch {
public:
    explicit Dispatch(TokenResolver resolver) : m_resolver(std::move(resolver)) {}

    void add(const std::string& name, bool needsAuth, Handler handler);
    bool contains(const std::string& name) const { return m_commands.count(name) > 0; }

    // The envelope for the call; handler exceptions become a 500 envelope.
    Json handle(ApiCall call) const;

private:
    TokenResolver m_resolver;
    std::map<std::string, Command> m_commands;
};

} // namespace ekinora::server
