#include "SideMenuViewController.h"

namespace ekinora::platform {

SideMenuViewController::SideMenuViewController(QObject* parent) : ViewController(parent) {}

SideMenuViewController::~SideMenuViewController() {
    // As a stack does: views of screens that outlive the container stay in the window, hidden.
    for (ViewController* c : {m_content, m_left}) {
        if (!c) continue;
        unembed(c);
        c->release();
    }
}

QUrl SideMenuViewController::viewSource() const {
    return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Platform/SideMenuView.qml"));
}

void SideMenuViewController::setContentViewController(ViewController* controller, bool animated) {
    if (controller == m_content) return;
    ViewController* old = m_content;
    if (controller) {
        controller->retain();
        controller->setParentController(this);
        controller->setSideMenu(this);
    }
    m_content = controller;
    if (old && isVisible()) old->disappear(animated);
    if (old) {
        unembed(old);
        old->setParentController(nullptr);
        old->setSideMenu(nullptr);
    }
    if (controller) {
        if (isViewLoaded()) {
            controller->loadViewIfNeeded();
            embed(controller, "contentSlot");
        }
        if (isVisible()) controller->appear(animated);
    }
    emit contentChanged();
    if (old) old->release();
}

void SideMenuViewController::setLeftMenuViewController(ViewController* controller) {
    if (controller == m_left) return;
    ViewController* old = m_left;
    if (controller) {
        controller->retain();
        controller->setParentController(this);
        controller->setSideMenu(this);
    }
    m_left = controller;
    if (old) {
        unembed(old);
        old->setParentController(nullptr);
        old->release();
    }
    if (controller && isViewLoaded()) {
        controller->loadViewIfNeeded();
        embed(controller, "menuSlot");
    }
}

void SideMenuViewController::presentLeftMenuViewController() {
    if (m_menuVisible || !m_left) return;
    willShowMenuViewController(m_left);
    m_left->beginAppearance(true);
    m_menuVisible = true;
    emit menuVisibleChanged();
    m_left->endAppearance(true);
    didShowMenuViewController(m_left);
}

void SideMenuViewController::hideMenuViewController() {
    if (!m_menuVisible) return;
    willHideMenuViewController(m_left);
    if (m_left) m_left->beginDisappearance(true);
    m_menuVisible = false;
    emit menuVisibleChanged();
    if (m_left) m_left->endDisappearance(true);
    didHideMenuViewController(m_left);
}

void SideMenuViewController::setBackgroundImage(const QString& image) {
    m_background = image;
    emit appearanceChanged();
}

void SideMenuViewController::setPanGestureEnabled(bool enabled) {
    m_pan = enabled;
    emit appearanceChanged();
}

void SideMenuViewController::viewWillAppear(bool animated) {
    if (m_left) {
        m_left->loadViewIfNeeded();
        embed(m_left, "menuSlot");
    }
    if (m_content) {
        embed(m_content, "contentSlot");
        m_content->beginAppearance(animated);
    }
}

void SideMenuViewController::viewDidAppear(bool animated) {
    if (m_content) m_content->endAppearance(animated);
}

void SideMenuViewController::viewWillDisappear(bool animated) {
    if (m_content) m_content->beginDisappearance(animated);
}

void SideMenuViewController::viewDidDisappear(bool animated) {
    if (m_content) m_content->endDisappearance(animated);
}

} // namespace ekinora::platform
