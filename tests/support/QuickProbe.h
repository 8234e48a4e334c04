#pragma once

// Reading and tapping the QML scene through the object contract, for end-to-end tests.

#include "platform/ProcessSetup.h"

#include <QDir>
#include <QGuiApplication>
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

// The main of a test that shows QML (and possibly web views): the process is prepared before the
// QGuiApplication exists.
#define EKINORA_GUI_TEST_MAIN(TestClass)                                                                \
    int main(int argc, char** argv) {                                                                  \
        ekinora::platform::prepareProcess();                                                           \
        QGuiApplication app(argc, argv);                                                               \
        TestClass test;                                                                                \
        return QTest::qExec(&test, argc, argv);                                                        \
    }
