#include "ViewController.h"

#include "AlertController.h"
#include "Foundation.h"
#include "NavigationController.h"
#include "Platform.h"
#include "SideMenuViewController.h"
#include "Storyboard.h"
#include "Window.h"

#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

namespace ekinora::platform {

ViewController::ViewController(QObject* parent) : QObject(parent) {}

ViewController::~ViewController() {
    // The view goes before its context, so that no binding reads a controller that is gone.
    delete m_item;
}

QString ViewController::className() const {
    QString name = QString::fromLatin1(metaObject()->className());
    const int colon = name.lastIndexOf(u':');
    return colon >= 0 ? name.mid(colon + 1) : name;
}

void ViewController::setTitle(const QString& t) {
    if (m_title == t) return;
    m_title = t;
    emit titleChanged();
}

void ViewController::loadViewIfNeeded() {
    if (m_viewLoaded) return;
    m_viewLoaded = true;
    viewItem();
    viewDidLoad();
    emit viewLoaded();
}

QQuickItem* ViewController::viewItem() {
    if (m_item) return m_item;
    QQmlEngine* engine = Platform::current().qmlEngine();
    const QUrl source = viewSource();
    if (!engine || source.isEmpty()) return nullptr;
    QQmlComponent component(engine, source);
    // The view reaches its screen through one typed property, "controller", and the controls through
    // the screen's properties.
    QObject* made = component.createWithInitialProperties({{QStringLiteral("controller"), QVariant::fromValue<QObject*>(this)}});
    m_item = qobject_cast<QQuickItem*>(made);
    if (!m_item) {
        Platform::current().application().log(
            QStringLiteral("view of %1 could not be made: %2").arg(className(), component.errorString()));
        delete made;
        return nullptr;
    }
    m_item->setParent(this);
    m_item->setObjectName(className());
    return m_item;
}

QQuickItem* ViewController::viewSlot(const char* name) {
    QQuickItem* item = viewItem();
    return item ? item->property(name).value<QQuickItem*>() : nullptr;
}

void ViewController::embed(ViewController* child, const char* slotName) {
    QQuickItem* slot = viewSlot(slotName);
    QQuickItem* view = child->viewItem();
    if (!slot || !view) return;
    view->setParentItem(slot);
    view->setPosition({0, 0});
    view->setSize(slot->size());
    connect(slot, &QQuickItem::widthChanged, view, [view, slot] { view->setWidth(slot->width()); });
    connect(slot, &QQuickItem::heightChanged, view, [view, slot] { view->setHeight(slot->height()); });
    view->setVisible(true);
}

void ViewController::unembed(ViewController* child) {
    if (QQuickItem* view = child->m_item) {
        if (QQuickItem* slot = view->parentItem()) disconnect(slot, nullptr, view, nullptr);
        // The view stays in the window, hidden, rather than leaving it: what it placed over the whole
        // window (the home's splash, kept up for a while after the home hands over) stays until its
        // screen takes it away.
        QQuickWindow* window = view->window();
        view->setParentItem(window ? window->property("parkedLayer").value<QQuickItem*>() : nullptr);
        view->setVisible(false);
    }
}

NavigationController* ViewController::navigationController() const {
    for (const ViewController* c = this; c; c = c->m_parentController)
        if (auto* nav = qobject_cast<NavigationController*>(c->m_parentController)) return nav;
    return nullptr;
}

SideMenuViewController* ViewController::sideMenuViewController() const {
    for (const ViewController* c = this; c; c = c->m_parentController)
        if (c->m_sideMenu) return c->m_sideMenu;
    return nullptr;
}

void ViewController::beginAppearance(bool animated) {
    loadViewIfNeeded();
    m_visible = true;
    viewWillAppear(animated);
}

void ViewController::endAppearance(bool animated) { viewDidAppear(animated); }

void ViewController::beginDisappearance(bool animated) { viewWillDisappear(animated); }

void ViewController::endDisappearance(bool animated) {
    m_visible = false;
    viewDidDisappear(animated);
}

namespace {

// A presentation over the full screen (or over the current context) takes the presenting screens off
// the screen until it is dismissed, and they appear again then; an alert and a presentation over the
// full screen leave them in place.
bool coversPresenter(const ViewController* presented) {
    if (qobject_cast<const AlertController*>(presented)) return false;
    return presented->modalPresentationStyle == 0 || presented->modalPresentationStyle == 3;
}

// The screens a covering presentation takes away: the presenter with all its containers.
ViewController* presentationContext(ViewController* presenter) {
    ViewController* c = presenter;
    while (c->parentViewController()) c = c->parentViewController();
    return c;
}

} // namespace

bool ViewController::presentViewController(ViewController* controller, bool animated, std::function<void()> completion) {
    Window& window = Platform::current().window();
    if (m_presented) {
        Platform::current().application().log(
            QStringLiteral("Warning: Attempt to present %1 on %2 which is already presenting %3")
                .arg(controller->className(), className(), m_presented->className()));
        if (controller->retainCount() == 0) controller->deleteLater();
        emit window.presentationRefused(controller);
        return false;
    }
    controller->retain();
    m_presented = controller;
    controller->m_presenting = this;
    ViewController* covered = coversPresenter(controller) ? presentationContext(this) : nullptr;
    if (covered && !covered->isVisible()) covered = nullptr;
    controller->m_covered = covered;
    if (covered) covered->beginDisappearance(animated);
    controller->beginAppearance(animated);
    window.addPresented(controller);
    if (covered) covered->endDisappearance(animated);
    controller->endAppearance(animated);
    if (completion) completion();
    return true;
}

void ViewController::dismissViewControllerAnimated(bool animated, std::function<void()> completion) {
    // Dismissing goes to the presenter: a presented controller asks the one below it.
    ViewController* presented = m_presented;
    ViewController* presenter = this;
    if (!presented) {
        presented = this;
        presenter = m_presenting;
        if (!presenter) return;
    }
    if (presented->m_presented) presented->dismissViewControllerAnimated(animated);
    ViewController* uncovered = presented->m_covered;
    presented->m_covered = nullptr;
    presented->beginDisappearance(animated);
    if (uncovered) uncovered->beginAppearance(animated);
    Platform::current().window().removePresented(presented);
    presented->endDisappearance(animated);
    if (uncovered) uncovered->endAppearance(animated);
    presenter->m_presented = nullptr;
    presented->m_presenting = nullptr;
    presented->release();
    if (completion) completion();
}

void ViewController::addSegue(const QString& identifier, SegueKind kind, const QString& storyboardIdentifier) {
    m_segues.insert(identifier, SegueRoute{kind, storyboardIdentifier});
}

void ViewController::performSegueWithIdentifier(const QString& identifier, QObject* sender) {
    auto it = m_segues.constFind(identifier);
    if (it == m_segues.constEnd())
        fatal(QStringLiteral("Receiver (%1) has no segue with identifier '%2'").arg(className(), identifier));
    ViewController* destination = Storyboard::instantiateViewControllerWithIdentifier(it->storyboardIdentifier);
    if (!destination) return;
    prepareForSegue(StoryboardSegue{identifier, this, destination}, sender);
    if (it->kind == SegueKind::Show && navigationController())
        navigationController()->pushViewController(destination, true);
    else
        presentViewController(destination, true);
}

void ViewController::endEditing() {
    for (QObject* c : std::as_const(m_controls))
        if (auto* field = qobject_cast<TextField*>(c)) field->resignFirstResponder();
    for (ViewController* child : childViewControllers()) child->endEditing();
}

QObject* ViewController::control(const QString& name) const { return m_controls.value(name); }

void ViewController::release() {
    if (--m_retainCount <= 0) {
        m_retainCount = 0;
        deleteLater();
    }
}

} // namespace ekinora::platform
