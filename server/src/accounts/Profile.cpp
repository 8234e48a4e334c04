#include "accounts/Profile.h"

#include "accounts/Accounts.h"
#include "accounts/Validation.h"
#include "core/Envelope.h"
#include "core/Params.h"

namespace ekinora::server::accounts {

namespace {

const std::string AnswerMissing = "Lütfen izin tercihinizi belirtiniz.";
const std::string AnswerInvalid = "İzin tercihiniz okunamadı, lütfen yeniden seçiniz.";
const std::string FullnameMissing = "Lütfen adınızı ve soyadınızı giriniz.";
const std::string FullnameInvalid = "Ad soyad en fazla 100 karakter olabilir ve rakam içeremez.";
const std::string EmailInvalid = "Lütfen geçerli bir e-posta adresi giriniz.";
const std::string CountyUnknown = "Seçtiğiniz ilçe bulunamadı.";

const char* const Permissions[] = {"etk-sms", "etk-advertising", "etk-email"};

Json profileReply(Database& db, const ApiCall& call) {
    auto record = profileRecord(db, call.userId, call.token);
    if (!record) return envelope::failure(envelope::ServerError, envelope::ServerErrorText);
    return envelope::success(std::move(*record));
}

} // namespace

std::optional<Json> profileRecord(Database& db, std::int64_t userId, const std::string& token) {
    auto record = userRecord(db, userId, token);
    if (!record) return std::nullopt;
    const bool answered = db.scalar("SELECT etk_answered FROM users WHERE id = ?", {userId}) != 0;
    (*record)["etkPopup"] = answered ? 0 : 1;
    return record;
}

namespace {

// The consent panel sends all three answers; three refusals are an answer too.
Json answerConsents(Database& db, const ApiCall& call) {
    Params p(call);
    Answer answers[3];
    for (int i = 0; i < 3; ++i)
        answers[i] = p.requiredAnswer(Permissions[i], AnswerMissing, AnswerInvalid);
    if (!p.ok()) return p.rejection();

    auto flag = [](Answer a) { return std::int64_t(a == Answer::Yes ? 1 : 0); };
    db.execute("UPDATE users SET etk_sms = ?, etk_advertising = ?, etk_email = ?, etk_answered = 1,"
               " etk_answered_at = strftime('%Y-%m-%d %H:%M:%S', 'now') WHERE id = ?",
               {flag(answers[0]), flag(answers[1]), flag(answers[2]), call.userId});
    return profileReply(db, call);
}

// "countyId" may be missing: the app sends the form without it when the county text matches no
// county, and the place then stays as it was. An empty e-mail removes the address.
Json updateProfile(Database& db, const ApiCall& call) {
    Params p(call);
    const std::string fullname = p.required("fullname", FullnameMissing);
    if (!fullname.empty() &&
        (characterCount(fullname) > 100 || fullname.find_first_of("0123456789<>") != std::string::npos))
        p.fail("fullname", FullnameInvalid);

    const std::string email = p.trimmed("email");
    if (!email.empty() && !isValidEmail(email)) p.fail("email", EmailInvalid);

    std::optional<Json> place;
    if (p.has("countyId")) {
        const auto county = p.integer("countyId");
        if (county) place = db.queryRow("SELECT id, city_id FROM counties WHERE id = ?", {*county});
        if (!place) p.fail("countyId", CountyUnknown);
    }
    if (!p.ok()) return p.rejection();

    db.transaction([&] {
        db.execute("UPDATE users SET fullname = ?, email = ? WHERE id = ?",
                   {fullname, email.empty() ? SqlValue(nullptr) : SqlValue(email), call.userId});
        if (place) {
            const auto cityId = place->at("city_id").get<std::int64_t>();
            const auto contact = regionalContact(db, cityId);
            db.execute("UPDATE users SET city_id = ?, county_id = ?, region_fullname = ?,"
                       " region_phonenumber = ? WHERE id = ?",
                       {cityId, place->at("id").get<std::int64_t>(), contact.fullname, contact.phonenumber,
                        call.userId});
        }
    });
    return profileReply(db, call);
}

} // namespace

// Every account keeps a profile: the record the app stores is read from here for any role.
void registerProfileCommands(Dispatch& dispatch, Database& db) {
    dispatch.add("farmer/profile", Access::Account, profileReply, db);
    dispatch.add("farmer/etk", Access::Account, answerConsents, db);
    dispatch.add("farmer/update-profile", Access::Account, updateProfile, db);
}

} // namespace ekinora::server::accounts
