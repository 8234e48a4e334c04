#pragma once

// Reading and tapping the QML scene through the object contract, for end-to-end tests.

#include <QDir>
#include <QImage>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

namespace ekinora::testing {

inline QList<QQuickItem*> itemsNamed(QQuickItem* root, const QString& name) {
    QList<QQuickItem*> found;
    if (!root) return found;
    if (root->objectName() == name && root->isVisible()) found << root;
    for (QQuickItem* child : root->childItems()) found << itemsNamed(child, name);
    return found;
}

inline QQuickItem* itemNamed(QQuickWindow* window, const QString& name) {
    const auto all = window ? itemsNamed(window->contentItem(), name) : QList<QQuickItem*>{};
    return all.isEmpty() ? nullptr : all.first();
}

// A real press and release at the item's centre.
inline void tapItem(QQuickWindow* window, QQuickItem* item) {
    const QPointF centre = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, centre.toPoint());
}

// Keeps a picture of what a user sees; artefacts, never compared.
inline void saveScreenshot(QQuickWindow* window, const QString& name) {
    const QString dir = qEnvironmentVariable("EKINORA_ARTIFACTS", QDir::tempPath() + QStringLiteral("/ekinora-artifacts"));
    QDir().mkpath(dir);
    window->grabWindow().save(QDir(dir).filePath(name + QStringLiteral(".png")));
}

} // namespace ekinora::testing
