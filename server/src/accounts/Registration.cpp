#include "accounts/Registration.h"

#include "accounts/Accounts.h"
#include "accounts/SmsChallenges.h"
#include "accounts/Validation.h"
#include "core/Params.h"
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

std::string readName(Params& p, const char* key, const std::string& missing, const std::string& invalid) {
    std::string name = p.required(key, missing);
    if (!name.empty() &&
        (characterCount(name) > MaxNameLength || name.find_first_of("0123456789<>") != std::string::npos))
        p.fail(key, invalid);
    return name;
}

// The person's part of a registration; the problems come in the order the app should show them.
Applicant readApplicant(Params& p, Database& db, std::int64_t now) {
    Applicant a;
    a.hash = p.text("hash").value_or("");
    const auto phone = sms::verifiedPhone(db, a.hash, now);
    if (!phone)
        p.fail("hash", HashInvalid);
    else if (db.scalar("SELECT COUNT(*) FROM users WHERE phone = ?", {*phone}) > 0)
        p.fail("phoneNumber", PhoneTaken);
    else
        a.phone = *phone;

    const std::string firstName = readName(p, "firstName", FirstNameMissing, FirstNameInvalid);
    a.fullname = firstName + " " + readName(p, "lastName", LastNameMissing, LastNameInvalid);

    const auto county = p.integer("countyId");
    auto place =
        county ? db.queryRow("SELECT id, city_id FROM counties WHERE id = ?", {*county}) : std::nullopt;
    if (!place) {
        p.fail("countyId", CountyMissing);
    } else {
        a.countyId = place->at("id").get<std::int64_t>();
        a.cityId = place->at("city_id").get<std::int64_t>();
    }

    a.email = p.trimmed("email");
    if (!a.email.empty() && !isValidEmail(a.email)) p.fail("email", EmailInvalid);

    for (int i = 0; i < 3; ++i)
        a.permissions[i] = p.answer(Permissions[i]);
    a.deviceId = p.filled("deviceId");
    a.deviceType = p.filled("deviceType");
    return a;
}

// Consents come last in the form, so their problems come last too.
void checkConsents(Params& p, const Applicant& a) {
    for (int i = 0; i < 3; ++i)
        if (a.permissions[i] == Answer::Invalid) p.fail(Permissions[i], AnswerInvalid);
    if (p.text("term") != "yes") p.fail("term", TermMissing);
}

// The crops of a farmer's registration, or the one problem with them. A crop the app has edited
// carries the crop kind under "id" instead of "produceId"; both are read.
std::optional<std::string> readFields(const Params& p, Database& db, std::vector<farms::FarmInput>& out) {
    const auto fields = p.list("fields");
    if (!fields) return FieldsInvalid;
    if (fields->size() > MaxFields) return FieldsTooMany;

    for (const Json& element : *fields) {
        if (!element.is_object()) return FieldsInvalid;
        const Params crop(element);
        farms::FarmInput field;
        const auto produceId = crop.has("produceId") ? crop.integer("produceId") : crop.integer("id");
        if (!produceId) return FieldProduceMissing;
        if (db.scalar("SELECT COUNT(*) FROM produces WHERE id = ?", {*produceId}) == 0)
            return FieldProduceUnknown;
        field.produceId = *produceId;

        const auto size = crop.number("range", NumberText::Leading);
        if (!size || !(*size > 0)) return FieldSizeMissing;
        if (!(*size <= MaxFieldSize)) return FieldSizeTooLarge;
        field.size = *size;

        const auto products = crop.ids("aps");
        if (!products) return FieldsInvalid;
        for (const auto id : *products)
            if (db.scalar("SELECT COUNT(*) FROM aps WHERE id = ?", {id}) == 0) return FieldProductUnknown;
        if (products->size() > MaxProductsPerField) return FieldProductsTooMany;
        field.products = *products;
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

} // namespace

DealerData readDealer(Params& p, Database& db, std::int64_t exceptUserId) {
    DealerData dealer;
    dealer.name = p.required("dealerName", DealerNameMissing);
    if (characterCount(dealer.name) > 100) p.fail("dealerName", DealerNameTooLong);

    dealer.taxNumber = p.required("taxNumber", TaxNumberMissing);
    if (!dealer.taxNumber.empty() && !isValidTaxNumber(dealer.taxNumber))
        p.fail("taxNumber", TaxNumberInvalid);
    else if (!dealer.taxNumber.empty() &&
             db.scalar("SELECT COUNT(*) FROM users WHERE tax_number = ? AND id <> ?",
                       {dealer.taxNumber, exceptUserId}) > 0)
        p.fail("taxNumber", TaxNumberTaken);

    dealer.identityNumber = p.required("TCNo", IdentityMissing);
    if (!dealer.identityNumber.empty() && !isValidIdentityNumber(dealer.identityNumber))
        p.fail("TCNo", IdentityInvalid);
    return dealer;
}

namespace {

struct Context {
    Database& db;
    Clock now;
};

Json registerFarmer(const Context& c, const ApiCall& call) {
    Database& db = c.db;
    Params p(call);
    const Applicant applicant = readApplicant(p, db, c.now());
    std::vector<farms::FarmInput> fields;
    if (auto problem = readFields(p, db, fields)) p.fail("fields", *problem);
    checkConsents(p, applicant);
    if (!p.ok()) return p.rejection();

    std::int64_t userId = 0;
    std::string token;
    db.transaction([&] {
        userId = createAccount(db, applicant, "farmer", true, nullptr);
        if (!userId) return;
        // The crops become the farmer's farms, each in its crop's period of this month.
        const int month = farms::monthInTurkey(c.now());
        for (const farms::FarmInput& farm : fields)
            farms::createFarm(db, userId, farm, month);
        notifications::notify(db, userId, Welcome);
        token = issueToken(db, userId);
    });
    if (!userId) return envelope::rejection({{"hash", HashInvalid}});
    auto record = userRecord(db, userId, token);
    if (!record) return envelope::failure(envelope::ServerError, envelope::ServerErrorText);
    return envelope::success(std::move(*record));
}

// Sent before the last panel of a dealer's registration; it decides nothing for good, so the
// registration checks the same again.
Json checkDealer(Database& db, const ApiCall& call) {
    Params p(call);
    readDealer(p, db);
    if (!p.ok()) return p.rejection();
    return envelope::success(nullptr);
}

// A dealer waits for the company's activation: no token, and a login until then ends in the
// activation notice.
Json registerDealer(const Context& c, const ApiCall& call) {
    Database& db = c.db;
    Params p(call);
    const Applicant applicant = readApplicant(p, db, c.now());
    const DealerData dealer = readDealer(p, db);
    checkConsents(p, applicant);
    if (!p.ok()) return p.rejection();

    std::int64_t userId = 0;
    bool taxNumberTaken = false;
    db.transaction([&] {
        // Checked again under the lock: two shops may not register one tax number at once.
        taxNumberTaken = db.scalar("SELECT COUNT(*) FROM users WHERE tax_number = ?", {dealer.taxNumber}) > 0;
        if (!taxNumberTaken) userId = createAccount(db, applicant, "dealer", false, &dealer);
    });
    if (taxNumberTaken) return envelope::rejection({{"taxNumber", TaxNumberTaken}});
    if (!userId) return envelope::rejection({{"hash", HashInvalid}});
    return envelope::success(nullptr, DealerRegistered);
}

} // namespace

void registerRegistrationCommands(Dispatch& dispatch, Database& db, Clock clock) {
    const Context c{db, clock ? clock : Clock(systemSeconds)};
    dispatch.add("farmer/register", Access::Public, registerFarmer, c);
    dispatch.add("dealer/check-information-field", Access::Public, checkDealer, db);
    dispatch.add("dealer/register", Access::Public, registerDealer, c);
}

} // namespace ekinora::server::accounts
