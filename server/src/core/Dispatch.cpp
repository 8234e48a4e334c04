#include "core/Dispatch.h"

#include "core/Envelope.h"

#include <iostream>
#include <stdexcept>

namespace ekinora::server {

void Dispatch::add(const std::string& name, bool needsAuth, Handler handler) {
    if (!m_commands.emplace(name, Command{needsAuth, std::move(handler)}).second)
        throw std::logic_error("command registered twice: " + name);
}

Json Dispatch::handle(ApiCall call) const {
    auto it = m_commands.find(call.command);
    if (it == m_commands.end()) return envelope::failure(envelope::NotFound, envelope::UnknownCommand);

    const Command& command = it->second;
    if (command.needsAuth) {
        std::optional<std::int64_t> user;
        if (!call.token.empty()) user = m_resolver(call.token);
        if (!user) return envelope::failure(envelope::Unauthorized, envelope::SessionExpired);
        call.userId = *user;
    } else {
        call.userId = 0;
    }

    try {
        return command.handler(call);
    } catch (const std::exception& e) {
        std::cerr << "komut " << call.command << " başarısız: " << e.what() << std::endl;
        return envelope::failure(envelope::ServerError, envelope::ServerErrorText);
    }
}

} // namespace ekinora::server
