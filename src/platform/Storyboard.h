#pragma once

#include <QString>
#include <QStringList>
#include <functional>

namespace ekinora::platform {

class ViewController;

// The storyboard registry: identifiers ("firstViewController", "loginVC", "messageVC", ...) and class
// names of controllers made in code, each with its factory. Areas register their screens at start.
class Storyboard {
public:
    using Factory = std::function<ViewController*()>;
    static void registerIdentifier(const QString& identifier, Factory factory);
    static bool contains(const QString& identifier);
    // Every registered identifier, sorted: tools walk all screens without a list of their own.
    static QStringList identifiers();
    // A new controller, or null (logged) for an identifier that has no screen. The controller carries
    // the identifier in its "storyboardIdentifier" property.
    static ViewController* instantiateViewControllerWithIdentifier(const QString& identifier);
    static void clear();
};

} // namespace ekinora::platform
