#include "farms/Documents.h"

#include "core/Html.h"

#include "farms/Calendar.h"
#include "farms/Pdf.h"

#include <charconv>
#include <vector>

namespace ekinora::server::farms {

namespace {

// The product names carry their registration mark as markup; the PDF shows it as a character.
std::string plainName(std::string name) {
    for (auto [markup, plain] :
         {std::pair<std::string, std::string>{"<sup>&reg;</sup>", "®"}, {"<sup>", ""}, {"</sup>", ""}})
        for (size_t at; (at = name.find(markup)) != std::string::npos;)
            name.replace(at, markup.size(), plain);
    return name;
}


std::optional<Document> periodDocument(Database& db, std::int64_t periodId) {
    auto period =
        db.queryRow("SELECT pe.name, p.name AS crop FROM periods pe JOIN produces p ON p.id = pe.produce_id"
                    " WHERE pe.id = ?",
                    {periodId});
    if (!period) return std::nullopt;
    const std::string crop = period->at("crop").get<std::string>();
    const std::string name = period->at("name").get<std::string>();

    std::vector<pdf::Paragraph> text = {
        {crop + " yetiştiriciliğinde " + name + " dönemi rehberi", 12, true, 0},
        {"Bu dönemde tarlanızda görülebilecek yabancı otlar, zararlılar ve hastalıklar ile bunlara karşı "
         "önerdiğimiz ürünler aşağıdadır.",
         10, false, 6},
    };
    const Json groups = pestGroups(db, periodId, "");
    for (const auto& group : groups) {
        text.push_back({group.at("name").get<std::string>(), 13, true, 14});
        for (const auto& pest : group.at("data")) {
            text.push_back({pest.at("name").get<std::string>(), 11, true, 8});
            auto summary =
                db.queryRow("SELECT summary FROM pests WHERE id = ?", {pest.at("id").get<std::int64_t>()});
            if (summary) text.push_back({summary->at("summary").get<std::string>(), 10, false, 2});
            std::string products;
            for (const auto& product : pest.at("aps"))
                products += (products.empty() ? "" : ", ") + plainName(product.at("name").get<std::string>());
            if (!products.empty()) text.push_back({"Önerilen ürünler: " + products, 10, false, 2});
        }
    }
    if (groups.empty())
        text.push_back(
            {"Bu dönemde öne çıkan bir zirai sorun beklenmiyor. Tarlanızı düzenli olarak gözlemlemeyi "
             "sürdürün.",
             10, false, 14});
    text.push_back(
        {"Ürünleri etiketinde belirtilen doz ve hasat öncesi bekleme sürelerine uyarak kullanınız. "
         "Sorularınızı Mesajlarım bölümünden ziraat mühendislerimize iletebilirsiniz.",
         9, false, 20});
    return Document{"application/pdf", pdf::textDocument(crop + " - " + name + " Dönemi", text)};
}

std::optional<Document> pestPage(Database& db, const std::string& slug) {
    auto pest =
        db.queryRow("SELECT id, name, group_name, image_path, summary FROM pests WHERE slug = ?", {slug});
    if (!pest) return std::nullopt;
    const auto id = pest->at("id").get<std::int64_t>();

    std::string seasons;
    for (const auto& row :
         db.query("SELECT crop, group_concat(period, ', ') AS periods FROM"
                  " (SELECT p.id AS produce_id, p.sort_order, p.name AS crop, pe.name AS period"
                  "  FROM period_pests pp JOIN periods pe ON pe.id = pp.period_id"
                  "  JOIN produces p ON p.id = pe.produce_id WHERE pp.pest_id = ?"
                  "  ORDER BY p.sort_order, pe.id)"
                  " GROUP BY produce_id ORDER BY sort_order",
                  {id}))
        seasons += "<li><b>" + escapeHtml(row.at("crop").get<std::string>()) + ":</b> " +
                   escapeHtml(row.at("periods").get<std::string>()) + "</li>";

    // Product names are the company's own texts, with their markup.
    std::string products;
    for (const auto& row : db.query("SELECT a.id, a.name FROM pest_aps pa JOIN aps a ON a.id = pa.ap_id"
                                    " WHERE pa.pest_id = ? ORDER BY pa.position",
                                    {id}))
        products += "<li><img src=\"" + productPicturePath(row.at("id").get<std::int64_t>()) +
                    "\" alt=\"\"><span>" + row.at("name").get<std::string>() + "</span></li>";

    const std::string name = escapeHtml(pest->at("name").get<std::string>());
    std::string html =
        "<!DOCTYPE html>\n<html lang=\"tr\"><head><meta charset=\"utf-8\">"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"><title>" +
        name +
        "</title><style>"
        "body{margin:0;font-family:sans-serif;color:#333;background:#fff}"
        "header{position:relative;height:160px;overflow:hidden}"
        "header img{width:100%;height:100%;object-fit:cover}"
        "header div{position:absolute;left:0;right:0;bottom:0;padding:12px 16px;"
        "background:linear-gradient(transparent,rgba(0,0,0,.65));color:#fff}"
        "h1{margin:0;font-size:24px}header p{margin:4px 0 0;font-size:14px}"
        "main{padding:8px 16px 24px;line-height:1.5}h2{font-size:17px;color:#78b930;margin:20px 0 8px}"
        "ul{padding-left:20px}.products{list-style:none;padding:0;display:flex;flex-wrap:wrap;gap:12px}"
        ".products li{width:96px;text-align:center;font-size:13px}"
        ".products img{width:80px;height:80px;border:1px solid #ebebeb;border-radius:4px}"
        "</style></head><body><header>";
    if (pest->at("image_path").is_string())
        html += "<img src=\"" + pest->at("image_path").get<std::string>() + "\" alt=\"\">";
    html += "<div><h1>" + name + "</h1><p>" + escapeHtml(pest->at("group_name").get<std::string>()) +
            "</p></div></header><main><p>" + escapeHtml(pest->at("summary").get<std::string>()) + "</p>";
    if (!seasons.empty()) html += "<h2>Görüldüğü dönemler</h2><ul>" + seasons + "</ul>";
    if (!products.empty())
        html += "<h2>Önerilen ürünlerimiz</h2><ul class=\"products\">" + products + "</ul>";
    html +=
        "<p><small>Ürünleri etiketinde belirtilen doz ve bekleme sürelerine uyarak kullanınız.</small></p>"
        "</main></body></html>\n";
    return Document{"text/html; charset=utf-8", std::move(html)};
}

bool startsWith(const std::string& text, const std::string& prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

} // namespace

std::optional<Document> calendarDocument(Database& db, const std::string& path) {
    const std::string periods = "/documents/periods/", pdf = ".pdf";
    if (startsWith(path, periods) && path.size() > periods.size() + pdf.size() &&
        path.compare(path.size() - pdf.size(), pdf.size(), pdf) == 0) {
        const char* first = path.data() + periods.size();
        const char* last = path.data() + path.size() - pdf.size();
        std::int64_t id = 0;
        const auto [end, error] = std::from_chars(first, last, id);
        if (error != std::errc() || end != last) return std::nullopt;
        return periodDocument(db, id);
    }
    const std::string pests = ProductSitePrefix + pestPagePath("");
    if (startsWith(path, pests) && path.size() > pests.size()) return pestPage(db, path.substr(pests.size()));
    return std::nullopt;
}

} // namespace ekinora::server::farms
