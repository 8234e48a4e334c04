#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

namespace ekinora::server {

using Json = nlohmann::ordered_json;

// Every reply under /api is an envelope: "status", "message", "errors", "data". The app reads
// "status" only; the HTTP status stays 200 so that a rejection reaches its success path.
namespace envelope {

inline constexpr int Ok = 200;
inline constexpr int Rejected = 400;
inline constexpr int Unauthorized = 401;
inline constexpr int NotFound = 404;
inline constexpr int Forbidden = 403;
inline constexpr int TooLarge = 413;
inline constexpr int ServerError = 500;

inline const std::string UnknownCommand = "Bilinmeyen komut";
inline const std::string SessionExpired = "Oturumunuz sona erdi, lütfen tekrar giriş yapınız.";
inline const std::string NotFoundText = "Aradığınız adres bulunamadı";
inline const std::string ServerErrorText = "Beklenmeyen bir hata oluştu, lütfen daha sonra tekrar deneyiniz.";
inline const std::string NotAllowed = "Bu işlem için yetkiniz bulunmuyor.";
inline const std::string UnreadableBody = "Gönderilen bilgi okunamadı, lütfen tekrar deneyiniz.";

// The largest body the analytics collector takes; commands have their own limits (Dispatch).
inline constexpr size_t BodyLimit = 1024 * 1024;

using FieldErrors = std::vector<std::pair<std::string, std::string>>;

Json success(Json data = Json::object(), Json message = "");
// A rejection of the input: "errors" keeps the fields in the order given, since the app shows
// the first one.
Json rejection(const std::string& message, const FieldErrors& errors, Json data = nullptr);
// The same with the first error as "message": what the app shows.
Json rejection(const FieldErrors& errors, Json data = nullptr);
Json failure(int status, const std::string& message);
// The refusal of a body larger than the limit, which the message names ("64 KB", "1 MB").
Json tooLarge(size_t limit);

// UTF-8 as it is (no \u escapes); malformed bytes from a client are replaced, never thrown on.
std::string serialize(const Json& reply);

inline const char* ContentType = "application/json; charset=utf-8";

} // namespace envelope
} // namespace ekinora::server
