#pragma once

#include <QtQml/qqmlregistration.h>

#include "Controls.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QUrl>
#include <functional>

class QQuickItem;

namespace ekinora::platform {

class NavigationController;
class SideMenuViewController;
class ViewController;

struct StoryboardSegue {
    QString identifier;
    ViewController* source = nullptr;
    ViewController* destination = nullptr;
};

// A screen: its state, its actions, the requests it sends, the texts it shows and its named controls.
// Its QML view is made when the view is first needed and only when the application has a QML engine;
// controllers run the same without one (tests).
//
// Lifetime: a controller is owned by the container or presenter that shows it. A running request keeps
// its screen alive through a Strong handle, so that a reply reaching a screen that has gone away is
// still handled by it, as the original's blocks do.
class ViewController : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(UIViewController)
    QML_UNCREATABLE("Made by the application.")
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY titleChanged)
    Q_PROPERTY(QObject* navigationItemRight READ rightBarButtonItem CONSTANT)
    Q_PROPERTY(bool inSideMenu READ inSideMenu NOTIFY containerChanged)
public:
    enum class SegueKind { Show, Present };
    struct SegueRoute {
        SegueKind kind = SegueKind::Show;
        QString storyboardIdentifier;
    };

    explicit ViewController(QObject* parent = nullptr);
    ~ViewController() override;

    // The class name as the object contract names a screen's root item.
    QString className() const;

    QString title() const { return m_title; }
    void setTitle(const QString& t);

    // The QML file of this screen's arrangement; empty for a controller without a view of its own.
    virtual QUrl viewSource() const { return {}; }

    bool isViewLoaded() const { return m_viewLoaded; }
    void loadViewIfNeeded();
    QQuickItem* viewItem(); // null without a QML engine
    bool isVisible() const { return m_visible; }

    NavigationController* navigationController() const;
    SideMenuViewController* sideMenuViewController() const;
    ViewController* parentViewController() const { return m_parentController; }
    ViewController* presentedViewController() const { return m_presented; }
    ViewController* presentingViewController() const { return m_presenting; }

    int modalPresentationStyle = 0;
    int modalTransitionStyle = 0;

    // A second presentation while one is on screen is refused and logged; the refused controller is
    // dropped.
    bool presentViewController(ViewController* controller, bool animated = true, std::function<void()> completion = {});
    void dismissViewControllerAnimated(bool animated = true, std::function<void()> completion = {});

    // Named segues: a route per identifier, the destination made from the storyboard, prepareForSegue
    // before it is shown. An unknown identifier stops the application.
    void performSegueWithIdentifier(const QString& identifier, QObject* sender = nullptr);
    virtual void prepareForSegue(const StoryboardSegue& segue, QObject* sender) {}
    void addSegue(const QString& identifier, SegueKind kind, const QString& storyboardIdentifier);

    // Contained controllers (a stack's screens, a container's content and menu).
    virtual QList<ViewController*> childViewControllers() const { return {}; }
    // Takes the keyboard away from every field of this screen and of the screens it contains.
    void endEditing();

    // Named controls, by the names QML and tests use.
    Q_INVOKABLE QObject* control(const QString& name) const;
    BarButtonItem* rightBarButtonItem() const { return m_rightItem; }
    void setRightBarButtonItem(BarButtonItem* item) { m_rightItem = item; }

    // Lifecycle hooks, called by the containers.
    virtual void viewDidLoad() {}
    virtual void viewWillAppear(bool animated) {}
    virtual void viewDidAppear(bool animated) {}
    virtual void viewWillDisappear(bool animated) {}
    virtual void viewDidDisappear(bool animated) {}

    // Appearance transitions, for containers: load, will, did.
    void beginAppearance(bool animated);
    void endAppearance(bool animated);
    void beginDisappearance(bool animated);
    void endDisappearance(bool animated);
    void appear(bool animated) {
        beginAppearance(animated);
        endAppearance(animated);
    }
    void disappear(bool animated) {
        beginDisappearance(animated);
        endDisappearance(animated);
    }

    // Containment.
    void setParentController(ViewController* parent) {
        m_parentController = parent;
        emit containerChanged();
    }
    void setSideMenu(SideMenuViewController* menu) {
        m_sideMenu = menu;
        emit containerChanged();
    }
    bool inSideMenu() const { return sideMenuViewController() != nullptr; }

    // Ownership by containers and requests. release() by the last owner deletes the controller later.
    void retain() { ++m_retainCount; }
    void release();
    int retainCount() const { return m_retainCount; }

signals:
    void titleChanged();
    void viewLoaded();
    void containerChanged();

protected:
    template <class T, class... A> T* makeControl(const QString& name, A&&... args) {
        auto* c = new T(name, std::forward<A>(args)..., this);
        m_controls.insert(name, c);
        return c;
    }
    template <class T> T* addControl(T* c) {
        c->setParent(this);
        m_controls.insert(c->objectName(), c);
        return c;
    }
    // Items of the view that the QML file provides for contained controllers.
    QQuickItem* viewSlot(const char* name);
    void embed(ViewController* child, const char* slotName);
    void unembed(ViewController* child);

private:
    QString m_title;
    bool m_viewLoaded = false;
    bool m_visible = false;
    QQuickItem* m_item = nullptr;
    QHash<QString, QObject*> m_controls;
    QHash<QString, SegueRoute> m_segues;
    BarButtonItem* m_rightItem = nullptr;
    ViewController* m_parentController = nullptr;
    SideMenuViewController* m_sideMenu = nullptr;
    QPointer<ViewController> m_presented;
    QPointer<ViewController> m_presenting;
    // The screens this one took off the screen when it was presented over them.
    QPointer<ViewController> m_covered;
    int m_retainCount = 0;
};

// Keeps a controller alive for as long as the handle lives (a request's callbacks hold one).
template <class T> class Strong {
public:
    explicit Strong(T* p) : m_p(p) {
        if (m_p) m_p->retain();
    }
    Strong(const Strong& o) : Strong(o.m_p) {}
    Strong& operator=(const Strong&) = delete;
    ~Strong() {
        if (m_p) m_p->release();
    }
    T* operator->() const { return m_p; }
    T* get() const { return m_p; }

private:
    T* m_p;
};

template <class T> Strong<T> strong(T* p) { return Strong<T>(p); }

} // namespace ekinora::platform
