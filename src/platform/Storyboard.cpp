#include "Storyboard.h"

#include "Application.h"
#include "ViewController.h"

#include <QHash>
#include <QVariant>

namespace ekinora::platform {

namespace {
QHash<QString, Storyboard::Factory>& registry() {
    static QHash<QString, Storyboard::Factory> r;
    return r;
}
} // namespace

void Storyboard::registerIdentifier(const QString& identifier, Factory factory) {
    registry().insert(identifier, std::move(factory));
}

bool Storyboard::contains(const QString& identifier) { return registry().contains(identifier); }

QStringList Storyboard::identifiers() {
    QStringList ids = registry().keys();
    ids.sort();
    return ids;
}

ViewController* Storyboard::instantiateViewControllerWithIdentifier(const QString& identifier) {
    auto it = registry().constFind(identifier);
    if (it == registry().constEnd()) {
        if (auto* app = Application::shared())
            app->log(QStringLiteral("Storyboard has no view controller with identifier '%1'").arg(identifier));
        return nullptr;
    }
    ViewController* made = (*it)();
    // Tests and tools tell screens apart by the identifier they were made from.
    if (made && !made->property("storyboardIdentifier").isValid()) made->setProperty("storyboardIdentifier", identifier);
    return made;
}

void Storyboard::clear() { registry().clear(); }

} // namespace ekinora::platform
