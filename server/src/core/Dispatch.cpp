#include "core/Dispatch.h"

#include "core/Envelope.h"

#include <algorithm>
#include <iostream>
#include <stdexcept>

namespace ekinora::server {

void Dispatch::add(const std::string& name, Access access, Handler handler) {
    if (!m_commands.emplace(name, Command{access, std::move(handler)}).second)
        throw std::logic_error("command registered twice: " + name);
}

void Dispatch::setBodyLimit(const std::string& name, size_t bytes) {
    m_commands.at(name).bodyLimit = bytes;
}

size_t Dispatch::bodyLimit(const std::string& name) const {
    auto it = m_commands.find(name);
    return it == m_commands.end() ? DefaultBodyLimit : it->second.bodyLimit;
}

size_t Dispatch::largestBodyLimit() const {
    size_t largest = DefaultBodyLimit;
    for (const auto& [name, command] : m_commands)
        largest = std::max(largest, command.bodyLimit);
    return largest;
}

std::vector<std::pair<std::string, Access>> Dispatch::commands() const {
    std::vector<std::pair<std::string, Access>> out;
    for (const auto& [name, command] : m_commands)
        out.emplace_back(name, command.access);
    return out;
}

Json Dispatch::handle(ApiCall call) const {
    auto it = m_commands.find(call.command);
    if (it == m_commands.end()) return envelope::failure(envelope::NotFound, envelope::UnknownCommand);

    const Command& command = it->second;
    call.userId = 0;
    call.role.clear();
    if (command.access != Access::Public) {
        std::optional<Caller> caller;
        if (!call.token.empty()) caller = m_resolver(call.token);
        if (!caller) return envelope::failure(envelope::Unauthorized, envelope::SessionExpired);
        if (!allows(command.access, caller->role))
            return envelope::failure(envelope::Forbidden, envelope::NotAllowed);
        call.userId = caller->id;
        call.role = std::move(caller->role);
    }

    try {
        return command.handler(call);
    } catch (const std::exception& e) {
        std::cerr << "komut " << call.command << " başarısız: " << e.what() << std::endl;
        return envelope::failure(envelope::ServerError, envelope::ServerErrorText);
    }
}

} // namespace ekinora::server
