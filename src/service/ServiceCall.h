#pragma once

#include "RequestFrame.h"

#include "platform/Overlays.h"
#include "platform/ViewController.h"

#include <QPointer>

namespace ekinora::service {

// Where a screen's progress indicator goes: its navigation stack when it has one, else itself.
platform::ViewController* hudHost(platform::ViewController* screen);

// A line in the application's log.
void log(const QString& line);

// The usual answer to a rejection: the first value of "errors" under "Uyarı", with one "Tamam".
void showFirstError(platform::ViewController* screen, const Json& response);

// The ritual around one request of a screen, written once: the progress indicator (when asked for) on
// the screen's host from the send until the reply, the failure logged under the call's name, the
// screen kept alive until the reply. The screen interprets the reply itself.
//
//   ScreenCall call(this, QStringLiteral("getFarms"), ScreenCall::WithHud);
//   request.requestData(call.done([self](const Json& r) { ... }), call.failed());
class ScreenCall {
public:
    // WithHud: on the screen's host; WithHudOnScreen: on the screen itself (a presented screen's own view).
    enum Indicator { NoHud, WithHud, WithHudOnScreen };

    ScreenCall(platform::ViewController* screen, QString name, Indicator indicator = NoHud);

    // The success callback: the indicator goes, then the screen's handling.
    Callback done(Callback handle) const;
    // The failure callback: the failing body logged, the indicator gone, then anything more.
    Callback failed(Callback more = {}) const;

    platform::ProgressHUD* hud() const { return m_hud; }

private:
    platform::Strong<platform::ViewController> m_screen;
    QString m_name;
    QPointer<platform::ProgressHUD> m_hud;
};

} // namespace ekinora::service
