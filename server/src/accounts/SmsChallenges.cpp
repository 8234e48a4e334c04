#include "accounts/SmsChallenges.h"

#include <random>

namespace ekinora::server::accounts::sms {

namespace {

// Expired challenges stay a day for the console's sake, then go.
constexpr std::int64_t KeepExpiredSeconds = 24 * 60 * 60;

// Hashes and codes guard accounts, so they come from the system's entropy source, not from a
// seeded generator.
std::uint32_t randomWord() {
    thread_local std::random_device source;
    return source();
}

} // namespace

std::optional<std::string> normalizePhone(const std::string& typed) {
    std::string phone;
    for (char c : typed) {
        if (c == ' ') continue;
        if (c < '0' || c > '9') return std::nullopt;
        phone.push_back(c);
    }
    if (phone.size() != 11 || phone.rfind("05", 0) != 0) return std::nullopt;
    return phone;
}

Issued issue(Database& db, const std::string& phone, const std::string& purpose, std::int64_t now) {
    static const char digits[] = "0123456789abcdef";
    Issued issued;
    for (int i = 0; i < 4; ++i) {
        const auto word = randomWord();
        for (int shift = 0; shift < 32; shift += 4)
            issued.hash.push_back(digits[(word >> shift) & 0xf]);
    }
    // 100000..999999: a code never starts with 0, so one sent as a JSON number still matches.
    issued.code = std::to_string(100000 + randomWord() % 900000);

    db.transaction([&] {
        db.execute("DELETE FROM sms_challenges WHERE expires_at < ?", {now - KeepExpiredSeconds});
        // Only the newest code of a phone counts, which also keeps guessing to one code at a time.
        db.execute("UPDATE sms_challenges SET consumed = 1 WHERE phone = ? AND consumed = 0", {phone});
        db.execute("INSERT INTO sms_challenges (hash, phone, code, purpose, created_at, expires_at)"
                   " VALUES (?, ?, ?, ?, ?, ?)",
                   {issued.hash, phone, issued.code, purpose, now, now + CodeLifetimeSeconds});
    });
    return issued;
}

Outcome verify(Database& db, const std::string& hash, const std::string& code, std::int64_t now) {
    Outcome outcome;
    db.transaction([&] {
        auto row = db.queryRow("SELECT phone, code, expires_at, attempts FROM sms_challenges"
                               " WHERE hash = ? AND consumed = 0",
                               {hash});
        if (!row) {
            outcome.result = Result::Unknown;
            return;
        }
        if (now >= row->at("expires_at").get<std::int64_t>() ||
            row->at("attempts").get<std::int64_t>() >= MaxWrongAttempts) {
            outcome.result = Result::Expired;
            return;
        }
        if (code.empty() || code != row->at("code").get<std::string>()) {
            db.execute("UPDATE sms_challenges SET attempts = attempts + 1 WHERE hash = ?", {hash});
            outcome.result = Result::WrongCode;
            return;
        }
        db.execute("UPDATE sms_challenges SET verified_at = ? WHERE hash = ?", {now, hash});
        outcome.result = Result::Verified;
        outcome.phone = row->at("phone").get<std::string>();
    });
    return outcome;
}

bool consume(Database& db, const std::string& hash) {
    return db.execute("UPDATE sms_challenges SET consumed = 1 WHERE hash = ? AND consumed = 0", {hash}) > 0;
}

std::optional<std::string> verifiedPhone(Database& db, const std::string& hash, std::int64_t now) {
    auto row = db.queryRow("SELECT phone FROM sms_challenges"
                           " WHERE hash = ? AND consumed = 0 AND verified_at > ?",
                           {hash, now - RegistrationWindowSeconds});
    if (!row) return std::nullopt;
    return row->at("phone").get<std::string>();
}

} // namespace ekinora::server::accounts::sms
