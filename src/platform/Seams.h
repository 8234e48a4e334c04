#pragma once

#include <QtQml/qqmlregistration.h>

#include <QColor>
#include <QObject>
#include <QString>

namespace ekinora::platform {

// Facilities of the phone platforms with no effect on the desktop. They keep what they were told, so
// that the start can be checked.

// Keyboard avoidance: Qt Quick moves nothing by itself on the desktop.
class KeyboardManager {
public:
    static KeyboardManager& sharedManager();
    void setEnable(bool enable) { m_enabled = enable; }
    bool isEnabled() const { return m_enabled; }

private:
    bool m_enabled = false;
};

// The measurement library of the analytics code: configured once at start.
class MeasurementApp {
public:
    static void configure() { s_configured = true; }
    static bool isConfigured() { return s_configured; }

private:
    static inline bool s_configured = false;
};

// The navigation bars' look, set once at start and read by every bar.
class NavigationBarAppearance : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(UINavigationBarAppearance)
    QML_UNCREATABLE("Made by the application.")
    Q_PROPERTY(QColor titleColor MEMBER titleColor NOTIFY changed)
    Q_PROPERTY(QString titleFontFamily MEMBER titleFontFamily NOTIFY changed)
    Q_PROPERTY(int titleFontSize MEMBER titleFontSize NOTIFY changed)
    Q_PROPERTY(QColor tintColor MEMBER tintColor NOTIFY changed)
    Q_PROPERTY(bool plainBackground MEMBER plainBackground NOTIFY changed)
public:
    static NavigationBarAppearance& shared();
    QColor titleColor = QColor(51, 51, 51);
    QString titleFontFamily;
    int titleFontSize = 18;
    QColor tintColor = QColor(51, 51, 51);
    // An empty image as background and shadow: a flat bar without a line.
    bool plainBackground = false;
    // The device orientation forced at start (1: portrait).
    int deviceOrientation = 0;
    void apply() { emit changed(); }

signals:
    void changed();
};

} // namespace ekinora::platform
