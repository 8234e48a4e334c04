#include "farms/Produces.h"

#include "core/Envelope.h"

namespace ekinora::server::farms {

namespace {

struct Crop {
    std::int64_t id;
    const char* name;
    const char* image;
};

// In the order the crop panel shows them: field crops first, then vegetables, then orchards.
const Crop Crops[] = {
    {1, "Buğday", "bugday.svg"},
    {2, "Arpa", "arpa.svg"},
    {3, "Mısır", "misir.svg"},
    {4, "Ayçiçeği", "aycicegi.svg"},
    {5, "Pamuk", "pamuk.svg"},
    {6, "Kanola", "kanola.svg"},
    {7, "Şeker Pancarı", "seker-pancari.svg"},
    {8, "Çeltik", "celtik.svg"},
    {9, "Patates", "patates.svg"},
    {10, "Domates", "domates.svg"},
    {11, "Biber", "biber.svg"},
    {12, "Karpuz", "karpuz.svg"},
    {13, "Üzüm (Bağ)", "uzum.svg"},
    {14, "Elma", "elma.svg"},
    {15, "Zeytin", "zeytin.svg"},
    {16, "Fındık", "findik.svg"},
};

struct Product {
    std::int64_t id;
    const char* name;
};

// Registered names carry the mark as markup, as the app expects it; the foliar fertiliser is not
// a registered name. 51 is the product of the seeded campaign popup. Ids stay under 100: the crop
// calendar's pest cards clear the pictures tagged 0 to 99 before drawing theirs, and a product's picture
// is tagged with its id.
const Product Products[] = {
    {51, "Tarvenza<sup>&reg;</sup> 250 EC"},   {52, "Nodrix<sup>&reg;</sup> 480 SC"},
    {53, "Kelvaro<sup>&reg;</sup> 70 WG"},     {54, "Sorimet<sup>&reg;</sup> 5 EC"},
    {55, "Pradelin<sup>&reg;</sup> 200 SL"},   {56, "Voltanya<sup>&reg;</sup> 25 WP"},
    {57, "Ekitor<sup>&reg;</sup> 10 GR"},      {58, "Durasil<sup>&reg;</sup> 300 SC"},
    {59, "Mirelo<sup>&reg;</sup> 45 OD"},      {60, "Zentafos<sup>&reg;</sup> 500 EC"},
    {61, "Kelvaro<sup>&reg;</sup> Duo 60 WG"}, {62, "Yaprak Gübresi 20-20-20"},
};

} // namespace

void seedProduces(Database& db) {
    auto guard = db.lock();
    db.transaction([&] {
        if (db.scalar("SELECT COUNT(*) FROM produces") == 0) {
            std::int64_t order = 0;
            for (const auto& crop : Crops)
                db.execute("INSERT INTO produces (id, name, image_path, sort_order) VALUES (?, ?, ?, ?)",
                           {crop.id, std::string(crop.name),
                            "/static/media/produces/" + std::string(crop.image), ++order});
        }
        if (db.scalar("SELECT COUNT(*) FROM aps") == 0) {
            std::int64_t order = 0;
            for (const auto& product : Products)
                db.execute("INSERT INTO aps (id, name, sort_order) VALUES (?, ?, ?)",
                           {product.id, std::string(product.name), ++order});
        }
    });
}

namespace {

// "farmerprio" (sent by the grant search) asks for the same list.
Json crops(Database& db, const ApiCall& call) {
    Json list = Json::array();
    for (auto& row : db.query("SELECT id, name, image_path FROM produces ORDER BY sort_order"))
        list.push_back(Json{{"id", row.at("id")},
                            {"name", row.at("name")},
                            {"image", call.baseUrl + row.at("image_path").get<std::string>()}});
    return envelope::success(Json{{"produces", std::move(list)}});
}

Json products(Database& db, const ApiCall&) {
    return envelope::success(Json{{"aps", db.query("SELECT id, name FROM aps ORDER BY sort_order")}});
}

} // namespace

void registerProduceCommands(Dispatch& dispatch, Database& db) {
    dispatch.add("produces", Access::Public, crops, db);
    dispatch.add("produce/aps", Access::Public, products, db);
}

} // namespace ekinora::server::farms
