#pragma once

#include "ViewController.h"

namespace ekinora::platform {

// A navigation stack with a bar (title, back button, the top screen's right item).
class NavigationController : public ViewController {
    Q_OBJECT
    Q_PROPERTY(bool navigationBarHidden READ isNavigationBarHidden WRITE setNavigationBarHidden NOTIFY barChanged)
    // navigationBar.userInteractionEnabled: a screen's panel can stop the bar taking touches.
    Q_PROPERTY(bool navigationBarUserInteractionEnabled READ navigationBarUserInteractionEnabled
                   WRITE setNavigationBarUserInteractionEnabled NOTIFY barChanged)
    Q_PROPERTY(int depth READ depth NOTIFY stackChanged)
    Q_PROPERTY(QString topTitle READ topTitle NOTIFY stackChanged)
    Q_PROPERTY(QObject* topRightItem READ topRightItem NOTIFY stackChanged)
public:
    explicit NavigationController(QObject* parent = nullptr);
    ~NavigationController() override;
    QUrl viewSource() const override;

    QList<ViewController*> viewControllers() const { return m_stack; }
    QList<ViewController*> childViewControllers() const override { return m_stack; }
    ViewController* topViewController() const { return m_stack.isEmpty() ? nullptr : m_stack.last(); }
    int depth() const { return int(m_stack.size()); }
    QString topTitle() const { return topViewController() ? topViewController()->title() : QString(); }
    QObject* topRightItem() const { return topViewController() ? topViewController()->rightBarButtonItem() : nullptr; }

    void setViewControllers(const QList<ViewController*>& controllers, bool animated = false);
    void pushViewController(ViewController* controller, bool animated = true);
    ViewController* popViewControllerAnimated(bool animated = true);
    Q_INVOKABLE void goBack() { popViewControllerAnimated(true); }
    // The menu button of a side menu's content.
    Q_INVOKABLE void openSideMenu();

    bool isNavigationBarHidden() const { return m_barHidden; }
    void setNavigationBarHidden(bool hidden);
    void setNavigationBarHidden(bool hidden, bool animated) { setNavigationBarHidden(hidden); }
    bool navigationBarUserInteractionEnabled() const { return m_barInteraction; }
    void setNavigationBarUserInteractionEnabled(bool enabled) {
        if (m_barInteraction == enabled) return;
        m_barInteraction = enabled;
        emit barChanged();
    }

    void viewWillAppear(bool animated) override;
    void viewDidAppear(bool animated) override;
    void viewWillDisappear(bool animated) override;
    void viewDidDisappear(bool animated) override;

signals:
    void stackChanged();
    void barChanged();

private:
    void adopt(ViewController* c);
    void drop(ViewController* c);
    QList<ViewController*> m_stack;
    bool m_barHidden = false;
    bool m_barInteraction = true;
};

} // namespace ekinora::platform
