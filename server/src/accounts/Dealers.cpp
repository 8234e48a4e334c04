#include "accounts/Dealers.h"

#include "accounts/Registration.h"
#include "accounts/SmsChallenges.h"
#include "core/Envelope.h"
#include "core/Params.h"
#include "notifications/Notifications.h"

namespace ekinora::server::accounts {

namespace {

const std::string DealerNotFound = "Bu numara ile kayıtlı bir bayi bulunamadı.";
const std::string Activated =
    "Bayi hesabınız onaylandı. Ekinora'ya cep telefonu numaranız ve SMS koduyla giriş yapabilirsiniz.";

Json dealerInformation(Database& db, std::int64_t userId) {
    auto row = db.queryRow("SELECT dealer_name, tc_no, tax_number FROM users WHERE id = ?", {userId});
    return Json{{"dealerName", row->at("dealer_name")},
                {"TCNo", row->at("tc_no")},
                {"taxNumber", row->at("tax_number")}};
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

namespace {

Json shop(Database& db, const ApiCall& call) {
    return envelope::success(dealerInformation(db, call.userId));
}

Json updateShop(Database& db, const ApiCall& call) {
    Params p(call);
    const DealerData dealer = readDealer(p, db, call.userId);
    if (!p.ok()) return p.rejection();
    db.execute("UPDATE users SET dealer_name = ?, tax_number = ?, tc_no = ? WHERE id = ?",
               {dealer.name, dealer.taxNumber, dealer.identityNumber, call.userId});
    return envelope::success(dealerInformation(db, call.userId));
}

Json pendingDealers(Database& db, const ApiCall&) {
    return envelope::success(
        Json{{"dealers", db.query("SELECT u.id, u.fullname, u.phone, u.dealer_name AS dealerName,"
                                  " u.tax_number AS taxNumber, c.name AS city, k.name AS county,"
                                  " u.created_at AS createdAt"
                                  " FROM users u LEFT JOIN cities c ON c.id = u.city_id"
                                  " LEFT JOIN counties k ON k.id = u.county_id"
                                  " WHERE u.type = 'dealer' AND u.active = 0 ORDER BY u.id")}});
}

Json activate(Database& db, const ApiCall& call) {
    const std::string phone = Params(call).text("phone").value_or("");
    switch (activateDealer(db, phone)) {
    case Activation::Activated:
        return envelope::success(Json{{"phone", *sms::normalizePhone(phone)}, {"active", 1}});
    case Activation::AlreadyActive:
        return envelope::success(Json{{"phone", *sms::normalizePhone(phone)}, {"active", 1}},
                                 "Bu bayi hesabı zaten aktif.");
    case Activation::NotFound:
        break;
    }
    return envelope::rejection({{"phone", DealerNotFound}});
}

} // namespace

void registerDealerCommands(Dispatch& dispatch, Database& db) {
    dispatch.add("dealer/information", Access::Dealer, shop, db);
    dispatch.add("dealer/update-information", Access::Dealer, updateShop, db);
    dispatch.add("admin/pending-dealers", Access::Staff, pendingDealers, db);
    dispatch.add("admin/activate-dealer", Access::Staff, activate, db);
}

} // namespace ekinora::server::accounts
