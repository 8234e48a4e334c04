#include "catalogue/CatalogueDetail.h"

#include "core/Params.h"
#include "farms/Pdf.h"

#include <charconv>

namespace ekinora::server::catalogue {

namespace {

const std::string DocumentPrefix = "/documents/catalogue/";
const std::string LabelFile = "etiket.pdf";
const std::string SafetyFile = "guvenlik-bilgi-formu.pdf";

std::string plainName(std::string name) {
    for (auto [markup, plain] :
         {std::pair<std::string, std::string>{"<sup>&reg;</sup>", "®"}, {"<sup>", ""}, {"</sup>", ""}})
        for (size_t at; (at = name.find(markup)) != std::string::npos;) name.replace(at, markup.size(), plain);
    return name;
}

struct SprayProgramme {
    const char* slug;
    const char* title;
    const char* crop;
    std::vector<std::pair<const char*, const char*>> steps; // stage, what to apply
};

const std::vector<SprayProgramme>& programmes() {
    static const std::vector<SprayProgramme> list = {
        {"bugday", "Buğday İlaçlama Programı", "Buğday",
         {{"Kardeşlenme", "Dar ve geniş yapraklı yabancı otlara karşı Irgat® 250 SL ve Tarlan® 100 OD"},
          {"Sapa kalkma", "Pas ve külleme görülürse koruyucu fungisit uygulaması"},
          {"Başaklanma", "Süne ergin ve nimfleri için eşik aşıldığında insektisit"}}},
        {"misir", "Mısır İlaçlama Programı", "Mısır",
         {{"Ekim öncesi", "Tel kurdu riskli tarlalarda toprak uygulaması"},
          {"3-5 yaprak", "Darıcan ve geniş yapraklılara karşı Gelincix® 80 WG"},
          {"Tepe püskülü", "Mısır kurdu için feromon tuzağı sayımına göre insektisit"}}},
        {"domates", "Domates İlaçlama Programı", "Domates",
         {{"Fide dikimi", "Çökerten ve kök boğazı çürüklüğüne karşı can suyu uygulaması"},
          {"Çiçeklenme", "Mildiyö için 7-10 gün arayla koruyucu fungisit"},
          {"Meyve tutumu", "Domates güvesi için tuzak ve insektisit dönüşümlü kullanımı"}}},
        {"elma", "Elma İlaçlama Programı", "Elma",
         {{"Kış dönemi", "Kabuklu bitlere karşı yazlık yağ"},
          {"Pembe çiçek", "Karaleke için koruyucu fungisit"},
          {"Meyve tutumu", "Elma iç kurdu için ilk ergin çıkışından sonra insektisit"}}},
        {"pamuk", "Pamuk İlaçlama Programı", "Pamuk",
         {{"Çıkış", "Trips ve yaprak bitine karşı tohum ilaçlaması"},
          {"Taraklanma", "Yabancı ot kontrolü ve çapalama"},
          {"Koza oluşumu", "Pamuk yaprak kurdu için eşik değerine göre insektisit"}}},
        {"uzum", "Bağ İlaçlama Programı", "Üzüm",
         {{"Sürgünler 10 cm", "Külleme için kükürtlü ilaç"},
          {"Çiçek öncesi", "Mildiyö için koruyucu fungisit"},
          {"Salkım kapanması", "Salkım güvesi için ikinci döl uygulaması"}}},
    };
    return list;
}

} // namespace

Json productDocuments(std::int64_t id, const std::string& baseUrl) {
    const std::string base = baseUrl + DocumentPrefix + std::to_string(id) + "/";
    return Json::array({Json{{"id", id * 10 + 1}, {"fileId", id * 10 + 1}, {"type", "document"}, {"extra", "Ürün Etiketi"},
                             {"path", base + LabelFile}},
                        Json{{"id", id * 10 + 2}, {"fileId", id * 10 + 2}, {"type", "document"},
                             {"extra", "Güvenlik Bilgi Formu"}, {"path", base + SafetyFile}}});
}

Json productMedia(std::int64_t id, const std::string& title, const std::string& picture, const std::string& baseUrl) {
    return Json::array({Json{{"id", id * 10 + 1}, {"fileId", id * 10 + 1}, {"type", "image"}, {"extra", title}, {"path", picture}},
                        Json{{"id", id * 10 + 2},
                             {"fileId", id * 10 + 2},
                             {"type", "video"},
                             {"extra", "Uygulama filmi"},
                             {"path", baseUrl + "/static/catalogue/tanitim.mp4"},
                             {"extraFilePath", baseUrl + "/static/catalogue/tanitim.jpg"}}});
}

std::optional<CatalogueDocument> productDocument(Database& db, const std::string& path) {
    if (path.rfind(DocumentPrefix, 0) != 0) return std::nullopt;
    const std::string rest = path.substr(DocumentPrefix.size());
    const auto slash = rest.find('/');
    if (slash == std::string::npos) return std::nullopt;
    std::int64_t id = 0;
    const auto [end, ec] = std::from_chars(rest.data(), rest.data() + slash, id);
    if (ec != std::errc() || end != rest.data() + slash) return std::nullopt;
    const std::string file = rest.substr(slash + 1);
    if (file != LabelFile && file != SafetyFile) return std::nullopt;
    const auto row = db.queryRow("SELECT p.title, g.name AS grp, p.active_substance, p.formulation, p.package_sizes"
                                 " FROM catalogue_products p JOIN catalogue_groups g ON g.id = p.group_id"
                                 " WHERE p.id = ? AND p.catalog = 'product-catalog'",
                                 {id});
    if (!row) return std::nullopt;
    const std::string name = plainName(row->at("title").get<std::string>());
    const std::string substance = row->at("active_substance");
    const std::string group = row->at("grp");
    std::vector<pdf::Paragraph> text;
    if (file == LabelFile) {
        text = {{name, 14, true, 0},
                {"Ürün grubu: " + group, 10, false, 6},
                {"Etkili madde: " + substance, 10, false, 2},
                {"Formülasyon: " + row->at("formulation").get<std::string>(), 10, false, 2},
                {"Ambalaj: " + row->at("package_sizes").get<std::string>(), 10, false, 2},
                {"Kullanım alanları", 12, true, 10}};
        for (auto& use : db.query("SELECT pl.name AS plant, i.name AS illness FROM catalogue_uses u"
                                  " JOIN catalogue_plants pl ON pl.id = u.plant_id JOIN catalogue_illnesses i ON i.id = u.illness_id"
                                  " WHERE u.product_id = ? ORDER BY pl.sort_order, i.sort_order",
                                  {id}))
            text.push_back({"- " + use.at("plant").get<std::string>() + ": " + use.at("illness").get<std::string>(), 10, false, 2});
        text.push_back({"Uyarılar", 12, true, 10});
        text.push_back({"Kullanmadan önce etiketi okuyunuz. Çocukların ulaşamayacağı yerde, gıda ve yemlerden uzak "
                        "saklayınız. Uygulama sırasında koruyucu eldiven, maske ve gözlük kullanınız. Boş ambalajları "
                        "üç kez çalkalayıp delerek toplama noktasına teslim ediniz.",
                        10, false, 4});
        return CatalogueDocument{"application/pdf", pdf::textDocument(name + " - Ürün Etiketi", text)};
    }
    text = {{name, 14, true, 0},
            {"1. Madde ve karışımın tanıtımı", 12, true, 8},
            {"Ticari adı: " + name + ". Kullanım alanı: " + group + ". Tarımsal kullanım içindir.", 10, false, 2},
            {"2. Bileşim", 12, true, 8},
            {"Etkili madde: " + substance + ". Formülasyon yardımcı maddeleri ile tamamlanmıştır.", 10, false, 2},
            {"3. İlk yardım önlemleri", 12, true, 8},
            {"Solunması halinde kişiyi temiz havaya çıkarınız. Cilde temasında bol su ve sabunla yıkayınız. Göze "
             "temasında en az 15 dakika su ile durulayınız. Yutulması halinde kusturmayınız, hemen 114 Ulusal "
             "Zehir Danışma Merkezi'ni arayınız ve bu formu hekime gösteriniz.",
             10, false, 2},
            {"4. Depolama", 12, true, 8},
            {"Orijinal ambalajında, serin, kuru ve iyi havalandırılan bir yerde, 0-35 °C arasında saklayınız.", 10, false, 2}};
    return CatalogueDocument{"application/pdf", pdf::textDocument(name + " - Güvenlik Bilgi Formu", text)};
}

std::optional<CatalogueDocument> sprayDocument(const std::string& path) {
    if (path == "/site/scripts/components/product_groups/page_166.php") {
        Json list = Json::array();
        for (const auto& p : programmes())
            list.push_back(Json{{"title", p.title},
                                {"image", std::string("/static/spray-") + p.slug + ".svg"},
                                {"link", std::string("/ilaclama-programlari/") + p.slug}});
        return CatalogueDocument{"application/json; charset=utf-8", list.dump()};
    }
    const std::string pagePrefix = "/site/ilaclama-programlari/";
    const std::string picturePrefix = "/site/static/spray-";
    for (const auto& p : programmes()) {
        if (path == pagePrefix + p.slug) {
            std::string html = "<!DOCTYPE html><html lang=\"tr\"><head><meta charset=\"utf-8\"><meta name=\"viewport\" "
                               "content=\"width=device-width, initial-scale=1\"><title>" +
                               std::string(p.title) +
                               "</title><style>body{font-family:sans-serif;margin:16px;color:#333}h1{color:#0090c5;"
                               "font-size:22px}table{width:100%;border-collapse:collapse}td,th{border:1px solid #ccc;"
                               "padding:8px;text-align:left;vertical-align:top}th{background:#78b930;color:#fff}"
                               "</style></head><body><h1>" +
                               p.title + "</h1><p>" + p.crop +
                               " yetiştiriciliğinde dönemlere göre önerdiğimiz uygulamalar. Dozlar için ürün etiketine "
                               "bakınız.</p><table><tr><th>Dönem</th><th>Uygulama</th></tr>";
            for (const auto& [stage, what] : p.steps)
                html += std::string("<tr><td>") + stage + "</td><td>" + what + "</td></tr>";
            html += "</table></body></html>";
            return CatalogueDocument{"text/html; charset=utf-8", html};
        }
        if (path == picturePrefix + p.slug + ".svg") {
            const std::string svg =
                "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"300\" height=\"220\" viewBox=\"0 0 300 220\">"
                "<rect width=\"300\" height=\"220\" fill=\"#78b930\"/><circle cx=\"150\" cy=\"95\" r=\"55\" fill=\"#fff\" "
                "opacity=\"0.9\"/><path d=\"M150 60 C120 95 130 125 150 135 C170 125 180 95 150 60Z\" fill=\"#0090c5\"/>"
                "<text x=\"150\" y=\"190\" font-family=\"sans-serif\" font-size=\"26\" fill=\"#fff\" text-anchor=\"middle\">" +
                std::string(p.crop) + "</text></svg>";
            return CatalogueDocument{"image/svg+xml", svg};
        }
    }
    return std::nullopt;
}

namespace {

// The representative is the one recorded with the account's region; an account without one hears so.
Json regionAttendant(Database& db, const ApiCall& call) {
    const auto row = db.queryRow("SELECT region_fullname, region_phonenumber FROM users WHERE id = ?", {call.userId});
    const std::string name = row ? row->at("region_fullname").get<std::string>() : "";
    const std::string phone = row ? row->at("region_phonenumber").get<std::string>() : "";
    if (name.empty() || phone.empty())
        return Json{{"status", envelope::Ok},
                    {"message", Json{{"type", "warning"}, {"text", "Bölge yetkilisi bulunamadı"}}},
                    {"errors", Json::object()},
                    {"data", Json::object()}};
    return Json{{"status", envelope::Ok},
                {"message", Json{{"type", "success"}, {"text", ""}}},
                {"errors", Json::object()},
                {"data", Json{{"fullname", name}, {"phonenumber", phone}}}};
}

} // namespace

void registerRegionAttendant(Dispatch& dispatch, Database& db) {
    dispatch.add("productCatalog/region-attendant", Access::Account, regionAttendant, db);
}

} // namespace ekinora::server::catalogue
