#include "catalogue/Catalogue.h"

#include "catalogue/CatalogueDetail.h"
#include "core/Params.h"
#include "seeds/Seeds.h"

#include <optional>
#include <set>

namespace ekinora::server::catalogue {

namespace {

const std::string ProductCatalog = "product-catalog";
const std::string NoCatalog = "Katalog seçilmedi.";
const std::string UnknownCatalog = "Bu katalog bulunamadı.";
const std::string BadPlant = "Geçerli bir bitki seçiniz.";
const std::string BadGroup = "Geçerli bir ürün grubu seçiniz.";
const std::string BadIllness = "Geçerli bir hastalık, zararlı ya da yabancı ot seçiniz.";
const std::string NoProduct = "Ürün seçilmedi.";
const std::string UnknownProduct = "Aradığınız ürün bulunamadı.";

// The chosen plant, group and illness; a value that is sent but is no id goes into p.
struct Choice {
    std::optional<std::int64_t> plant, pgroup, illness;
    bool any() const { return plant || pgroup || illness; }
};

Choice readChoice(Params& p) {
    Choice c;
    const auto read = [&p](const char* name, const std::string& message) -> std::optional<std::int64_t> {
        if (p.blank(name)) return std::nullopt;
        auto id = p.integer(name);
        if (!id || *id <= 0) p.fail(name, message);
        return id;
    };
    c.plant = read("plant", BadPlant);
    c.pgroup = read("pgroup", BadGroup);
    c.illness = read("illness", BadIllness);
    return c;
}

void readCatalog(Params& p) {
    const std::string catalog = p.required("catalog", NoCatalog);
    if (!catalog.empty() && catalog != ProductCatalog) p.fail("catalog", UnknownCatalog);
}

// The uses of the catalogue that fit every part of the choice.
std::string usesWhere(const Choice& c, std::vector<SqlValue>& args) {
    std::string where = " WHERE p.catalog = ?";
    args.push_back(ProductCatalog);
    if (c.plant) where += " AND u.plant_id = ?", args.push_back(*c.plant);
    if (c.illness) where += " AND u.illness_id = ?", args.push_back(*c.illness);
    if (c.pgroup) where += " AND p.group_id = ?", args.push_back(*c.pgroup);
    return where;
}

// The list records read "message" and "errors" as texts: both stay texts here, also on a refusal.
Json listReply(int status, const std::string& message, Json data) {
    return Json{{"status", status}, {"message", message}, {"errors", message}, {"data", std::move(data)}};
}

// The filter record reads "message" as an object with "type" and "text".
Json filterReply(int status, const std::string& type, const std::string& text, Json errors, Json data) {
    return Json{{"status", status},
                {"message", Json{{"type", type}, {"text", text}}},
                {"errors", std::move(errors)},
                {"data", std::move(data)}};
}

Json entries(Database& db, const std::string& sql, const std::vector<SqlValue>& args) {
    Json list = Json::array();
    for (auto& row : db.query(sql, args))
        list.push_back(Json{{"id", row.at("id")}, {"name", row.at("name")}, {"group", row.at("grp")}});
    return list;
}

Json products(Database& db, const ApiCall& call) {
    if (seeds::isSeedCatalog(Params(call).trimmed("catalog"))) return seeds::products(db, call);
    Params p(call);
    readCatalog(p);
    const Choice choice = readChoice(p);
    if (!p.ok()) return listReply(envelope::Rejected, p.errors().front().second, Json::array());
    std::vector<SqlValue> args;
    const std::string sql = "SELECT DISTINCT p.id, p.title, g.name AS grp, p.image_path, p.sort_order"
                            " FROM catalogue_products p JOIN catalogue_groups g ON g.id = p.group_id" +
                            std::string(choice.any() ? " JOIN catalogue_uses u ON u.product_id = p.id" : "") +
                            (choice.any() ? usesWhere(choice, args) : (args.push_back(ProductCatalog), " WHERE p.catalog = ?")) +
                            " ORDER BY p.sort_order";
    Json list = Json::array();
    for (auto& row : db.query(sql, args))
        list.push_back(Json{{"id", row.at("id")},
                            {"title", row.at("title")},
                            {"group", row.at("grp")},
                            {"image", call.baseUrl + row.at("image_path").get<std::string>()}});
    return listReply(envelope::Ok, "", std::move(list));
}

// Every reply carries the three lists. With a choice each list keeps only what occurs in the uses that
// fit it, so choosing a plant leaves that plant, its illnesses and the groups that treat them.
Json filters(Database& db, const ApiCall& call) {
    Params p(call);
    readCatalog(p);
    const Choice choice = readChoice(p);
    if (!p.ok()) {
        Json errors = Json::object();
        for (const auto& [field, text] : p.errors()) errors[field] = text;
        return filterReply(envelope::Rejected, "error", p.errors().front().second, std::move(errors),
                           Json{{"plants", Json::array()}, {"illness", Json::array()}, {"pgroups", Json::array()}});
    }
    std::vector<SqlValue> args;
    const std::string uses = "SELECT u.plant_id, u.illness_id, p.group_id FROM catalogue_uses u"
                             " JOIN catalogue_products p ON p.id = u.product_id" +
                             usesWhere(choice, args);
    const auto list = [&](const char* table, const char* column, const char* kind) {
        return entries(db,
                       std::string("SELECT t.id, t.name, ") + kind + " AS grp FROM " + table + " t WHERE t.id IN (SELECT " +
                           column + " FROM (" + uses + ") fit) ORDER BY t.sort_order",
                       args);
    };
    Json data = Json{{"plants", list("catalogue_plants", "plant_id", "t.kind")},
                     {"illness", list("catalogue_illnesses", "illness_id", "t.kind")},
                     {"pgroups", list("catalogue_groups", "group_id", "'Bitki Koruma'")}};
    return filterReply(envelope::Ok, "success", "", Json::object(), std::move(data));
}

// The table block carries its markup with the quotes escaped by backslashes.
std::string escaped(const std::string& html) {
    std::string out;
    for (char c : html) out += c == '"' ? std::string("\\\"") : std::string(1, c);
    return out;
}

Json block(std::int64_t id, const std::string& type, const char* key, Json lines) {
    return Json{{"contentItemId", id}, {"type", type}, {"data", Json{{key, std::move(lines)}}}};
}

// The detail tree: header, fact sheet, picture and the sections of text, list and table.
Json productDetail(Database& db, const ApiCall& call) {
    if (seeds::isSeedCatalog(Params(call).trimmed("catalog"))) return seeds::productDetail(db, call);
    Params p(call);
    readCatalog(p);
    const auto id = p.requiredInteger("id", NoProduct, UnknownProduct);
    if (!p.ok()) return p.rejection();
    const auto row = db.queryRow("SELECT p.id, p.title, g.name AS grp, p.active_substance, p.formulation,"
                                 " p.package_sizes, p.image_path FROM catalogue_products p"
                                 " JOIN catalogue_groups g ON g.id = p.group_id WHERE p.id = ? AND p.catalog = ?",
                                 {*id, ProductCatalog});
    if (!row) {
        p.fail("id", UnknownProduct);
        return p.rejection();
    }
    const std::string title = (*row).at("title");
    const std::string group = (*row).at("grp");
    const std::string picture = call.baseUrl + (*row).at("image_path").get<std::string>();
    Json uses = Json::array();
    std::string table = "<table class=\"kullanim\" border=\"1\"><tr><th>Bitki</th><th>Hastalık/Zararlı/Yabancı Ot</th></tr>";
    for (auto& use : db.query("SELECT pl.name AS plant, i.name AS illness FROM catalogue_uses u"
                              " JOIN catalogue_plants pl ON pl.id = u.plant_id"
                              " JOIN catalogue_illnesses i ON i.id = u.illness_id"
                              " WHERE u.product_id = ? ORDER BY pl.sort_order, i.sort_order",
                              {*id})) {
        const std::string plant = use.at("plant"), illness = use.at("illness");
        uses.push_back(plant + ": " + illness);
        table += "<tr><td>" + plant + "</td><td>" + illness + "</td></tr>";
    }
    table += "</table>";
    const std::string substance = (*row).at("active_substance");
    Json contents = Json::array();
    contents.push_back(Json{{"id", 1},
                            {"header", "Ürün Hakkında"},
                            {"data", Json::array({block(1, "headline", "headline", Json::array({group})),
                                                  block(2, "paragraph", "paragraph",
                                                        Json::array({"Etkili madde: " + substance + ". Etiketteki doz, "
                                                                     "uygulama zamanı ve hasat öncesi bekleme süresine "
                                                                     "mutlaka uyunuz."}))})}});
    contents.push_back(Json{{"id", 2},
                            {"header", "Kullanım Alanları"},
                            {"data", Json::array({block(3, "list", "list", uses),
                                                  block(4, "table", "table", Json::array({escaped(table)}))})}});
    // Blocks of the seed details, which this detail leaves out.
    contents.push_back(Json{{"id", 3},
                            {"header", "Uygulama Önerileri"},
                            {"data", Json::array({Json{{"contentItemId", 5}, {"type", "image"},
                                                       {"data", Json{{"image", Json{{"src", picture}}}}}},
                                                  block(6, "paragraph", "paragraph",
                                                        Json::array({"İlacı, ilaçlama tankı yarıya kadar doldurulduktan sonra "
                                                                     "karıştırarak ekleyiniz; rüzgârsız ve serin saatlerde uygulayınız.",
                                                                     "Aynı sezonda aynı etki mekanizmasına sahip ürünü art arda "
                                                                     "kullanmayınız."})),
                                                  Json{{"contentItemId", 7}, {"type", "contentBox"},
                                                       {"data", Json{{"contentBox", Json{{"title", "Karışabilirlik"},
                                                                                          {"description", "Ön deneme yapınız."},
                                                                                          {"src", picture}}}}}}})}});
    contents.push_back(Json{{"id", 4},
                            {"header", "Uyarılar"},
                            {"data", Json::array({block(8, "headline", "headline", Json::array({"Dikkat"})),
                                                  block(9, "list", "list",
                                                        Json::array({"Çocukların ulaşamayacağı yerde saklayınız.",
                                                                     "Arıların aktif olduğu saatlerde uygulamayınız.",
                                                                     "Boş ambalajları toplama noktasına teslim ediniz."}))})}});
    Json data = {{"id", *id},
                 {"title", title},
                 {"slogan", "Tarlanızda güvenle"},
                 {"group", group},
                 {"status", 1},
                 {"path", picture},
                 {"fileId", *id},
                 {"contents", std::move(contents)},
                 {"specialities",
                  {{"group", group},
                   {"activeSubstance", substance},
                   {"formulation", (*row).at("formulation")},
                   {"packageSizes", (*row).at("package_sizes")}}},
                 {"documents", productDocuments(*id, call.baseUrl)},
                 {"media", productMedia(*id, title, picture, call.baseUrl)}};
    return envelope::success(std::move(data));
}

} // namespace

void registerCatalogueCommands(Dispatch& dispatch, Database& db) {
    dispatch.add("productCatalog/products", Access::Account, products, db);
    dispatch.add("productCatalog/filters", Access::Account, filters, db);
    dispatch.add("productCatalog/product-detail", Access::Account, productDetail, db);
    registerRegionAttendant(dispatch, db);
}

} // namespace ekinora::server::catalogue
