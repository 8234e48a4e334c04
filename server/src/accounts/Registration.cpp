#include "accounts/Registration.h"

#include "accounts/Accounts.h"
#include "accounts/SmsChallenges.h"
#include "accounts/Validation.h"
#include "farms/Calendar.h"
#include "farms/Farms.h"
#include "notifications/Notifications.h"

#include <algorithm>
#include <vector>

namespace ekinora::server::accounts {

namespace {

const std::string HashInvalid = "Telefon doğrulamanızın süresi doldu, lütfen yeniden SMS kodu isteyiniz.";
const std::string PhoneTaken = "Bu numara ile kayıtlı bir hesap zaten bulunuyor.";
const std::string FirstNameMissing = "Lütfen adınızı giriniz.";
const std::string FirstNameInvalid = "Lütfen geçerli bir ad giriniz.";
const std::string LastNameMissing = "Lütfen soyadınızı giriniz.";
const std::string LastNameInvalid = "Lütfen geçerli bir soyad giriniz.";
const std::string CountyMissing = "Lütfen il ve ilçe seçiniz.";
const std::string EmailInvalid = "Lütfen geçerli bir e-posta adresi giriniz.";
const std::string AnswerInvalid = "İzin tercihiniz okunamadı, lütfen yeniden seçiniz.";
const std::string TermMissing = "Kayıt olmak için Kullanım Şartlarını onaylamanız gerekmektedir.";

const std::string FieldsInvalid = "Tarla bilgileri okunamadı, lütfen tarlalarınızı yeniden ekleyiniz.";
const std::string FieldsTooMany = "En fazla 3 tarla ekleyebilirsiniz.";
const std::string FieldProduceMissing = "Ürün seçmediniz.";
const std::string FieldProduceUnknown = "Seçtiğiniz ürün bulunamadı.";
const std::string FieldSizeMissing = "Tarla büyüklüğünü girmediniz.";
const std::string FieldSizeTooLarge = "Tarla büyüklüğü 10000 dekardan büyük olamaz.";
const std::string FieldProductsTooMany = "Bir tarla için en fazla 3 zirai ürün seçebilirsiniz.";
const std::string FieldProductUnknown = "Seçtiğiniz zirai ürün bulunamadı.";

const std::string DealerNameMissing = "Lütfen bayi adını giriniz.";
const std::string DealerNameTooLong = "Bayi adı en fazla 100 karakter olabilir.";
const std::string TaxNumberMissing = "Lütfen vergi numarasını giriniz.";
const std::string TaxNumberInvalid = "Vergi numarası 10 haneli olmalıdır.";
const std::string TaxNumberTaken = "Bu vergi numarası ile kayıtlı bir bayi bulunuyor.";
const std::string IdentityMissing = "Lütfen T.C. Kimlik Numaranızı giriniz.";
const std::string IdentityInvalid = "Lütfen geçerli bir T.C. Kimlik Numarası giriniz.";

const std::string DealerRegistered =
    "Kayıt işleminiz başarıyla gerçekleştirildi. Hesabınız aktif edildiğinde sisteme giriş yapabilirsiniz";
const std::string Welcome = "Ekinora'ya hoş geldiniz! Tarlalarınızı, bölgenizin hava durumunu ve ziraat "
                            "mühendislerimizin önerilerini artık tek yerden takip edebilirsiniz.";

constexpr double MaxFieldSize = 10000; // dekar
constexpr size_t MaxFields = 3;
constexpr size_t MaxProductsPerField = 3;
constexpr size_t MaxNameLength = 50;

const char* const Permissions[] = {"etk-sms", "etk-email", "etk-advertising"};

Json rejected(const envelope::FieldErrors& errors) {
    return envelope::rejection(errors.front().second, errors);
}

// What both registrations take: the verified phone, the person, the place and the consents.
struct Applicant {
    std::string hash;
    std::string phone;
    std::string fullname;
    std::string email; // "" for none
    std::int64_t cityId = 0;
    std::int64_t countyId = 0;
    Answer permissions[3] = {Answer::Absent, Answer::Absent, Answer::Absent};
    std::optional<std::string> deviceId, deviceType;
};

void checkName(const std::string& name, const char* key, const std::string& missing,
               const std::string& invalid, envelope::FieldErrors& errors) {
    if (name.empty())
        errors.emplace_back(key, missing);
    else if (characterCount(name) > MaxNameLength || name.find_first_of("0123456789<>") != std::string::npos)
        errors.emplace_back(key, invalid);
}

// The person's part of a registration; the errors come in the order the app should show them.
envelope::FieldErrors readApplicant(const ApiCall& call, Database& db, std::int64_t now, Applicant& a) {
    envelope::FieldErrors errors;
    a.hash = call.text("hash").value_or("");
    const auto phone = sms::verifiedPhone(db, a.hash, now);
    if (!phone)
        errors.emplace_back("hash", HashInvalid);
    else if (db.scalar("SELECT COUNT(*) FROM users WHERE phone = ?", {*phone}) > 0)
        errors.emplace_back("phoneNumber", PhoneTaken);
    else
        a.phone = *phone;

    const std::string firstName = trimmedText(call, "firstName");
    const std::string lastName = trimmedText(call, "lastName");
    checkName(firstName, "firstName", FirstNameMissing, FirstNameInvalid, errors);
    checkName(lastName, "lastName", LastNameMissing, LastNameInvalid, errors);
    a.fullname = firstName + " " + lastName;

    const auto county = wholeNumber(call.params.value("countyId", Json()));
    auto place =
        county ? db.queryRow("SELECT id, city_id FROM counties WHERE id = ?", {*county}) : std::nullopt;
    if (!place) {
        errors.emplace_back("countyId", CountyMissing);
    } else {
        a.countyId = place->at("id").get<std::int64_t>();
        a.cityId = place->at("city_id").get<std::int64_t>();
    }

    a.email = trimmedText(call, "email");
    if (!a.email.empty() && !isValidEmail(a.email)) errors.emplace_back("email", EmailInvalid);

    for (int i = 0; i < 3; ++i)
        a.permissions[i] = answer(call, Permissions[i]);
    a.deviceId = call.text("deviceId");
    if (a.deviceId && a.deviceId->empty()) a.deviceId.reset();
    a.deviceType = call.text("deviceType");
    if (a.deviceType && a.deviceType->empty()) a.deviceType.reset();
    return errors;
}

// Consents come last in the form, so their errors come last too.
void checkConsents(const ApiCall& call, const Applicant& a, envelope::FieldErrors& errors) {
    for (int i = 0; i < 3; ++i)
        if (a.permissions[i] == Answer::Invalid) errors.emplace_back(Permissions[i], AnswerInvalid);
    if (call.text("term").value_or("") != "yes") errors.emplace_back("term", TermMissing);
}

// The crops of a farmer's registration. A crop the app has edited carries the crop kind under "id"
// instead of "produceId"; both are read.
std::optional<std::string> readFields(const ApiCall& call, Database& db, std::vector<farms::FarmInput>& out) {
    Json fields = call.params.value("fields", Json());
    if (fields.is_null()) return std::nullopt;
    if (fields.is_string()) fields = Json::parse(fields.get<std::string>(), nullptr, false);
    if (!fields.is_array()) return FieldsInvalid;
    if (fields.size() > MaxFields) return FieldsTooMany;

    for (const Json& element : fields) {
        if (!element.is_object()) return FieldsInvalid;
        farms::FarmInput field;
        const Json kind = element.contains("produceId") ? element["produceId"] : element.value("id", Json());
        const auto produceId = wholeNumber(kind);
        if (!produceId) return FieldProduceMissing;
        if (db.scalar("SELECT COUNT(*) FROM produces WHERE id = ?", {*produceId}) == 0)
            return FieldProduceUnknown;
        field.produceId = *produceId;

        const auto size = leadingNumber(element.value("range", Json()));
        if (!size || !(*size > 0)) return FieldSizeMissing;
        if (!(*size <= MaxFieldSize)) return FieldSizeTooLarge;
        field.size = *size;

        Json aps = element.value("aps", Json());
        if (aps.is_null()) aps = Json::array();
        if (!aps.is_array()) return FieldsInvalid;
        for (const Json& product : aps) {
            const auto id = wholeNumber(product);
            if (!id) return FieldsInvalid;
            if (std::find(field.products.begin(), field.products.end(), *id) != field.products.end()) continue;
            if (db.scalar("SELECT COUNT(*) FROM aps WHERE id = ?", {*id}) == 0) return FieldProductUnknown;
            field.products.push_back(*id);
        }
        if (field.products.size() > MaxProductsPerField) return FieldProductsTooMany;
        out.push_back(std::move(field));
    }
    return std::nullopt;
}

SqlValue nullable(const std::optional<std::string>& text) {
    return text ? SqlValue(*text) : SqlValue(nullptr);
}

SqlValue permission(Answer a) {
    if (a == Answer::Yes) return std::int64_t(1);
    if (a == Answer::No) return std::int64_t(0);
    return nullptr;
}

struct DealerData {
    std::string name, taxNumber, identityNumber;
};

// Inserts the account and spends the hash, inside the caller's transaction. 0 when the hash was
// spent or the phone registered meanwhile, by a request that raced this one.
std::int64_t createAccount(Database& db, const Applicant& a, const std::string& type, bool active,
                           const DealerData* dealer) {
    if (!sms::consume(db, a.hash)) return 0;
    if (db.scalar("SELECT COUNT(*) FROM users WHERE phone = ?", {a.phone}) > 0) return 0;

    Json menu = Json::array();
    for (int code : defaultMenu(type))
        menu.push_back(code);
    const auto contact = regionalContact(db, a.cityId);
    const bool answered = std::all_of(std::begin(a.permissions), std::end(a.permissions),
                                      [](Answer p) { return p == Answer::Yes || p == Answer::No; });

    db.execute(
        "INSERT INTO users (phone, fullname, email, type, active, city_id, county_id, region_fullname,"
        " region_phonenumber, menu, etk_answered, etk_sms, etk_email, etk_advertising, etk_answered_at,"
        " terms_accepted_at, device_id, device_type, dealer_name, tax_number, tc_no)"
        " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?,"
        " CASE WHEN ? THEN strftime('%Y-%m-%d %H:%M:%S', 'now') END,"
        " strftime('%Y-%m-%d %H:%M:%S', 'now'), ?, ?, ?, ?, ?)",
        {a.phone,
         a.fullname,
         a.email.empty() ? SqlValue(nullptr) : SqlValue(a.email),
         type,
         std::int64_t(active ? 1 : 0),
         a.cityId,
         a.countyId,
         contact.fullname,
         contact.phonenumber,
         menu.dump(),
         std::int64_t(answered ? 1 : 0),
         permission(a.permissions[0]),
         permission(a.permissions[1]),
         permission(a.permissions[2]),
         std::int64_t(answered ? 1 : 0),
         nullable(a.deviceId),
         nullable(a.deviceType),
         dealer ? SqlValue(dealer->name) : SqlValue(nullptr),
         dealer ? SqlValue(dealer->taxNumber) : SqlValue(nullptr),
         dealer ? SqlValue(dealer->identityNumber) : SqlValue(nullptr)});
    return db.lastInsertId();
}

DealerData readDealer(const ApiCall& call) {
    return {trimmedText(call, "dealerName"), trimmedText(call, "taxNumber"), trimmedText(call, "TCNo")};
}

} // namespace

envelope::FieldErrors dealerErrors(Database& db, const std::string& dealerName, const std::string& taxNumber,
                                   const std::string& identityNumber, std::int64_t exceptUserId) {
    envelope::FieldErrors errors;
    if (dealerName.empty())
        errors.emplace_back("dealerName", DealerNameMissing);
    else if (characterCount(dealerName) > 100)
        errors.emplace_back("dealerName", DealerNameTooLong);

    if (taxNumber.empty())
        errors.emplace_back("taxNumber", TaxNumberMissing);
    else if (!isValidTaxNumber(taxNumber))
        errors.emplace_back("taxNumber", TaxNumberInvalid);
    else if (db.scalar("SELECT COUNT(*) FROM users WHERE tax_number = ? AND id <> ?",
                       {taxNumber, exceptUserId}) > 0)
        errors.emplace_back("taxNumber", TaxNumberTaken);

    if (identityNumber.empty())
        errors.emplace_back("TCNo", IdentityMissing);
    else if (!isValidIdentityNumber(identityNumber))
        errors.emplace_back("TCNo", IdentityInvalid);
    return errors;
}

void registerRegistrationCommands(Dispatch& dispatch, Database& db, Clock clock) {
    Clock now = clock ? clock : Clock(systemSeconds);

    dispatch.add("farmer/register", false, [&db, now](const ApiCall& call) {
        Applicant applicant;
        auto errors = readApplicant(call, db, now(), applicant);
        std::vector<farms::FarmInput> fields;
        if (auto problem = readFields(call, db, fields)) errors.emplace_back("fields", *problem);
        checkConsents(call, applicant, errors);
        if (!errors.empty()) return rejected(errors);

        std::int64_t userId = 0;
        std::string token;
        db.transaction([&] {
            userId = createAccount(db, applicant, "farmer", true, nullptr);
            if (!userId) return;
            // The crops become the farmer's farms, each in its crop's period of this month.
            const int month = farms::monthInTurkey(now());
            for (const farms::FarmInput& farm : fields)
                farms::createFarm(db, userId, farm, month);
            notifications::notify(db, userId, Welcome);
            token = issueToken(db, userId);
        });
        if (!userId) return rejected({{"hash", HashInvalid}});
        auto record = userRecord(db, userId, token);
        if (!record) return envelope::failure(envelope::ServerError, envelope::ServerErrorText);
        return envelope::success(std::move(*record));
    });

    // Sent before the last panel of a dealer's registration; it decides nothing for good, so the
    // registration checks the same again.
    dispatch.add("dealer/check-information-field", false, [&db](const ApiCall& call) {
        const DealerData dealer = readDealer(call);
        const auto errors = dealerErrors(db, dealer.name, dealer.taxNumber, dealer.identityNumber);
        if (!errors.empty()) return rejected(errors);
        return envelope::success(nullptr);
    });

    // A dealer waits for the company's activation: no token, and a login until then ends in the
    // activation notice.
    dispatch.add("dealer/register", false, [&db, now](const ApiCall& call) {
        Applicant applicant;
        auto errors = readApplicant(call, db, now(), applicant);
        const DealerData dealer = readDealer(call);
        for (auto& error : dealerErrors(db, dealer.name, dealer.taxNumber, dealer.identityNumber))
            errors.push_back(std::move(error));
        checkConsents(call, applicant, errors);
        if (!errors.empty()) return rejected(errors);

        std::int64_t userId = 0;
        bool taxNumberTaken = false;
        db.transaction([&] {
            // Checked again under the lock: two shops may not register one tax number at once.
            taxNumberTaken =
                db.scalar("SELECT COUNT(*) FROM users WHERE tax_number = ?", {dealer.taxNumber}) > 0;
            if (!taxNumberTaken) userId = createAccount(db, applicant, "dealer", false, &dealer);
        });
        if (taxNumberTaken) return rejected({{"taxNumber", TaxNumberTaken}});
        if (!userId) return rejected({{"hash", HashInvalid}});
        return envelope::success(nullptr, DealerRegistered);
    });
}

} // namespace ekinora::server::accounts
