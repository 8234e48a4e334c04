#include "accounts/Profile.h"

#include "accounts/Accounts.h"
#include "accounts/Validation.h"
#include "core/Envelope.h"

namespace ekinora::server::accounts {

namespace {

const std::string AnswerMissing = "Lütfen izin tercihinizi belirtiniz.";
const std::string AnswerInvalid = "İzin tercihiniz okunamadı, lütfen yeniden seçiniz.";
const std::string FullnameMissing = "Lütfen adınızı ve soyadınızı giriniz.";
const std::string FullnameInvalid = "Ad soyad en fazla 100 karakter olabilir ve rakam içeremez.";
const std::string EmailInvalid = "Lütfen geçerli bir e-posta adresi giriniz.";
const std::string CountyUnknown = "Seçtiğiniz ilçe bulunamadı.";

const char* const Permissions[] = {"etk-sms", "etk-advertising", "etk-email"};

Json rejected(const envelope::FieldErrors& errors) {
    return envelope::rejection(errors.front().second, errors);
}

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

void registerProfileCommands(Dispatch& dispatch, Database& db) {
    dispatch.add("farmer/profile", true, [&db](const ApiCall& call) { return profileReply(db, call); });

    // The consent panel sends all three answers; three refusals are an answer too.
    dispatch.add("farmer/etk", true, [&db](const ApiCall& call) {
        envelope::FieldErrors errors;
        Answer answers[3];
        for (int i = 0; i < 3; ++i) {
            answers[i] = answer(call, Permissions[i]);
            if (answers[i] == Answer::Absent) errors.emplace_back(Permissions[i], AnswerMissing);
            if (answers[i] == Answer::Invalid) errors.emplace_back(Permissions[i], AnswerInvalid);
        }
        if (!errors.empty()) return rejected(errors);

        auto flag = [](Answer a) { return std::int64_t(a == Answer::Yes ? 1 : 0); };
        db.execute("UPDATE users SET etk_sms = ?, etk_advertising = ?, etk_email = ?, etk_answered = 1,"
                   " etk_answered_at = strftime('%Y-%m-%d %H:%M:%S', 'now') WHERE id = ?",
                   {flag(answers[0]), flag(answers[1]), flag(answers[2]), call.userId});
        return profileReply(db, call);
    });

    // "countyId" may be missing: the app sends the form without it when the county text matches no
    // county, and the place then stays as it was. An empty e-mail removes the address.
    dispatch.add("farmer/update-profile", true, [&db](const ApiCall& call) {
        envelope::FieldErrors errors;
        const std::string fullname = trimmedText(call, "fullname");
        if (fullname.empty())
            errors.emplace_back("fullname", FullnameMissing);
        else if (characterCount(fullname) > 100 ||
                 fullname.find_first_of("0123456789<>") != std::string::npos)
            errors.emplace_back("fullname", FullnameInvalid);

        const std::string email = trimmedText(call, "email");
        if (!email.empty() && !isValidEmail(email)) errors.emplace_back("email", EmailInvalid);

        std::optional<Json> place;
        if (call.has("countyId")) {
            const auto county = wholeNumber(call.params["countyId"]);
            if (county) place = db.queryRow("SELECT id, city_id FROM counties WHERE id = ?", {*county});
            if (!place) errors.emplace_back("countyId", CountyUnknown);
        }
        if (!errors.empty()) return rejected(errors);

        db.transaction([&] {
            db.execute("UPDATE users SET fullname = ?, email = ? WHERE id = ?",
                       {fullname, email.empty() ? SqlValue(nullptr) : SqlValue(email), call.userId});
            if (place) {
                const auto cityId = place->at("city_id").get<std::int64_t>();
                const auto contact = regionalContact(db, cityId);
                db.execute("UPDATE users SET city_id = ?, county_id = ?, region_fullname = ?,"
                           " region_phonenumber = ? WHERE id = ?",
                           {cityId, place->at("id").get<std::int64_t>(), contact.fullname,
                            contact.phonenumber, call.userId});
            }
        });
        return profileReply(db, call);
    });
}

} // namespace ekinora::server::accounts
