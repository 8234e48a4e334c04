#pragma once

#include <QtQml/qqmlregistration.h>

#include "ViewController.h"

#include <QColor>

namespace ekinora::platform {

// The side-menu container: a content controller and a left menu that opens over a background picture.
class SideMenuViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_NAMED_ELEMENT(RESideMenu)
    QML_UNCREATABLE("Made by the application.")
    Q_PROPERTY(bool menuVisible READ isMenuVisible NOTIFY menuVisibleChanged)
    Q_PROPERTY(QString backgroundImage READ backgroundImage WRITE setBackgroundImage NOTIFY appearanceChanged)
    Q_PROPERTY(bool panGestureEnabled READ panGestureEnabled WRITE setPanGestureEnabled NOTIFY appearanceChanged)
    Q_PROPERTY(bool contentViewShadowEnabled MEMBER contentViewShadowEnabled NOTIFY appearanceChanged)
    Q_PROPERTY(double contentViewShadowOpacity MEMBER contentViewShadowOpacity NOTIFY appearanceChanged)
    Q_PROPERTY(double contentViewShadowRadius MEMBER contentViewShadowRadius NOTIFY appearanceChanged)
    Q_PROPERTY(QColor contentViewShadowColor MEMBER contentViewShadowColor NOTIFY appearanceChanged)
public:
    explicit SideMenuViewController(QObject* parent = nullptr);
    ~SideMenuViewController() override;
    QUrl viewSource() const override;

    ViewController* contentViewController() const { return m_content; }
    QList<ViewController*> childViewControllers() const override {
        QList<ViewController*> list;
        if (m_content) list << m_content;
        if (m_left) list << m_left;
        return list;
    }
    ViewController* leftMenuViewController() const { return m_left; }
    void setContentViewController(ViewController* controller, bool animated = false);
    void setLeftMenuViewController(ViewController* controller);

    bool isMenuVisible() const { return m_menuVisible; }
    Q_INVOKABLE void presentLeftMenuViewController();
    Q_INVOKABLE void hideMenuViewController();

    QString backgroundImage() const { return m_background; }
    void setBackgroundImage(const QString& image);
    bool panGestureEnabled() const { return m_pan; }
    void setPanGestureEnabled(bool enabled);

    int menuPreferredStatusBarStyle = 0;
    bool contentViewShadowEnabled = false;
    double contentViewShadowOpacity = 0;
    double contentViewShadowRadius = 0;
    double contentViewShadowOffset = 0;
    QColor contentViewShadowColor = Qt::black;

    void viewWillAppear(bool animated) override;
    void viewDidAppear(bool animated) override;
    void viewWillDisappear(bool animated) override;
    void viewDidDisappear(bool animated) override;

protected:
    // The container's delegate calls.
    virtual void willShowMenuViewController(ViewController* menu) {}
    virtual void didShowMenuViewController(ViewController* menu) {}
    virtual void willHideMenuViewController(ViewController* menu) {}
    virtual void didHideMenuViewController(ViewController* menu) {}

signals:
    void contentChanged();
    void menuVisibleChanged();
    void appearanceChanged();

private:
    ViewController* m_content = nullptr;
    ViewController* m_left = nullptr;
    bool m_menuVisible = false;
    QString m_background;
    bool m_pan = true;
};

} // namespace ekinora::platform
