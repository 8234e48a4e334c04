#pragma once

#include "platform/AlertController.h"

namespace ekinora::catalogue {

// The catalogue's plain alert: "Uyarı", the message, one "Tamam" that only closes it.
inline void showAlert(const QString& message, platform::ViewController* screen) {
    screen->presentViewController(
        platform::AlertController::simple(QStringLiteral("Uyarı"), message, QStringLiteral("Tamam")), true);
}

// Each text edit by the user goes through the field and then to the screen, as the field's
// "editing changed" target does; a text set by the screen itself calls nothing.
inline void onEditingChanged(platform::TextField* field, std::function<void()> changed) {
    field->setShouldChange([changed = std::move(changed)](platform::TextField* f, int location, int length,
                                                          const QString& replacement) {
        QString next = f->text();
        next.replace(location, length, replacement);
        if (next == f->text()) return false;
        f->setText(next);
        changed();
        return false; // already applied
    });
}

} // namespace ekinora::catalogue
