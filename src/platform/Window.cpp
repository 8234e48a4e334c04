#include "Window.h"

#include "AlertController.h"
#include "Overlays.h"
#include "Platform.h"
#include "Scheduler.h"
#include "ViewController.h"

#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

namespace ekinora::platform {

Window::Window(QObject* parent) : QObject(parent) {}

Window::~Window() {
    for (const auto& p : std::as_const(m_presented))
        if (p) p->release();
    if (m_root) m_root->release();
    delete m_quick;
}

ViewController* Window::rootViewController() const { return m_root; }

void Window::setRootViewController(ViewController* root) {
    if (root) root->retain();
    if (m_root) m_root->release();
    m_root = root;
}

QQuickItem* Window::layer(const char* name) const {
    return m_quick ? m_quick->property(name).value<QQuickItem*>() : nullptr;
}

static void fill(QQuickItem* item, QQuickItem* layer) {
    if (!item || !layer) return;
    item->setParentItem(layer);
    item->setPosition({0, 0});
    item->setSize(layer->size());
    QObject::connect(layer, &QQuickItem::widthChanged, item, [item, layer] { item->setWidth(layer->width()); });
    QObject::connect(layer, &QQuickItem::heightChanged, item, [item, layer] { item->setHeight(layer->height()); });
}

void Window::makeKeyAndVisible() {
    m_key = true;
    if (QQmlEngine* engine = Platform::current().qmlEngine(); engine && !m_quick) {
        QQmlComponent component(engine, QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Platform/Window.qml")));
        QObject* made = component.createWithInitialProperties({{QStringLiteral("appWindow"), QVariant::fromValue<QObject*>(this)}});
        m_quick = qobject_cast<QQuickWindow*>(made);
        if (!m_quick) {
            Platform::current().application().log(QStringLiteral("window could not be made: %1").arg(component.errorString()));
            delete made;
        }
    }
    if (m_root) {
        m_root->loadViewIfNeeded();
        fill(m_root->viewItem(), layer("contentLayer"));
        // The first appearance comes from the event loop, after the caller's remaining start-up steps,
        // so the first screen sees the store as those steps left it.
        QPointer<Window> self(this);
        QPointer<ViewController> root(m_root);
        Platform::current().scheduler().after(0, [self, root] {
            if (self && root && self->m_root == root && !root->isVisible()) root->appear(false);
        });
    }
    if (m_quick) m_quick->show();
}

QList<ViewController*> Window::presentedControllers() const {
    QList<ViewController*> list;
    for (const auto& p : m_presented)
        if (p) list << p;
    return list;
}

AlertController* Window::visibleAlert() const {
    const auto list = presentedControllers();
    return list.isEmpty() ? nullptr : qobject_cast<AlertController*>(list.last());
}

void Window::addPresented(ViewController* controller) {
    m_presented.append(controller);
    if (QQuickItem* presentedLayer = layer("presentedLayer")) {
        fill(controller->viewItem(), presentedLayer);
        if (QQuickItem* item = controller->viewItem()) item->setZ(m_presented.size());
    }
    emit presentedChanged();
}

void Window::removePresented(ViewController* controller) {
    m_presented.removeAll(controller);
    if (QQuickItem* item = controller->viewItem()) {
        item->setParentItem(nullptr);
        item->setVisible(false);
    }
    emit presentedChanged();
}

void Window::addHUD(ProgressHUD* hud) {
    m_huds.append(hud);
    emit overlaysChanged();
}

void Window::removeHUD(ProgressHUD* hud) {
    m_huds.removeAll(hud);
    emit overlaysChanged();
}

int Window::presentedHudCount() const {
    int n = 0;
    for (ProgressHUD* hud : m_huds) {
        for (ViewController* c = hud->host(); c; c = c->parentViewController()) {
            if (c->presentingViewController()) {
                ++n;
                break;
            }
        }
    }
    return n;
}

void Window::setWaitOverlay(ViewController* host, const QString& text) {
    m_waitVisible = host != nullptr;
    m_waitText = text;
    emit overlaysChanged();
}

} // namespace ekinora::platform
