#pragma once

#include <QtQml/qqmlregistration.h>

#include <QList>
#include <QObject>
#include <QPointer>

class QQuickWindow;
class QQuickItem;

namespace ekinora::platform {

class ViewController;
class AlertController;
class ProgressHUD;

// The window: the root controller, the presented controllers above it in order, and the overlays (the
// progress indicator, the wait overlay). With a QML engine it is a phone-sized Qt Quick window.
class Window : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(UIWindow)
    QML_UNCREATABLE("Made by the application.")
    Q_PROPERTY(int hudCount READ hudCount NOTIFY overlaysChanged)
    Q_PROPERTY(int presentedHudCount READ presentedHudCount NOTIFY overlaysChanged)
    Q_PROPERTY(bool waitVisible READ waitVisible NOTIFY overlaysChanged)
    Q_PROPERTY(QString waitText READ waitText NOTIFY overlaysChanged)
public:
    static constexpr int Width = 390;
    static constexpr int Height = 844;

    explicit Window(QObject* parent = nullptr);
    ~Window() override;

    ViewController* rootViewController() const;
    void setRootViewController(ViewController* root);
    void makeKeyAndVisible();
    bool isKeyWindow() const { return m_key; }
    QQuickWindow* quickWindow() const { return m_quick; }

    QList<ViewController*> presentedControllers() const;
    // The alert on top of the presented controllers, if the top one is an alert.
    AlertController* visibleAlert() const;
    void addPresented(ViewController* controller);
    void removePresented(ViewController* controller);

    void addHUD(ProgressHUD* hud);
    void removeHUD(ProgressHUD* hud);
    int hudCount() const { return int(m_huds.size()); }
    // Indicators shown on a presented controller; the others lie under what is presented.
    int presentedHudCount() const;
    void setWaitOverlay(ViewController* host, const QString& text);
    bool waitVisible() const { return m_waitVisible; }
    QString waitText() const { return m_waitText; }

signals:
    void presentedChanged();
    void presentationRefused(ViewController* refused);
    void overlaysChanged();

private:
    QQuickItem* layer(const char* name) const;
    QPointer<ViewController> m_root;
    QList<QPointer<ViewController>> m_presented;
    QList<ProgressHUD*> m_huds;
    bool m_waitVisible = false;
    QString m_waitText;
    bool m_key = false;
    QQuickWindow* m_quick = nullptr;
};

} // namespace ekinora::platform
