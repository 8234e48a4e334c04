#include "accounts/Login.h"

#include "accounts/Accounts.h"
#include "accounts/SmsChallenges.h"
#include "core/Envelope.h"
#include "core/Params.h"

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
    return envelope::rejection({{field, text}}, std::move(data));
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

struct Context {
    Database& db;
    Clock now;
    SmsSink send;
    bool demo;
};

Json requestCode(const Context& c, const ApiCall& call) {
    Params p(call);
    const auto typed = p.required("phoneNumber", PhoneMissing);
    if (!p.ok()) return p.rejection();
    const auto phone = sms::normalizePhone(typed);
    if (!phone) return reject("phoneNumber", PhoneInvalid);

    const std::string purpose = p.text("type") == "register" ? "register" : "login";
    const auto issued = sms::issue(c.db, *phone, purpose, c.now());
    // An inactive account counts as known: its login ends in the activation notice.
    const bool known = c.db.scalar("SELECT COUNT(*) FROM users WHERE phone = ?", {*phone}) > 0;
    if (c.send) c.send(*phone, issued.code);
    Json data{{"hash", issued.hash}, {"nextAction", known ? "login" : "register"}};
    if (c.demo) data["code"] = issued.code;
    return envelope::success(std::move(data));
}

Json checkCode(const Context& c, const ApiCall& call) {
    const Params p(call);
    const auto outcome = sms::verify(c.db, p.text("hash").value_or(""), p.text("code").value_or(""), c.now());
    if (auto rejected = codeRejection(outcome.result)) return *rejected;
    return envelope::success(Json{{"verified", true}});
}

Json login(const Context& c, const ApiCall& call) {
    const Params p(call);
    Database& db = c.db;
    const std::string hash = p.text("hash").value_or("");
    const auto outcome = sms::verify(db, hash, p.text("code").value_or(""), c.now());
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
        const auto deviceId = p.filled("deviceId");
        const auto deviceType = p.filled("deviceType");
        db.execute("UPDATE users SET device_id = ?, device_type = ? WHERE id = ?",
                   {deviceId ? SqlValue(*deviceId) : SqlValue(nullptr),
                    deviceType ? SqlValue(*deviceType) : SqlValue(nullptr), userId});
        token = issueToken(db, userId);
    });
    if (token.empty()) return reject("code", CodeNotFound);
    auto record = userRecord(db, userId, token);
    if (!record) return envelope::failure(envelope::ServerError, envelope::ServerErrorText);
    return envelope::success(std::move(*record));
}

// The app clears its store before it sends this, so it usually comes without a token; a token that
// does come is withdrawn.
Json logout(Database& db, const ApiCall& call) {
    if (!call.token.empty()) db.execute("DELETE FROM tokens WHERE token = ?", {call.token});
    return envelope::success(nullptr);
}

} // namespace

void registerLoginCommands(Dispatch& dispatch, Database& db, LoginOptions options) {
    const Context c{db, options.clock ? options.clock : Clock(systemSeconds), options.sendSms, options.demo};
    dispatch.add("sms/get", Access::Public, requestCode, c);
    dispatch.add("sms/check", Access::Public, checkCode, c);
    dispatch.add("farmer/login", Access::Public, login, c);
    dispatch.add("farmer/logout", Access::Public, logout, db);
}

} // namespace ekinora::server::accounts
