#include "system/SystemCommands.h"

#include "core/Html.h"

#include "core/Envelope.h"
#include "system/Popups.h"
#include "system/Settings.h"

namespace ekinora::server::sys {

namespace {

// The text travels in "message" as an object, unlike every other command.
Json maintenance(Database& db, const ApiCall&) {
    const auto state = Settings(db).maintenance();
    return envelope::success(Json{{"maintenance", state.on}}, Json{{"text", state.text}});
}

Json popup(Database& db, const ApiCall& call) {
    return envelope::success(Json{{"popup", currentPopup(db, call.userId, call.baseUrl)}});
}

Json appVersion(Database& db, const ApiCall& call) {
    Settings settings(db);
    return envelope::success(Json{{"version", settings.publishedVersion()},
                                  {"storeUrl", call.baseUrl + StorePath},
                                  {"notes", settings.versionNotes()}});
}

} // namespace

void registerCommands(Dispatch& dispatch, Database& db) {
    dispatch.add("maintenance", Access::Public, maintenance, db);
    dispatch.add("popup", Access::Account, popup, db);
    dispatch.add("app/version", Access::Public, appVersion, db);
}

Json probeReply(Database& db) {
    const auto probe = Settings(db).probe();
    if (probe.down) return Json{{"status", false}, {"message", probe.message}};
    return Json{{"status", true}, {"message", ""}};
}

std::string storePage(Database& db) {
    Settings settings(db);
    return "<!DOCTYPE html>\n<html lang=\"tr\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
           "<title>Ekinora</title>\n"
           "<style>body{font-family:sans-serif;margin:24px;color:#333}h1{color:#78b930}"
           ".surum{background:#f2f2f2;padding:12px;border-radius:8px}</style>\n"
           "</head>\n<body>\n<h1>Ekinora</h1>\n"
           "<p>Çiftçinin cebindeki tarım yardımcısı: tarlalarınızı ve ürün takviminizi takip edin, ilçenizin "
           "hava durumunu okuyun, ziraat mühendislerimize soru sorun, ürün kodlarını okutarak Bereket puanı "
           "toplayın.</p>\n"
           "<div class=\"surum\"><p><b>Güncel sürüm:</b> " +
           escapeHtml(settings.publishedVersion()) + "</p>\n<p><b>Yenilikler:</b> " +
           escapeHtml(settings.versionNotes()) +
           "</p></div>\n"
           "<p>Uygulamayı güncellemek için telefonunuzdaki uygulama mağazasını kullanınız.</p>\n"
           "</body>\n</html>\n";
}

} // namespace ekinora::server::sys
