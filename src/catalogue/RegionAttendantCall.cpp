#include "RegionAttendantCall.h"

#include "CatalogueRequests.h"
#include "DocumentViewers.h"
#include "platform/AlertController.h"
#include "platform/Overlays.h"
#include "platform/Platform.h"

namespace ekinora::catalogue {

using namespace platform;

void callRegionAttendant(ViewController* screen, CallerScreen caller) {
    WaitOverlay::showWaitOverlayWithText(screen, QStringLiteral("Yetkili Bulunuyor"));
    // A transport failure or a reply that is no JSON never calls back: the overlay stays.
    GetGpsSearchRequest().getRegionAttendant([screen = strong(screen), caller](const Json& json, const Error& error) {
        if (caller == CallerScreen::MaizeDetail) Platform::current().application().log(description(json));
        else if (error) return;
        WaitOverlay::removeAllOverlays(screen.get());
        const Json type = path(json, {QStringLiteral("message"), QStringLiteral("type")});
        if (isString(type, QStringLiteral("warning"))) {
            const QString button = caller == CallerScreen::ProductDetail ? QStringLiteral("tamam") : QStringLiteral("Tamam");
            screen->presentViewController(
                AlertController::simple(QStringLiteral("Uyarı"), QStringLiteral("Bölge yetkilisi bulunamadı"), button), true);
            return;
        }
        if (!isString(type, QStringLiteral("success"))) return;
        const QString name = stringOrNull(path(json, {QStringLiteral("data"), QStringLiteral("fullname")}));
        const QString phone = stringOrNull(path(json, {QStringLiteral("data"), QStringLiteral("phonenumber")}));
        if (name.isNull() || phone.isNull())
            fatal(QStringLiteral("Fatal error: Unexpectedly found nil while unwrapping an Optional value (region attendant)"));
        const QString message = QStringLiteral("Size en yakın Zelmar yetkilisi ") + name + QStringLiteral(" aranacaktır. ") +
                                phone + QStringLiteral(" no'lu numara aransın mı?");
        auto* alert = AlertController::alertControllerWithTitle(QStringLiteral("Uyarı"), message, AlertController::Alert);
        alert->addAction(QStringLiteral("Ara"), AlertController::Default, [phone] { placeCall(phone); });
        alert->addAction(QStringLiteral("Vazgeç"), AlertController::Cancel);
        screen->presentViewController(alert, true);
    });
}

void placeCall(const QString& phone) {
    const auto url = urlFromString(QStringLiteral("tel://") + phone);
    if (!url) return;
    auto& application = Platform::current().application();
    if (application.canOpenURL(*url)) application.openURL(*url);
}

} // namespace ekinora::catalogue
