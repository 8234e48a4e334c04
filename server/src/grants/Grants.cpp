#include "grants/Grants.h"

#include "core/Envelope.h"
#include "core/Html.h"
#include "core/Params.h"
#include "farms/Pdf.h"

#include <charconv>
#include <cstdio>
#include <vector>

namespace ekinora::server::grants {

namespace {

// The kinds of application document; each reads as its own form.
enum class Doc { Form, Petition, ProjectSummary, BusinessPlan, Pledge, IrrigationForm, WaterPermit, Certification,
                 FarmForm, SoilAnalysis };

struct Programme {
    std::int64_t id;
    const char* name;
    const char* type;
    int endMonth, endDay;
    const char* summary;
    const char* amount;
    std::vector<const char*> conditions;
    std::vector<const char*> places; // "Konya" for a province, "Konya/Çumra" for a county
    std::vector<std::int64_t> crops; // ids of `produces`
    std::vector<std::pair<const char*, Doc>> documents;
};

// Crop ids of the `produces` list.
constexpr std::int64_t Wheat = 1, Barley = 2, Maize = 3, Sunflower = 4, SugarBeet = 7, Rice = 8, Potato = 9,
                       Tomato = 10, Pepper = 11, Watermelon = 12, Grape = 13, Apple = 14, Olive = 15;

const std::vector<Programme>& programmes() {
    static const std::vector<Programme> list = {
        {1, "Kırsal Kalkınma Yatırımlarının Desteklenmesi Programı", "Hibe (%50)", 11, 15,
         "Tarımsal ürünlerin işlenmesi, depolanması ve paketlenmesine yönelik yeni tesis, kapasite artırımı ve "
         "teknoloji yenileme yatırımlarına hibe desteği verilir.",
         "Kabul edilen proje tutarının %50'si, en fazla 2.500.000 TL",
         {"Gerçek kişiler, kooperatifler ve tarımsal üretici birlikleri başvurabilir.",
          "Yatırım, başvurulan il sınırları içinde yapılmalıdır.",
          "Başvuru sahibinin kendi katkı payını karşılayabileceğini belgelemesi gerekir.",
          "Hibe sözleşmesinin imzalanmasından önce başlanan harcamalar desteklenmez."},
         {"Konya", "Karaman", "Aksaray", "Niğde", "Eskişehir", "Ankara"},
         {},
         {{"Başvuru Formu", Doc::Form}, {"Proje Özeti Şablonu", Doc::ProjectSummary}, {"Taahhütname", Doc::Pledge}}},
        {2, "Genç Çiftçi Tarımsal Girişim Desteği", "Hibe (30.000 TL)", 9, 30,
         "Kırsalda tarımsal üretime başlamak veya üretimini büyütmek isteyen genç çiftçilerin bitkisel üretim "
         "projelerine geri ödemesiz destek verilir.",
         "Proje başına 30.000 TL",
         {"Başvuru tarihinde 18 yaşını doldurmuş, 41 yaşından gün almamış olmak.",
          "Çiftçi Kayıt Sistemi'ne (ÇKS) kayıtlı olmak.",
          "Projenin uygulanacağı köy veya beldede ikamet etmek.",
          "Daha önce aynı amaçla hibe desteğinden yararlanmamış olmak."},
         {},
         {Wheat, Barley, Maize, Sunflower, Potato, Tomato, Pepper, Watermelon},
         {{"Başvuru Dilekçesi", Doc::Petition}, {"İş Planı Şablonu", Doc::BusinessPlan}, {"Taahhütname", Doc::Pledge}}},
        {3, "Basınçlı Sulama Sistemlerine Geçiş Desteği", "Hibe (%50)", 10, 31,
         "Salma sulamadan damla ve yağmurlama sulamaya geçen üreticilerin sistem, pompa ve filtre "
         "yatırımlarına hibe desteği verilir; su tasarrufu ve verim artışı amaçlanır.",
         "Sistem bedelinin %50'si, dekar başına en fazla 1.800 TL",
         {"Sulanacak arazinin tapusu veya en az 5 yıllık kira sözleşmesi bulunmalıdır.",
          "Kuyudan sulamada geçerli kuyu kullanma izin belgesi istenir.",
          "Sistem, proje onayından sonra kurulmalı ve yerinde tespit edilmelidir."},
         {"Konya", "Karaman", "Aksaray", "Niğde", "Eskişehir"},
         {Wheat, Barley, Maize, Sunflower, SugarBeet, Potato},
         {{"Başvuru Formu", Doc::Form}, {"Sulama Projesi Bilgi Formu", Doc::IrrigationForm},
          {"Su Kullanım İzni Beyanı", Doc::WaterPermit}}},
        {4, "Sertifikalı Tohum Kullanım Desteği", "Dekar Başına Nakdi Destek", 12, 31,
         "Sertifikalı tohumluk kullanarak ekim yapan üreticilere dekar başına nakdi destek ödenir. Başvuru, "
         "tohumluğun alındığı bayinin faturası ile ilçe müdürlüğüne yapılır; ayrıca belge doldurulmaz.",
         "Buğday ve arpada dekar başına 45 TL, çeltik ve mısırda dekar başına 60 TL",
         {"Tohumluğun sertifikalı olduğu fatura ve sertifika etiketiyle belgelenmelidir.",
          "Ekim yapılan arazi ÇKS'de beyan edilmiş olmalıdır."},
         {},
         {Wheat, Barley, Rice, Maize},
         {}},
        {5, "Organik ve İyi Tarım Uygulamalarına Geçiş Desteği", "Dekar Başına Nakdi Destek", 6, 30,
         "Organik tarıma veya iyi tarım uygulamalarına geçen üreticilere, geçiş sürecindeki kontrol ve "
         "sertifikasyon giderleri için dekar başına destek verilir.",
         "Organik tarımda dekar başına 120 TL, iyi tarım uygulamalarında dekar başına 70 TL",
         {"Yetkilendirilmiş bir kontrol ve sertifikasyon kuruluşu ile sözleşme yapılmış olmalıdır.",
          "Destek, sertifikalı alanın tamamı için en fazla 500 dekara kadar ödenir."},
         {"İzmir", "Manisa", "Aydın", "Denizli"},
         {Grape, Olive, Tomato, Pepper, Apple},
         {{"Başvuru Formu", Doc::Form}, {"Kontrol ve Sertifikasyon Sözleşmesi Örneği", Doc::Certification}}},
        {6, "Hayvancılık İşletmelerine Yem Bitkisi Desteği", "Hibe (%50) + Dekar Desteği", 8, 15,
         "Hayvancılık yapan işletmelerin silajlık mısır ve yem arpası ekimi ile yem bitkisi depolama "
         "yatırımları desteklenir.",
         "Depolama yatırımında %50 hibe, ekimde dekar başına 90 TL",
         {"İşletmenin Türkvet kaydında en az 10 büyükbaş hayvanı bulunmalıdır.",
          "Yem bitkisi ekilen arazi ÇKS'de beyan edilmiş olmalıdır."},
         {"Konya/Çumra", "Konya/Karapınar", "Konya/Ereğli", "Erzurum", "Kars", "Ardahan", "Sivas"},
         {Barley, Maize},
         {{"Başvuru Formu", Doc::Form}, {"İşletme Bilgi Formu", Doc::FarmForm}}},
        {7, "Konya Ovası Kuraklıkla Mücadele Destek Programı", "Hibe (%60)", 12, 1,
         "Yer altı suyu seviyesinin düştüğü ilçelerde toprak nemini koruyan anıza ekim, toprak analizi ve "
         "kuraklığa dayanıklı çeşitlere geçiş uygulamaları desteklenir.",
         "Uygulama giderlerinin %60'ı, işletme başına en fazla 150.000 TL",
         {"Arazinin Çumra veya Karapınar ilçe sınırları içinde olması gerekir.",
          "Başvurudan önce toprak analizi yaptırılmış olmalıdır.",
          "Üretici, üç yıl boyunca uygulamaya devam edeceğini taahhüt eder."},
         {"Konya/Çumra", "Konya/Karapınar"},
         {Wheat, Barley, Maize, SugarBeet},
         {{"Başvuru Formu", Doc::Form}, {"Toprak Analizi Talep Formu", Doc::SoilAnalysis},
          {"Taahhütname", Doc::Pledge}}},
    };
    return list;
}

const char* const Blank = " ..................................................";

std::string documentBody(Doc kind) {
    auto fields = [](std::initializer_list<const char*> names) {
        std::string text;
        for (const char* name : names) text += std::string(name) + ":" + Blank + "\n";
        return text;
    };
    switch (kind) {
    case Doc::Form:
        return "Aşağıdaki bilgileri eksiksiz doldurup ilçe tarım ve orman müdürlüğüne teslim ediniz.\n" +
               fields({"Adı soyadı", "T.C. kimlik numarası", "Telefon", "İli / ilçesi / köyü", "ÇKS numarası",
                       "Arazi büyüklüğü (dekar)", "Ekili ürün", "Talep edilen destek tutarı"}) +
               "Beyan ettiğim bilgilerin doğru olduğunu kabul ederim.\nTarih ve imza:" + Blank;
    case Doc::Petition:
        return "İLÇE TARIM VE ORMAN MÜDÜRLÜĞÜNE\nAşağıda bilgileri yazılı projemle programa başvurmak "
               "istiyorum. Gereğini arz ederim.\n" +
               fields({"Adı soyadı", "T.C. kimlik numarası", "Doğum tarihi", "Adres", "Proje konusu"}) +
               "Ekler: İş planı, taahhütname, ikamet belgesi.\nTarih ve imza:" + Blank;
    case Doc::ProjectSummary:
        return "Proje özeti en fazla iki sayfa olmalıdır.\n" +
               fields({"Projenin adı", "Yatırım yeri", "Yatırımın konusu", "Toplam yatırım tutarı (TL)",
                       "Talep edilen hibe tutarı (TL)", "Oluşturulacak istihdam (kişi)", "Uygulama süresi (ay)"}) +
               "Projenin gerekçesi ve beklenen sonuçlar:" + Blank;
    case Doc::BusinessPlan:
        return "İş planı, projenin üç yıllık üretim ve gelir tahminini göstermelidir.\n" +
               fields({"Üretilecek ürün", "Ekim alanı (dekar)", "Beklenen verim (kg/dekar)",
                       "Satış yeri", "Birinci yıl tahmini gelir (TL)", "Makine ve ekipman ihtiyacı"}) +
               "Hibenin harcanacağı kalemler:" + Blank;
    case Doc::Pledge:
        return "Hibe desteğiyle aldığım makine, ekipman ve yaptığım yatırımı en az beş yıl süreyle amacı "
               "dışında kullanmayacağımı, satmayacağımı ve kiraya vermeyeceğimi; denetimlerde istenen belgeleri "
               "sunacağımı; aksi halde aldığım desteği yasal faiziyle geri ödeyeceğimi taahhüt ederim.\n" +
               fields({"Adı soyadı", "T.C. kimlik numarası"}) + "Tarih ve imza:" + Blank;
    case Doc::IrrigationForm:
        return "Sulama sistemini kuracak firmanın hazırladığı proje bu forma eklenir.\n" +
               fields({"Su kaynağı (kuyu, kanal, gölet)", "Sulanacak alan (dekar)", "Sistem türü (damla / yağmurlama)",
                       "Pompa gücü (kW)", "Ana boru uzunluğu (m)", "Firma adı", "Teklif tutarı (TL)"});
    case Doc::WaterPermit:
        return "Kuyudan veya kanaldan sulama yapılacaksa su kullanım hakkının belgelenmesi gerekir.\n" +
               fields({"Kuyu ruhsat veya izin belge numarası", "Belgeyi veren kurum", "Belge tarihi",
                       "Yıllık çekilecek su miktarı (m³)"}) +
               "Beyanımın doğruluğunu kabul ederim.\nTarih ve imza:" + Blank;
    case Doc::Certification:
        return "Bu örnek, üretici ile kontrol ve sertifikasyon kuruluşu arasında yapılacak sözleşmenin "
               "asgari maddelerini gösterir.\n1. Kuruluş, üretim alanını yılda en az bir kez denetler.\n"
               "2. Üretici, girdi kayıtlarını ve hasat bilgilerini eksiksiz tutar.\n"
               "3. Geçiş süresi boyunca ürünler geçiş dönemi ürünü olarak etiketlenir.\n" +
               fields({"Kuruluşun adı", "Sözleşme tarihi", "Sertifikalandırılacak alan (dekar)", "Ürünler"});
    case Doc::FarmForm:
        return fields({"İşletme numarası", "Büyükbaş hayvan sayısı", "Küçükbaş hayvan sayısı",
                       "Yem bitkisi ekilecek alan (dekar)", "Ekilecek yem bitkisi", "Mevcut depolama kapasitesi (ton)"}) +
               "Türkvet kayıt belgesi bu forma eklenir.";
    case Doc::SoilAnalysis:
        return "Toprak örneği, parselin en az beş noktasından 0-30 cm derinlikten alınarak karıştırılır.\n" +
               fields({"Parsel ada / parsel numarası", "Parsel büyüklüğü (dekar)", "Önceki yıl ekilen ürün",
                       "Bu yıl ekilecek ürün", "Sulama durumu"}) +
               "İstenen analizler: tuzluluk, pH, kireç, organik madde, fosfor, potasyum.";
    }
    return {};
}

// Days from 1970-01-01 of a civil date, and back (proleptic Gregorian).
std::int64_t daysFromCivil(int y, int m, int d) {
    y -= m <= 2;
    const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
    const unsigned yoe = unsigned(y - era * 400);
    const unsigned doy = (153 * unsigned(m + (m > 2 ? -3 : 9)) + 2) / 5 + unsigned(d) - 1;
    const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + std::int64_t(doe) - 719468;
}

void civilFromDays(std::int64_t z, int& y, int& m, int& d) {
    z += 719468;
    const std::int64_t era = (z >= 0 ? z : z - 146096) / 146097;
    const unsigned doe = unsigned(z - era * 146097);
    const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const unsigned mp = (5 * doy + 2) / 153;
    d = int(doy - (153 * mp + 2) / 5 + 1);
    m = int(mp < 10 ? mp + 3 : mp - 9);
    y = int(yoe) + int(era * 400) + (m <= 2);
}

std::string descriptionHtml(const Programme& p) {
    std::string html = "<p>" + escapeHtml(p.summary) + "</p><p><b>Destek tutarı:</b> " + escapeHtml(p.amount) +
                       "</p><p><b>Başvuru koşulları</b></p><ul>";
    for (const char* condition : p.conditions) html += "<li>" + escapeHtml(condition) + "</li>";
    return html + "</ul>";
}

std::string lines(const std::vector<const char*>& items) {
    std::string text;
    for (const char* item : items) text += (text.empty() ? "" : "\n") + std::string(item);
    return text;
}

std::vector<std::string> split(const std::string& text) {
    std::vector<std::string> out;
    size_t start = 0;
    for (size_t at; (at = text.find('\n', start)) != std::string::npos; start = at + 1)
        out.push_back(text.substr(start, at - start));
    out.push_back(text.substr(start));
    return out;
}

const std::string CityMissing = "Hibe desteği sorgulamak için il seçmelisiniz.";
const std::string CountyMissing = "Hibe desteği sorgulamak için ilçe seçmelisiniz.";
const std::string CropMissing = "Hibe desteği sorgulamak için ürün seçmelisiniz.";

struct Context {
    Database& db;
    Clock clock;
};

Json listGrants(const Context& c, const ApiCall& call) {
    Params p(call);
    const auto city = p.requiredInteger("city", CityMissing, CityMissing);
    const auto county = p.requiredInteger("county", CountyMissing, CountyMissing);
    const auto crop = p.requiredInteger("produce", CropMissing, CropMissing);
    if (!p.ok()) return p.rejection();

    auto place = c.db.queryRow("SELECT c.name AS city, k.name AS county FROM counties k JOIN cities c ON c.id = k.city_id"
                               " WHERE k.id = ? AND c.id = ?",
                               {*county, *city});
    if (!place) {
        p.fail("county", "Seçtiğiniz ilçe bu ile ait değil.");
        return p.rejection();
    }
    if (c.db.scalar("SELECT COUNT(*) FROM produces WHERE id = ?", {*crop}) == 0) {
        p.fail("produce", "Seçtiğiniz ürün bulunamadı.");
        return p.rejection();
    }

    const std::int64_t now = c.clock ? c.clock() : systemSeconds();
    Json grants = Json::array();
    const Json rows = c.db.query(
        "SELECT g.id, g.name, g.type_name, g.end_month, g.end_day, g.description FROM grant_programmes g"
        " WHERE (NOT EXISTS (SELECT 1 FROM grant_places p WHERE p.grant_id = g.id)"
        "        OR EXISTS (SELECT 1 FROM grant_places p WHERE p.grant_id = g.id AND p.city_name = ?"
        "                   AND (p.county_name IS NULL OR p.county_name = ?)))"
        "   AND (NOT EXISTS (SELECT 1 FROM grant_crops k WHERE k.grant_id = g.id)"
        "        OR EXISTS (SELECT 1 FROM grant_crops k WHERE k.grant_id = g.id AND k.produce_id = ?))"
        " ORDER BY g.sort_order",
        {place->at("city").get<std::string>(), place->at("county").get<std::string>(), *crop});
    for (const auto& row : rows) {
        Json files = Json::array();
        for (const auto& doc : c.db.query("SELECT id, name FROM grant_documents WHERE grant_id = ? ORDER BY position",
                                          {row.at("id").get<std::int64_t>()}))
            files.push_back(Json{{"ConstantValue", doc.at("name")},
                                 {"AppendixA", call.baseUrl + "/documents/grants/" +
                                                   std::to_string(doc.at("id").get<std::int64_t>()) + ".pdf"}});
        grants.push_back(Json{{"GrantSupportId", row.at("id")},
                              {"GrantSupportName", row.at("name")},
                              {"TypeName", row.at("type_name")},
                              {"EndDateStr", endDateText(row.at("end_month").get<int>(), row.at("end_day").get<int>(), now)},
                              {"SMSTemplateName", row.at("description")},
                              {"FileList", std::move(files)}});
    }
    // The partner answers a search without results with no list at all.
    return envelope::success(Json{{"grants", grants.empty() ? Json(nullptr) : std::move(grants)}});
}

} // namespace

std::string endDateText(int month, int day, std::int64_t nowSeconds) {
    int y, m, d;
    civilFromDays((nowSeconds + 3 * 3600) / 86400, y, m, d); // Turkey keeps UTC+3
    if (m > month || (m == month && d > day)) ++y;
    char text[16];
    std::snprintf(text, sizeof text, "%02d.%02d.%04d", day, month, y);
    return text;
}

void seedGrants(Database& db) {
    auto guard = db.lock();
    if (db.scalar("SELECT COUNT(*) FROM grant_programmes") > 0) return;
    db.transaction([&] {
        std::int64_t order = 0, documentId = 0;
        for (const auto& p : programmes()) {
            db.execute("INSERT INTO grant_programmes (id, name, type_name, end_month, end_day, description, conditions,"
                       " sort_order) VALUES (?, ?, ?, ?, ?, ?, ?, ?)",
                       {p.id, std::string(p.name), std::string(p.type), std::int64_t(p.endMonth),
                        std::int64_t(p.endDay), descriptionHtml(p), lines(p.conditions), ++order});
            for (const std::string place : p.places) {
                const auto slash = place.find('/');
                if (slash == std::string::npos)
                    db.execute("INSERT INTO grant_places (grant_id, city_name, county_name) VALUES (?, ?, NULL)",
                               {p.id, place});
                else
                    db.execute("INSERT INTO grant_places (grant_id, city_name, county_name) VALUES (?, ?, ?)",
                               {p.id, place.substr(0, slash), place.substr(slash + 1)});
            }
            for (std::int64_t crop : p.crops)
                db.execute("INSERT INTO grant_crops (grant_id, produce_id) VALUES (?, ?)", {p.id, crop});
            std::int64_t position = 0;
            for (const auto& [name, kind] : p.documents)
                db.execute("INSERT INTO grant_documents (id, grant_id, position, name, body) VALUES (?, ?, ?, ?, ?)",
                           {++documentId, p.id, ++position, std::string(name), documentBody(kind)});
        }
    });
}

void registerGrantCommands(Dispatch& dispatch, Database& db, Clock clock) {
    seedGrants(db);
    dispatch.add("agrivo/grants", Access::Account, listGrants, Context{db, std::move(clock)});
}

std::optional<GrantDocument> grantDocument(Database& db, const std::string& path, const Clock& clock) {
    static const std::string prefix = "/documents/grants/", suffix = ".pdf";
    if (path.size() <= prefix.size() + suffix.size() || path.rfind(prefix, 0) != 0 ||
        path.compare(path.size() - suffix.size(), suffix.size(), suffix) != 0)
        return std::nullopt;
    std::int64_t id = 0;
    const char* first = path.data() + prefix.size();
    const char* last = path.data() + path.size() - suffix.size();
    auto [end, error] = std::from_chars(first, last, id);
    if (error != std::errc() || end != last) return std::nullopt;

    auto doc = db.queryRow("SELECT d.name, d.body, g.name AS grant_name, g.type_name, g.end_month, g.end_day,"
                           " g.conditions FROM grant_documents d JOIN grant_programmes g ON g.id = d.grant_id"
                           " WHERE d.id = ?",
                           {id});
    if (!doc) return std::nullopt;
    const std::int64_t now = clock ? clock() : systemSeconds();
    std::vector<pdf::Paragraph> text = {
        {doc->at("grant_name").get<std::string>(), 13, true, 0},
        {"Destek tipi: " + doc->at("type_name").get<std::string>() + "    Son başvuru tarihi: " +
             endDateText(doc->at("end_month").get<int>(), doc->at("end_day").get<int>(), now),
         10, false, 4},
    };
    bool first_line = true;
    for (const auto& line : split(doc->at("body").get<std::string>())) {
        text.push_back({line, 10.5, false, first_line ? 16.0 : 9.0});
        first_line = false;
    }
    text.push_back({"Başvuru koşulları", 11, true, 20});
    for (const auto& line : split(doc->at("conditions").get<std::string>())) text.push_back({"- " + line, 10, false, 3});
    text.push_back({"Bu belge Ekinora uygulamasından indirilmiştir. Başvurunuzu ilçe tarım ve orman müdürlüğüne "
                    "son başvuru tarihinden önce teslim ediniz.",
                    8.5, false, 24});
    return GrantDocument{"application/pdf", pdf::textDocument(doc->at("name").get<std::string>(), text)};
}

} // namespace ekinora::server::grants
