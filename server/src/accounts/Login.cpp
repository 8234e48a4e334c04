#include "accounts/Login.h"

#include "accounts/Accounts.h"
#include "accounts/SmsChallenges.h"
#include "core/Envelope.h"

namespace ekinora::server::accounts {

namespace {

const std::string PhoneMissing = "Lütfen cep telefonu numaranızı giriniz.";
const std::string PhoneInvalid = "Lütfen geçerli bir cep telefonu numarası giriniz.";
const std::string CodeNotFound = "Kod bulunamadı";
const std::string CodeExpired = "Kodun süresi doldu, lütfen yeni kod isteyiniz.";
const std::string CodeWrong = "Lütfen kodu doğru giriniz";
const std::string AccountInactive = "Hesabınız henüz aktif edilmedi.";
const std::string NoAccount = "Bu numara ile kayıtlı bir hesap bulunamadı.";

Json reject(const std::string& field, const std::string& text, Json data = nullptr) {
    return envelope::rejection(text, {{field, text}}, std::move(data));
}

// The rejection for a code check that did not pass; nullopt when the code was right. The app
// tells the cases apart by "data": null for an unknown hash, {"action": null} for a wrong code.
std::optional<Json> codeRejection(sms::Result result) {
    switch (result) {
    case sms::Result::Verified:
        return std::nullopt;
    case sms::Result::Unknown:
        return reject("code", CodeNotFound);
    case sms::Result::Expired:
        return reject("code", CodeExpired);
    case sms::Result::WrongCode:
        return reject("code", CodeWrong, Json{{"action", nullptr}});
    }
    return reject("code", CodeNotFound);
}

std::optional<std::string> optionalText(const ApiCall& call, const char* name) {
    auto value = call.text(name);
    if (value && value->empty()) return std::nullopt;
    return value;
}

} // namespace

void registerLoginCommands(Dispatch& dispatch, Database& db, LoginOptions options) {
    Clock now = options.clock ? options.clock : Clock(systemSeconds);

    dispatch.add("sms/get", false, [&db, now, send = options.sendSms](const ApiCall& call) {
        const auto typed = call.text("phoneNumber");
        if (!typed || typed->find_first_not_of(' ') == std::string::npos)
            return reject("phoneNumber", PhoneMissing);
        const auto phone = sms::normalizePhone(*typed);
        if (!phone) return reject("phoneNumber", PhoneInvalid);

        const std::string purpose = call.text("type").value_or("") == "register" ? "register" : "login";
        const auto issued = sms::issue(db, *phone, purpose, now());
        // An inactive account counts as known: its login ends in the activation notice.
        const bool known = db.scalar("SELECT COUNT(*) FROM users WHERE phone = ?", {*phone}) > 0;
        if (send) send(*phone, issued.code);
        return envelope::success(
            Json{{"hash", issued.hash}, {"nextAction", known ? "login" : "register"}, {"code", issued.code}});
    });

    dispatch.add("sms/check", false, [&db, now](const ApiCall& call) {
        const auto outcome =
            sms::verify(db, call.text("hash").value_or(""), call.text("code").value_or(""), now());
        if (auto rejected = codeRejection(outcome.result)) return *rejected;
        return envelope::success(Json{{"verified", true}});
    });

    dispatch.add("farmer/login", false, [&db, now](const ApiCall& call) {
        const std::string hash = call.text("hash").value_or("");
        const auto outcome = sms::verify(db, hash, call.text("code").value_or(""), now());
        if (auto rejected = codeRejection(outcome.result)) return *rejected;

        auto account = db.queryRow("SELECT id, active FROM users WHERE phone = ?", {outcome.phone});
        // The challenge stays verified in both refusals, so the same hash can still register.
        if (!account) return reject("phoneNumber", NoAccount, Json{{"action", "register"}});
        if (account->at("active").get<std::int64_t>() == 0)
            return reject("account", AccountInactive, Json{{"action", "notActiveDealer"}});

        const auto userId = account->at("id").get<std::int64_t>();
        std::string token;
        db.transaction([&] {
            if (!sms::consume(db, hash)) return;
            const auto deviceId = optionalText(call, "deviceId");
            const auto deviceType = optionalText(call, "deviceType");
            db.execute("UPDATE users SET device_id = ?, device_type = ? WHERE id = ?",
                       {deviceId ? SqlValue(*deviceId) : SqlValue(nullptr),
                        deviceType ? SqlValue(*deviceType) : SqlValue(nullptr), userId});
            token = issueToken(db, userId);
        });
        if (token.empty()) return reject("code", CodeNotFound);
        auto record = userRecord(db, userId, token);
        if (!record) return envelope::failure(envelope::ServerError, envelope::ServerErrorText);
        return envelope::success(std::move(*record));
    });

    // The app clears its store before it sends this, so it usually comes without a token; a
    // token that does come is withdrawn.
    dispatch.add("farmer/logout", false, [&db](const ApiCall& call) {
        if (!call.token.empty()) db.execute("DELETE FROM tokens WHERE token = ?", {call.token});
        return envelope::success(nullptr);
    });
}

} // namespace ekinora::server::accounts
