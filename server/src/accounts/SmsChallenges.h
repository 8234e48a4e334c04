#pragma once

#include "core/Database.h"

#include <cstdint>
#include <optional>
#include <string>

namespace ekinora::server::accounts::sms {

inline constexpr std::int64_t CodeLifetimeSeconds = 5 * 60;
// After this many wrong codes the challenge is spent, the right code included.
inline constexpr int MaxWrongAttempts = 5;
// A verified code stays good this long for the registration that follows: the wizard takes the
// user through consents, personal data and crops before it sends anything.
inline constexpr std::int64_t RegistrationWindowSeconds = 30 * 60;

// A mobile number as the service keeps it: 11 digits starting with "05", blanks removed.
// nullopt for anything else.
std::optional<std::string> normalizePhone(const std::string& typed);

struct Issued {
    std::string hash; // 32 hexadecimal digits, new for every request
    std::string code; // 6 digits
};

// Stores a new challenge for the phone and retires the phone's earlier ones; purpose is "login"
// or "register".
Issued issue(Database& db, const std::string& phone, const std::string& purpose, std::int64_t now);

enum class Result {
    Verified, // right code; the challenge is marked verified
    Unknown,  // no such hash, used for a login, or replaced by a newer code
    Expired,  // past its lifetime or out of attempts
    WrongCode // counted as an attempt
};

struct Outcome {
    Result result = Result::Unknown;
    std::string phone; // set when Verified
};

// Checks a code against the challenge and counts a wrong one, atomically.
Outcome verify(Database& db, const std::string& hash, const std::string& code, std::int64_t now);

// Marks a challenge as used, so that its hash is unknown from then on. False when it already was,
// so that of two logins racing on one code only one goes through.
bool consume(Database& db, const std::string& hash);

// The phone of a challenge whose code was verified within the registration window and that is not
// used yet: what a registration needs before it creates an account (it then consumes the hash).
std::optional<std::string> verifiedPhone(Database& db, const std::string& hash, std::int64_t now);

} // namespace ekinora::server::accounts::sms
