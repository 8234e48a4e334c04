#include "events/Events.h"

#include "accounts/DemoAccounts.h"
#include "core/Envelope.h"
#include "core/Params.h"

#include <ctime>

namespace ekinora::server::events {

namespace {

const std::string NotFound = "Aradığınız etkinlik bulunamadı.";
const std::string Closed = "Bu etkinlik için katılım bildirimi alınmıyor.";
const std::string AlreadyAnswered = "Bu etkinlik için yanıtınız zaten kayıtlı.";
const std::string BadAnswer = "Katılım durumunuzu seçiniz.";

const char* const Months[] = {"Ocak",  "Şubat",   "Mart",  "Nisan",  "Mayıs", "Haziran",
                              "Temmuz", "Ağustos", "Eylül", "Ekim",   "Kasım", "Aralık"};

// The company's dates are Turkey's: three hours ahead of UTC all year.
constexpr std::int64_t TurkeyOffset = 3 * 3600;

struct Day {
    int year, month, day; // month 1-12
    std::string iso() const {
        char text[40];
        std::snprintf(text, sizeof text, "%04d-%02d-%02d", year, month, day);
        return text;
    }
    static Day of(std::int64_t seconds) {
        const std::time_t t = std::time_t(seconds + TurkeyOffset);
        std::tm parts{};
        gmtime_r(&t, &parts);
        return Day{parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday};
    }
    static Day parse(const std::string& iso) {
        Day d{};
        std::sscanf(iso.c_str(), "%d-%d-%d", &d.year, &d.month, &d.day);
        return d;
    }
};

std::string dateRange(const Day& from, const Day& to) {
    const std::string end = std::to_string(to.day) + " " + Months[to.month - 1] + " " + std::to_string(to.year);
    if (from.year == to.year && from.month == to.month)
        return from.day == to.day ? end : std::to_string(from.day) + " - " + end;
    std::string start = std::to_string(from.day) + " " + Months[from.month - 1];
    if (from.year != to.year) start += " " + std::to_string(from.year);
    return start + " - " + end;
}

struct Context {
    Database* db;
    Clock clock;
    std::string today() const { return Day::of(clock ? clock() : systemSeconds()).iso(); }
};

Json isJoin(const Json& row) {
    const Json& attends = row.at("attends");
    return attends.is_null() ? Json(nullptr) : Json(attends.get<std::int64_t>() == 1);
}

// The row of the list: day and month as finished texts, the picture as an address or null.
Json listEntry(const Json& row, const std::string& baseUrl) {
    const Day start = Day::parse(row.at("starts_on"));
    const Json& image = row.at("image");
    return Json{{"id", row.at("id")},
                {"name", row.at("name")},
                {"place", row.at("place")},
                {"dayNumber", std::to_string(start.day)},
                {"monthName", Months[start.month - 1]},
                {"image", image.is_null() ? Json(nullptr) : Json(baseUrl + "/static/events/" + image.get<std::string>())},
                {"isJoin", isJoin(row)}};
}

const char* const EventColumns =
    "SELECT e.id, e.name, e.place, e.starts_on, e.ends_on, e.content, e.image, e.joinable, a.attends"
    " FROM events e LEFT JOIN event_answers a ON a.event_id = e.id AND a.user_id = ?";

Json eventList(const Context& c, const ApiCall& call) {
    Database& db = *c.db;
    const std::string today = c.today();
    auto section = [&](const std::string& where, const char* order) {
        Json list = Json::array();
        for (const auto& row : db.query(std::string(EventColumns) + " WHERE " + where + " ORDER BY " + order,
                                        {call.userId, today}))
            list.push_back(listEntry(row, call.baseUrl));
        return list;
    };
    return envelope::success(Json{{"past", section("e.ends_on < ?", "e.ends_on DESC, e.id DESC")},
                                  {"ongoing", section("? BETWEEN e.starts_on AND e.ends_on", "e.starts_on, e.id")},
                                  {"coming", section("e.starts_on > ?", "e.starts_on, e.id")}});
}

std::optional<Json> findEvent(const Context& c, const ApiCall& call, Params& p) {
    const auto id = p.requiredInteger("id", NotFound, NotFound);
    if (!p.ok()) return std::nullopt;
    auto row = c.db->queryRow(std::string(EventColumns) + " WHERE e.id = ?", {call.userId, *id});
    if (!row) p.fail("id", NotFound);
    return row;
}

bool joinable(const Context& c, const Json& row) {
    return row.at("joinable").get<std::int64_t>() == 1 && row.at("ends_on").get<std::string>() >= c.today();
}

Json eventDetail(const Context& c, const ApiCall& call) {
    Params p(call);
    const auto row = findEvent(c, call, p);
    if (!row) return p.rejection();
    const Day start = Day::parse(row->at("starts_on"));
    const Day end = Day::parse(row->at("ends_on"));
    return envelope::success(Json{{"event",
                                   {{"id", row->at("id")},
                                    {"name", row->at("name")},
                                    {"monthName", Months[start.month - 1]},
                                    {"dayNumber", std::to_string(start.day)},
                                    {"dateRange", dateRange(start, end)},
                                    {"place", row->at("place")},
                                    {"content", row->at("content")},
                                    {"isJoinable", joinable(c, *row)},
                                    {"isJoin", isJoin(*row)}}}});
}

Json joinEvent(const Context& c, const ApiCall& call) {
    Params p(call);
    const Answer answer = p.requiredAnswer("status", BadAnswer, BadAnswer);
    const auto row = findEvent(c, call, p);
    if (!row || !p.ok()) return p.rejection();
    if (!joinable(c, *row)) {
        p.fail("id", Closed);
        return p.rejection();
    }
    const bool attends = answer == Answer::Yes;
    const Json before = isJoin(*row);
    if (!before.is_null() && before.get<bool>() == attends) {
        p.fail("status", AlreadyAnswered);
        return p.rejection(Json{{"isJoin", before}});
    }
    c.db->execute("INSERT INTO event_answers (event_id, user_id, attends, answered_at) VALUES (?, ?, ?, ?)"
                  " ON CONFLICT (event_id, user_id) DO UPDATE SET attends = excluded.attends,"
                  " answered_at = excluded.answered_at",
                  {row->at("id").get<std::int64_t>(), call.userId, std::int64_t(attends ? 1 : 0),
                   c.clock ? c.clock() : systemSeconds()});
    return envelope::success(Json{{"isJoin", attends}});
}

struct Seed {
    int startsIn; // days from the first start; negative: already past
    int days;
    const char* name;
    const char* place;
    const char* picture; // under static/events; null for none
    bool joinable;
    const char* content;
};

const Seed Seeds[] = {
    {-40, 1, "Buğdayda Verim Günü", "Konya, Karatay - Ekinora Deneme Tarlası", "verim-gunu.jpg", true,
     "<p>Konya Ovası'nın buğday üreticileriyle deneme tarlamızda buluştuk. Farklı ekim sıklıkları ve "
     "gübreleme programlarının verime etkisini parsel parsel inceledik.</p>"
     "<p>Etkinliğe 180 çiftçimiz katıldı; hasat sonuçları bölge temsilcilerimizden alınabilir.</p>"},
    {-21, 2, "Ege Bölgesi Bayi Toplantısı", "İzmir, Çeşme - Ilıca Kongre Merkezi", nullptr, true,
     "<p>Ege bölgesindeki yetkili bayilerimizle yeni sezonun ürün gamını, kampanya takvimini ve "
     "Bereket Kulübü uygulamalarını konuştuk.</p>"},
    {-9, 1, "Kumluca Domates Hasat Şenliği", "Antalya, Kumluca - Cumhuriyet Meydanı", "domates-senligi.jpg", true,
     "<p>Örtü altı sezonunun bitişini üreticilerimizle birlikte kutladık. Şenlikte en iri domates "
     "yarışması, çocuklar için boyama atölyesi ve ziraat mühendislerimizin danışma masası yer aldı.</p>"},
    {-1, 3, "Çukurova Tarım Fuarı", "Adana, Yüreğir - Tüyap Fuar Alanı, Salon 2 Stant 14", "fuar.jpg", true,
     "<p>Fuar boyunca standımızda yeni ürünlerimizi tanıtıyor, ilaçlama makineleri için ücretsiz "
     "kalibrasyon danışmanlığı veriyoruz.</p>"
     "<p>Standımızı ziyaret eden Bereket Kulübü üyelerine 50 puan hediye.</p>"},
    {6, 1, "Mısır Tarla Günü", "Adana, Ceyhan - Yeşilova Köyü Demonstrasyon Tarlası", "misir-tarla-gunu.jpg", true,
     "<p>İkinci ürün mısırda yabancı ot ve koçan kurdu mücadelesini tarlada, uygulamalı olarak "
     "anlatacağız.</p>"
     "<p><b>Program:</b> 09.30 karşılama, 10.00 tarla gezisi, 12.00 öğle yemeği, 13.30 soru-cevap.</p>"
     "<p>Ulaşım için Ceyhan ilçe merkezinden servis kalkacaktır.</p>"},
    {13, 1, "Bağcılık Bilgi Günü: Mildiyö ve Külleme", "Manisa, Alaşehir - Ticaret Odası Konferans Salonu",
     "bagcilik.jpg", true,
     "<p>Sultaniye üzüm üreticilerimizle mildiyö ve külleme mücadelesinde ilaçlama zamanlaması, "
     "ilaç dönüşümü ve bekleme sürelerini konuşacağız.</p>"
     "<p>Katılımcılara bağ ilaçlama takvimi hediye edilecektir.</p>"},
    {20, 1, "İç Anadolu Bayi Toplantısı", "Ankara, Çankaya - Ekinora Genel Müdürlüğü", nullptr, true,
     "<p>İç Anadolu bayilerimizle hububat sezonu değerlendirmesi ve yeni sezon satış hedefleri.</p>"},
    {34, 2, "Trakya Ayçiçeği Hasat Şenliği", "Edirne, Uzunköprü - Şehir Parkı", "aycicegi.jpg", false,
     "<p>Trakya'nın ayçiçeği üreticileriyle hasadı kutluyoruz. Herkese açık şenliğimizde konserler, "
     "yöresel yemekler ve tarım makineleri sergisi sizi bekliyor.</p>"
     "<p>Katılım için kayıt gerekmez.</p>"},
    {48, 1, "Kanola Ekim Öncesi Tarla Buluşması", "Tekirdağ, Hayrabolu - Ekinora Deneme Tarlası", "kanola.jpg", true,
     "<p>Kanolada tohum yatağı hazırlığı, ekim zamanı ve sonbahar yabancı ot mücadelesi üzerine "
     "uygulamalı tarla buluşması.</p>"},
};

} // namespace

void seedEvents(Database& db, const Clock& clock) {
    auto guard = db.lock();
    if (db.scalar("SELECT COUNT(*) FROM events") > 0) return;
    const std::int64_t now = clock ? clock() : systemSeconds();
    db.transaction([&] {
        for (const auto& seed : Seeds) {
            const Day start = Day::of(now + std::int64_t(seed.startsIn) * 86400);
            const Day end = Day::of(now + std::int64_t(seed.startsIn + seed.days - 1) * 86400);
            db.execute("INSERT INTO events (name, place, starts_on, ends_on, content, image, joinable)"
                       " VALUES (?, ?, ?, ?, ?, ?, ?)",
                       {std::string(seed.name), std::string(seed.place), start.iso(), end.iso(),
                        std::string(seed.content),
                        seed.picture ? SqlValue(std::string(seed.picture)) : SqlValue(nullptr),
                        std::int64_t(seed.joinable ? 1 : 0)});
            if (seed.startsIn <= 0 && seed.startsIn + seed.days > 0) {
                const auto farmer = db.scalar("SELECT id FROM users WHERE phone = ?",
                                              {accounts::demoAccount("farmer").phone});
                if (farmer)
                    db.execute("INSERT INTO event_answers (event_id, user_id, attends, answered_at) VALUES (?, ?, 1, ?)",
                               {db.lastInsertId(), farmer, now});
            }
        }
    });
}

void registerEventCommands(Dispatch& dispatch, Database& db, Clock clock) {
    const Context context{&db, std::move(clock)};
    dispatch.add("events", Access::Account, eventList, context);
    dispatch.add("event/detail", Access::Account, eventDetail, context);
    dispatch.add("event/join", Access::FarmerSide, joinEvent, context);
}

} // namespace ekinora::server::events
