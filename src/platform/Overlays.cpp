#include "Overlays.h"

#include "Platform.h"
#include "ViewController.h"
#include "Window.h"

namespace ekinora::platform {

ProgressHUD::ProgressHUD(ViewController* host) : QObject(&Platform::current().window()), m_host(host) {}

ProgressHUD* ProgressHUD::showHUDAddedTo(ViewController* host, bool animated) {
    auto* hud = new ProgressHUD(host);
    Platform::current().window().addHUD(hud);
    return hud;
}

void ProgressHUD::hideAnimated(bool animated) {
    if (!m_shown) return;
    m_shown = false;
    Platform::current().window().removeHUD(this);
    deleteLater();
}

void ProgressHUD::hideAnimated(bool animated, double delaySeconds) {
    QPointer<ProgressHUD> self(this);
    Platform::current().scheduler().after(int(delaySeconds * 1000), [self, animated] {
        if (self) self->hideAnimated(animated);
    });
}

void WaitOverlay::showWaitOverlayWithText(ViewController* host, const QString& text) {
    Platform::current().window().setWaitOverlay(host, text);
}

void WaitOverlay::removeAllOverlays(ViewController* host) { Platform::current().window().setWaitOverlay(nullptr, {}); }

} // namespace ekinora::platform
