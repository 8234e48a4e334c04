#pragma once

#include <QtQml/qqmlregistration.h>

#include "Controls.h"
#include "Seams.h"
#include "ViewController.h"

namespace ekinora::platform {

// A navigation stack with a bar (title, back button, the top screen's right item).
class NavigationController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_NAMED_ELEMENT(UINavigationController)
    QML_UNCREATABLE("Made by the application.")
    Q_PROPERTY(bool navigationBarHidden READ isNavigationBarHidden WRITE setNavigationBarHidden NOTIFY barChanged)
    Q_PROPERTY(int depth READ depth NOTIFY stackChanged)
    Q_PROPERTY(QString topTitle READ topTitle NOTIFY stackChanged)
    Q_PROPERTY(ekinora::platform::BarButtonItem* topRightItem READ topRightItem NOTIFY stackChanged)
    Q_PROPERTY(ekinora::platform::Button* topMenuButton READ topMenuButton NOTIFY stackChanged)
    Q_PROPERTY(ekinora::platform::View* navigationBar READ navigationBarView CONSTANT)
    Q_PROPERTY(ekinora::platform::NavigationBarAppearance* appearance READ appearance CONSTANT)
public:
    explicit NavigationController(QObject* parent = nullptr);
    ~NavigationController() override;
    QUrl viewSource() const override;

    QList<ViewController*> viewControllers() const { return m_stack; }
    QList<ViewController*> childViewControllers() const override { return m_stack; }
    ViewController* topViewController() const { return m_stack.isEmpty() ? nullptr : m_stack.last(); }
    int depth() const { return int(m_stack.size()); }
    QString topTitle() const { return topViewController() ? topViewController()->title() : QString(); }
    BarButtonItem* topRightItem() const { return topViewController() ? topViewController()->rightBarButtonItem() : nullptr; }

    void setViewControllers(const QList<ViewController*>& controllers, bool animated = false);
    void pushViewController(ViewController* controller, bool animated = true);
    ViewController* popViewControllerAnimated(bool animated = true);
    Q_INVOKABLE void goBack() { popViewControllerAnimated(true); }
    // The menu button of a side menu's content.
    Q_INVOKABLE void openSideMenu();
    // A root screen with its own menu button ("menuBtn") lends it to the bar: the bar's button then
    // carries that name and sends that button's actions.
    Button* topMenuButton() const;

    // The bar as a view: a screen may stop it taking touches while a panel of its own is open.
    View* navigationBar() const { return m_bar; }
    View* navigationBarView() const { return m_bar; }
    NavigationBarAppearance* appearance() const { return &NavigationBarAppearance::shared(); }

    bool isNavigationBarHidden() const { return m_barHidden; }
    void setNavigationBarHidden(bool hidden);
    void setNavigationBarHidden(bool hidden, bool animated) { setNavigationBarHidden(hidden); }

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
    View* m_bar;
    bool m_barHidden = false;
};

} // namespace ekinora::platform
