#include "accounts/Dealers.h"

#include "accounts/Registration.h"
#include "accounts/SmsChallenges.h"
#include "accounts/Validation.h"
#include "core/Envelope.h"
#include "notifications/Notifications.h"

namespace ekinora::server::accounts {

namespace {

const std::string NotADealer = "Bu hesaba ait bayi bilgisi bulunamadı.";
const std::string StaffOnly = "Bu işlem için yetkiniz bulunmuyor.";
const std::string DealerNotFound = "Bu numara ile kayıtlı bir bayi bulunamadı.";
const std::string Activated =
    "Bayi hesabınız onaylandı. Ekinora'ya cep telefonu numaranız ve SMS koduyla giriş yapabilirsiniz.";

bool isType(Database& db, std::int64_t userId, const char* type) {
    return db.scalar("SELECT COUNT(*) FROM users WHERE id = ? AND type = ?", {userId, std::string(type)}) > 0;
}

Json dealerInformation(Database& db, std::int64_t userId) {
    auto row = db.queryRow("SELECT dealer_name, tc_no, tax_number FROM users WHERE id = ?", {userId});
    return Json{{"dealerName", row->at("dealer_name")},
                {"TCNo", row->at("tc_no")},
                {"taxNumber", row->at("tax_number")}};
}

Json staffOnly() {
    return envelope::failure(envelope::Forbidden, StaffOnly);
}

} // namespace

Activation activateDealer(Database& db, const std::string& phone) {
    const auto normalized = sms::normalizePhone(phone);
    if (!normalized) return Activation::NotFound;
    Activation result = Activation::NotFound;
    db.transaction([&] {
        auto dealer =
            db.queryRow("SELECT id, active FROM users WHERE phone = ? AND type = 'dealer'", {*normalized});
        if (!dealer) return;
        if (dealer->at("active").get<std::int64_t>() != 0) {
            result = Activation::AlreadyActive;
            return;
        }
        const auto userId = dealer->at("id").get<std::int64_t>();
        db.execute("UPDATE users SET active = 1 WHERE id = ?", {userId});
        notifications::notify(db, userId, Activated);
        result = Activation::Activated;
    });
    return result;
}

void registerDealerCommands(Dispatch& dispatch, Database& db) {
    dispatch.add("dealer/information", true, [&db](const ApiCall& call) {
        if (!isType(db, call.userId, "dealer"))
            return envelope::rejection(NotADealer, {{"dealer", NotADealer}});
        return envelope::success(dealerInformation(db, call.userId));
    });

    dispatch.add("dealer/update-information", true, [&db](const ApiCall& call) {
        if (!isType(db, call.userId, "dealer"))
            return envelope::rejection(NotADealer, {{"dealer", NotADealer}});
        const std::string name = trimmedText(call, "dealerName");
        const std::string taxNumber = trimmedText(call, "taxNumber");
        const std::string identityNumber = trimmedText(call, "TCNo");
        const auto errors = dealerErrors(db, name, taxNumber, identityNumber, call.userId);
        if (!errors.empty()) return envelope::rejection(errors.front().second, errors);
        db.execute("UPDATE users SET dealer_name = ?, tax_number = ?, tc_no = ? WHERE id = ?",
                   {name, taxNumber, identityNumber, call.userId});
        return envelope::success(dealerInformation(db, call.userId));
    });

    dispatch.add("admin/pending-dealers", true, [&db](const ApiCall& call) {
        if (!isType(db, call.userId, "adminUser")) return staffOnly();
        return envelope::success(
            Json{{"dealers", db.query("SELECT u.id, u.fullname, u.phone, u.dealer_name AS dealerName,"
                                      " u.tax_number AS taxNumber, c.name AS city, k.name AS county,"
                                      " u.created_at AS createdAt"
                                      " FROM users u LEFT JOIN cities c ON c.id = u.city_id"
                                      " LEFT JOIN counties k ON k.id = u.county_id"
                                      " WHERE u.type = 'dealer' AND u.active = 0 ORDER BY u.id")}});
    });

    dispatch.add("admin/activate-dealer", true, [&db](const ApiCall& call) {
        if (!isType(db, call.userId, "adminUser")) return staffOnly();
        const std::string phone = call.text("phone").value_or("");
        switch (activateDealer(db, phone)) {
        case Activation::Activated:
            return envelope::success(Json{{"phone", *sms::normalizePhone(phone)}, {"active", 1}});
        case Activation::AlreadyActive:
            return envelope::success(Json{{"phone", *sms::normalizePhone(phone)}, {"active", 1}},
                                     "Bu bayi hesabı zaten aktif.");
        case Activation::NotFound:
            break;
        }
        return envelope::rejection(DealerNotFound, {{"phone", DealerNotFound}});
    });
}

} // namespace ekinora::server::accounts
