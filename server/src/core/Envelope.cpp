#include "core/Envelope.h"

namespace ekinora::server::envelope {

Json success(Json data, Json message) {
    Json reply = Json::object();
    reply["status"] = Ok;
    reply["message"] = std::move(message);
    reply["errors"] = Json::object();
    reply["data"] = std::move(data);
    return reply;
}

Json rejection(const std::string& message, const FieldErrors& errors, Json data) {
    Json fields = Json::object();
    for (const auto& [field, text] : errors)
        fields[field] = text;
    Json reply = Json::object();
    reply["status"] = Rejected;
    reply["message"] = message;
    reply["errors"] = std::move(fields);
    reply["data"] = std::move(data);
    return reply;
}

Json rejection(const FieldErrors& errors, Json data) {
    return rejection(errors.empty() ? std::string() : errors.front().second, errors, std::move(data));
}

Json failure(int status, const std::string& message) {
    Json reply = Json::object();
    reply["status"] = status;
    reply["message"] = message;
    reply["data"] = nullptr;
    return reply;
}

Json tooLarge(size_t limit) {
    const size_t mib = 1024 * 1024;
    const std::string amount =
        limit % mib == 0 ? std::to_string(limit / mib) + " MB" : std::to_string((limit + 1023) / 1024) + " KB";
    return failure(TooLarge, "Gönderilen bilgi çok büyük, en fazla " + amount + " gönderilebilir.");
}

std::string serialize(const Json& reply) {
    return reply.dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace ekinora::server::envelope
