#include "NavigationController.h"

#include "SideMenuViewController.h"

#include <QQuickItem>

namespace ekinora::platform {

NavigationController::NavigationController(QObject* parent)
    : ViewController(parent), m_bar(new View(QStringLiteral("navigationBar"), this)) {}

NavigationController::~NavigationController() {
    // A screen kept alive after its stack (a reply, a timer) keeps its view in the window, hidden.
    // It no longer finds its stack through its parent: the stack is gone.
    for (ViewController* c : std::as_const(m_stack)) {
        unembed(c);
        c->setParentController(nullptr);
        c->release();
    }
}

QUrl NavigationController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Platform/NavigationView.qml")); }

void NavigationController::adopt(ViewController* c) {
    c->retain();
    c->setParentController(this);
    connect(c, &ViewController::titleChanged, this, &NavigationController::stackChanged);
}

void NavigationController::drop(ViewController* c) {
    unembed(c);
    disconnect(c, nullptr, this, nullptr);
    c->setParentController(nullptr);
    c->release();
}

void NavigationController::setViewControllers(const QList<ViewController*>& controllers, bool animated) {
    ViewController* oldTop = topViewController();
    const QList<ViewController*> old = m_stack;
    // A screen in both stacks stays adopted: dropping it would cut it from this stack.
    for (ViewController* c : controllers)
        if (!old.contains(c)) adopt(c);
    m_stack = controllers;
    ViewController* newTop = topViewController();
    if (isVisible() && oldTop && oldTop != newTop) oldTop->disappear(animated);
    for (ViewController* c : old)
        if (!controllers.contains(c)) drop(c);
    if (newTop) {
        if (isViewLoaded()) embed(newTop, "contentSlot");
        if (isVisible() && newTop != oldTop) newTop->appear(animated);
    }
    emit stackChanged();
}

void NavigationController::pushViewController(ViewController* controller, bool animated) {
    ViewController* oldTop = topViewController();
    adopt(controller);
    m_stack.append(controller);
    if (isVisible() && oldTop) oldTop->beginDisappearance(animated);
    controller->loadViewIfNeeded();
    if (oldTop) unembed(oldTop);
    if (isViewLoaded()) embed(controller, "contentSlot");
    if (isVisible()) {
        controller->beginAppearance(animated);
        if (oldTop) oldTop->endDisappearance(animated);
        controller->endAppearance(animated);
    }
    emit stackChanged();
}

ViewController* NavigationController::popViewControllerAnimated(bool animated) {
    if (m_stack.size() < 2) return nullptr;
    ViewController* gone = m_stack.takeLast();
    ViewController* top = topViewController();
    if (isVisible()) {
        gone->beginDisappearance(animated);
        top->beginAppearance(animated);
    }
    unembed(gone);
    if (isViewLoaded()) embed(top, "contentSlot");
    if (isVisible()) {
        gone->endDisappearance(animated);
        top->endAppearance(animated);
    }
    emit stackChanged();
    drop(gone);
    return gone;
}

void NavigationController::setNavigationBarHidden(bool hidden) {
    if (m_barHidden == hidden) return;
    m_barHidden = hidden;
    emit barChanged();
}

void NavigationController::viewWillAppear(bool animated) {
    if (auto* top = topViewController()) {
        embed(top, "contentSlot");
        top->beginAppearance(animated);
    }
}
void NavigationController::viewDidAppear(bool animated) {
    if (auto* top = topViewController()) top->endAppearance(animated);
}
void NavigationController::viewWillDisappear(bool animated) {
    if (auto* top = topViewController()) top->beginDisappearance(animated);
}
void NavigationController::viewDidDisappear(bool animated) {
    if (auto* top = topViewController()) top->endDisappearance(animated);
}

Button* NavigationController::topMenuButton() const {
    ViewController* top = topViewController();
    return top ? qobject_cast<Button*>(top->property("menuBtn").value<QObject*>()) : nullptr;
}

void NavigationController::openSideMenu() {
    if (auto* menu = sideMenuViewController()) menu->presentLeftMenuViewController();
}

} // namespace ekinora::platform
