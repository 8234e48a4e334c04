#include "seeds/Seeds.h"

#include "catalogue/CatalogueDetail.h"
#include "core/Params.h"
#include "farms/Pdf.h"

namespace ekinora::server::seeds {

namespace {

const std::string Maize = "maize-catalog";
const std::string Canola = "canola-catalog";

struct Hybrid {
    std::int64_t id;
    const char* catalog;
    std::int64_t group; // 362 silage, 363 grain, 364 early; 0 for canola
    const char* name;
    const char* maturity; // FAO group or season type
    const char* yield;
    const char* plant;
    const char* cob;
    const char* regions;
};

const std::vector<Hybrid>& hybrids() {
    static const std::vector<Hybrid> list = {
        {5001, "maize-catalog", 362, "Akbaşak 720", "FAO 700", "Yeşil ot 7.500-8.500 kg/da",
         "Boylu (300-320 cm), yapraklı, geç kuruyan sap", "At dişi, 18-20 sıra, iri koçan",
         "Çukurova, Ege ve Marmara sahil kuşağı"},
        {5002, "maize-catalog", 362, "Yeşilova 690", "FAO 650", "Yeşil ot 7.000-8.000 kg/da",
         "Güçlü kök yapısı, yatmaya dayanıklı", "Yarı at dişi, 16-18 sıra", "İç Anadolu sulu alanları, Trakya"},
        {5003, "maize-catalog", 363, "Altınkoçan 650", "FAO 650", "Dane 1.350-1.500 kg/da",
         "Orta boylu (270 cm), sağlam sap", "At dişi, turuncu-sarı dane, 18 sıra", "Çukurova, Amik Ovası, GAP"},
        {5004, "maize-catalog", 363, "Harmanyeri 600", "FAO 600", "Dane 1.250-1.400 kg/da",
         "Dik yapraklı, sık ekime uygun", "Uzun koçan, ince koçan içi", "Ege, Marmara, Orta Karadeniz"},
        {5005, "maize-catalog", 364, "Erkenci 450", "FAO 450", "Dane 1.050-1.200 kg/da",
         "Kısa boylu, hızlı gelişen", "Yarı sert dane, 14-16 sıra", "İkinci ürün alanları, Orta Anadolu"},
        {5006, "maize-catalog", 364, "Tanyeri 500", "FAO 500", "Dane 1.100-1.250 kg/da",
         "Soğuğa toleranslı erken çıkış", "Sarı dane, hızlı su kaybı", "Trakya, Doğu Anadolu vadi tabanları"},
        {6001, "canola-catalog", 0, "Sarıyazı 21", "Kışlık, orta erkenci", "Tane 380-420 kg/da",
         "Kışa dayanıklı rozet, 140-160 cm boy", "Çatlamaya dayanıklı kapsül, yağ %44-46", "Trakya, Marmara, Karadeniz"},
        {6002, "canola-catalog", 0, "Çiçekli Ova", "Kışlık, erkenci", "Tane 350-400 kg/da",
         "Erken çiçeklenme, kısa boy", "Yüksek bin tane ağırlığı, yağ %43-45", "Ege, Çukurova, Güneydoğu"},
    };
    return list;
}

std::string groupName(std::int64_t group) {
    switch (group) {
    case 362: return "Silajlık Mısır";
    case 363: return "Danelik Mısır";
    case 364: return "Erkenci Mısır";
    default: return "Kanola";
    }
}

std::string quoted(const std::string& text) {
    std::string out = "'";
    for (char c : text) out += c == '\'' ? std::string("''") : std::string(1, c);
    return out + "'";
}

const Hybrid* find(std::int64_t id, const std::string& catalog) {
    for (const auto& h : hybrids())
        if (h.id == id && catalog == h.catalog) return &h;
    return nullptr;
}

Json block(std::int64_t id, const std::string& type, Json data) {
    return Json{{"contentItemId", id}, {"type", type}, {"data", std::move(data)}};
}
Json card(std::int64_t id, const std::string& title, const std::string& text, const std::string& src) {
    return block(id, "contentBox", Json{{"contentBox", Json{{"title", title}, {"description", text}, {"src", src}}}});
}
Json picture(std::int64_t id, const std::string& src) { return block(id, "image", Json{{"image", Json{{"src", src}}}}); }
Json paragraph(std::int64_t id, const std::string& text) {
    return block(id, "paragraph", Json{{"paragraph", Json::array({text})}});
}
Json headline(std::int64_t id, const std::string& text) {
    return block(id, "headline", Json{{"headline", Json::array({text})}});
}
Json section(std::int64_t id, const std::string& header, Json blocks) {
    return Json{{"id", id}, {"header", header}, {"data", std::move(blocks)}};
}

} // namespace

std::string schemaSql() {
    return R"sql(
CREATE TABLE seed_products (
    id INTEGER PRIMARY KEY,
    catalog TEXT NOT NULL CHECK (catalog IN ('maize-catalog', 'canola-catalog')),
    pgroup INTEGER NOT NULL,
    group_name TEXT NOT NULL,
    title TEXT NOT NULL,
    maturity TEXT NOT NULL,
    yield TEXT NOT NULL,
    plant TEXT NOT NULL,
    cob TEXT NOT NULL,
    regions TEXT NOT NULL,
    sort_order INTEGER NOT NULL
);
CREATE INDEX seed_products_catalog ON seed_products(catalog, pgroup);
)sql";
}

std::string seedSql() {
    std::string sql;
    std::int64_t order = 0;
    for (const auto& h : hybrids())
        sql += "INSERT INTO seed_products (id, catalog, pgroup, group_name, title, maturity, yield, plant, cob, regions,"
               " sort_order) VALUES (" +
               std::to_string(h.id) + ", " + quoted(h.catalog) + ", " + std::to_string(h.group) + ", " +
               quoted(groupName(h.group)) + ", " + quoted(h.name) + ", " + quoted(h.maturity) + ", " + quoted(h.yield) +
               ", " + quoted(h.plant) + ", " + quoted(h.cob) + ", " + quoted(h.regions) + ", " + std::to_string(++order) +
               ") ON CONFLICT DO NOTHING;\n";
    return sql;
}

bool isSeedCatalog(const std::string& catalog) { return catalog == Maize || catalog == Canola; }

Json products(Database& db, const ApiCall& call) {
    Params p(call);
    const std::string catalog = p.required("catalog", "Katalog seçilmedi.");
    std::optional<std::int64_t> group;
    if (catalog == Maize && !p.blank("pgroup")) {
        group = p.integer("pgroup");
        if (!group || *group <= 0) p.fail("pgroup", "Geçerli bir ürün grubu seçiniz.");
    }
    if (!p.ok()) return p.rejection();
    std::string sql = "SELECT id, title, group_name FROM seed_products WHERE catalog = ?";
    std::vector<SqlValue> args{catalog};
    if (group) sql += " AND pgroup = ?", args.push_back(*group);
    Json list = Json::array();
    for (auto& row : db.query(sql + " ORDER BY sort_order", args))
        list.push_back(Json{{"id", row.at("id")},
                            {"title", row.at("title")},
                            {"group", row.at("group_name")},
                            {"image", call.baseUrl + "/static/seeds/" + std::to_string(row.at("id").get<std::int64_t>()) + ".svg"}});
    // The seed list reads "message" and "errors" as texts.
    return Json{{"status", envelope::Ok}, {"message", ""}, {"errors", ""}, {"data", std::move(list)}};
}

Json productDetail(Database& db, const ApiCall& call) {
    Params p(call);
    const std::string catalog = p.required("catalog", "Katalog seçilmedi.");
    const auto id = p.requiredInteger("id", "Ürün seçilmedi.", "Aradığınız ürün bulunamadı.");
    if (!p.ok()) return p.rejection();
    const auto row = db.queryRow("SELECT * FROM seed_products WHERE id = ? AND catalog = ?", {*id, catalog});
    if (!row) {
        p.fail("id", "Aradığınız ürün bulunamadı.");
        return p.rejection();
    }
    const auto text = [&](const char* column) { return (*row).at(column).get<std::string>(); };
    const std::string base = call.baseUrl + "/static/seeds/";
    const std::string pic = base + std::to_string(*id) + ".svg";
    Json contents = Json::array();
    if (catalog == Maize) {
        contents.push_back(section(1, "Hibrit Özellikleri",
                                   Json::array({picture(1, base + "tarla-misir.svg"),
                                                card(2, "Olgunlaşma Grubu", text("maturity"), base + "olgunluk.svg"),
                                                card(3, "Verim", text("yield"), base + "verim.svg"),
                                                // A block the seed detail does not render.
                                                paragraph(4, "Sertifikalı tohumluk, ilaçlı olarak satılır.")})));
        contents.push_back(section(2, "Bitki ve Koçan", Json::array({card(5, "Bitki Yapısı", text("plant"), base + "bitki.svg"),
                                                                     card(6, "Koçan ve Dane", text("cob"), base + "kocan.svg")})));
        contents.push_back(section(3, "Önerilen Bölgeler",
                                   Json::array({card(7, "Bölgeler", text("regions"), base + "bolge.svg"),
                                                card(8, "Ekim Sıklığı", "Dekara 7.000-8.000 bitki; sıra arası 70 cm.",
                                                     base + "ekim.svg")})));
    } else {
        // Canola by position: the first section's first block is the picture; the others are pairs of a
        // paragraph and its headline.
        contents.push_back(section(1, "Genel Bakış",
                                   Json::array({paragraph(1, text("title") + ", " + text("regions") +
                                                                 " için geliştirilmiş, kışa ve yatmaya dayanıklı bir hibrittir."),
                                                headline(2, text("title"))})));
        contents.push_back(section(2, "Tarladan Görünüm", Json::array({picture(3, base + "tarla-kanola.svg")})));
        contents.push_back(section(3, "Tarım Bilgileri",
                                   Json::array({paragraph(5, text("maturity") + ". " + text("plant") + "."), headline(6, "Gelişme"),
                                                paragraph(7, text("yield") + ". " + text("cob") + "."), headline(8, "Verim ve Kalite"),
                                                paragraph(9, "Önerilen bölgeler: " + text("regions") + "."), headline(10, "Bölgeler")})));
    }
    const std::string group = text("group_name");
    Json data = {{"id", *id},
                 {"title", text("title")},
                 {"group", group},
                 {"status", 1},
                 {"path", pic},
                 {"fileId", *id},
                 {"contents", std::move(contents)},
                 {"documents", Json::array({Json{{"id", *id * 10 + 1},
                                                 {"fileId", *id * 10 + 1},
                                                 {"type", "document"},
                                                 {"extra", "Çeşit Tanıtım Broşürü"},
                                                 {"path", call.baseUrl + "/documents/seeds/" + std::to_string(*id) + "/brosur.pdf"}}})},
                 {"media", Json::array()}};
    return envelope::success(std::move(data));
}

std::optional<catalogue::CatalogueDocument> seedDocument(Database& db, const std::string& path) {
    const std::string prefix = "/documents/seeds/", file = "/brosur.pdf";
    if (path.rfind(prefix, 0) != 0 || path.size() <= prefix.size() + file.size() ||
        path.compare(path.size() - file.size(), file.size(), file) != 0)
        return std::nullopt;
    const std::string digits = path.substr(prefix.size(), path.size() - prefix.size() - file.size());
    if (digits.empty() || digits.size() > 9 || digits.find_first_not_of("0123456789") != std::string::npos) return std::nullopt;
    const auto row = db.queryRow("SELECT * FROM seed_products WHERE id = ?", {std::stoll(digits)});
    if (!row) return std::nullopt;
    const auto text = [&](const char* column) { return (*row).at(column).get<std::string>(); };
    const std::vector<pdf::Paragraph> paragraphs = {
        {text("title") + " - " + text("group_name"), 14, true, 0},
        {"Olgunlaşma: " + text("maturity"), 10, false, 8},
        {"Verim: " + text("yield"), 10, false, 2},
        {"Bitki: " + text("plant"), 10, false, 2},
        {"Koçan / kapsül: " + text("cob"), 10, false, 2},
        {"Önerilen bölgeler: " + text("regions"), 10, false, 2},
        {"Verim değerleri deneme sonuçlarının ortalamasıdır; toprak, iklim ve bakım koşullarına göre değişir. "
         "Ekimden önce bölge temsilcinize danışınız.",
         9, false, 10}};
    return catalogue::CatalogueDocument{"application/pdf", pdf::textDocument(text("title") + " Tanıtım Broşürü", paragraphs)};
}

} // namespace ekinora::server::seeds
