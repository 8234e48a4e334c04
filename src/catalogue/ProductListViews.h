#pragma once

// What the two product lists share: the grid's cell size, the switch between list and grid, and how a
// product's picture address is read.

#include "platform/Controls.h"
#include "platform/ViewController.h"

#include <QUrl>

namespace ekinora::catalogue {

inline constexpr double GridSpacing = 5;
inline constexpr double GridCellHeight = 200;

// Half the collection's width less the spacing between items, by 200.
inline QSizeF gridCellSize(const platform::TableView* collection) {
    return QSizeF(collection->size().width() / 2 - GridSpacing, GridCellHeight);
}

// A nil address counts as "", and a text that is no address as none.
inline QString pictureAddress(const std::optional<QString>& image) {
    const QUrl url(image.value_or(QString()), QUrl::StrictMode);
    return url.isValid() && !url.isRelative() ? url.toString() : QString();
}

// changeGrid: isList true means the grid is on show. The button's picture names the mode that the
// next tap leads to.
inline void changeGrid(bool& isList, platform::TableView* table, platform::TableView* collection,
                       platform::BarButtonItem* button) {
    table->setHidden(!isList);
    collection->setHidden(isList);
    button->setImage(isList ? QStringLiteral("columnList") : QStringLiteral("rowList"));
    isList = !isList;
}

// The right bar button of both lists.
inline platform::BarButtonItem* gridSwitch(platform::ViewController* screen) {
    auto* item = new platform::BarButtonItem(QStringLiteral("changeGridWithSender"), screen);
    item->setImage(QStringLiteral("columnList"));
    item->setTitle(QStringLiteral("Liste ya da ızgara görünümü"));
    return item;
}

} // namespace ekinora::catalogue
