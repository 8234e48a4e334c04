#include "ServiceCall.h"

#include "Replies.h"

#include "platform/AlertController.h"
#include "platform/NavigationController.h"
#include "platform/Platform.h"

namespace ekinora::service {

using namespace platform;

ViewController* hudHost(ViewController* screen) {
    if (NavigationController* nav = screen->navigationController()) return nav;
    return screen;
}

void log(const QString& line) { Platform::current().application().log(line); }

void showFirstError(ViewController* screen, const Json& response) {
    auto* alert = AlertController::alertControllerWithTitle(QStringLiteral("Uyarı"), firstError(response));
    alert->addAction(QStringLiteral("Tamam"));
    screen->presentViewController(alert, true);
}

ScreenCall::ScreenCall(ViewController* screen, QString name, Indicator indicator)
    : m_screen(screen), m_name(std::move(name)) {
    if (indicator != NoHud) m_hud = ProgressHUD::showHUDAddedTo(indicator == WithHud ? hudHost(screen) : screen, true);
}

Callback ScreenCall::done(Callback handle) const {
    return [screen = m_screen, hud = m_hud, handle = std::move(handle)](const Json& response) {
        if (hud) hud->hideAnimated(true);
        if (handle) handle(response);
    };
}

Callback ScreenCall::failed(Callback more) const {
    return [screen = m_screen, hud = m_hud, name = m_name, more = std::move(more)](const Json& error) {
        log(QStringLiteral("%1: %2").arg(name, description(error)));
        if (hud) hud->hideAnimated(true);
        if (more) more(error);
    };
}

} // namespace ekinora::service
