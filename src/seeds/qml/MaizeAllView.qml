pragma ComponentBehavior: Bound

import QtQuick
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Catalogue
import Ekinora.Seeds

// A seed range under a search bar, as a list or a two-column grid.
Rectangle {
    id: root
    required property MaizeAllViewController controller
    objectName: "MaizeAllViewController"
    color: Theme.page

    PTextField {
        id: bar
        model: root.controller.searchBar
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 8 }
        Accessible.name: "Ürün ara"
    }

    ListView {
        objectName: "tableView"
        visible: !root.controller.showsGrid
        anchors { left: parent.left; right: parent.right; top: bar.bottom; bottom: parent.bottom; topMargin: 4 }
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        model: root.controller.tableView.rows
        onWidthChanged: root.controller.tableView.size = Qt.size(width, height)
        onMovementStarted: root.controller.scrollViewWillBeginDragging()
        delegate: ProductCell { onTapped: (row) => root.controller.tableView.selectRow(row) }
    }

    GridView {
        id: grid
        objectName: "collectionView"
        visible: root.controller.showsGrid
        anchors { left: parent.left; right: parent.right; top: bar.bottom; bottom: parent.bottom; margins: 1; topMargin: 5 }
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        cellWidth: width / 2
        cellHeight: 205
        model: root.controller.collectionView.rows
        onWidthChanged: root.controller.collectionView.size = Qt.size(width, height)
        onMovementStarted: root.controller.scrollViewWillBeginDragging()
        delegate: Item {
            id: slot
            required property string reuseIdentifier
            required property var values
            required property size cellSize
            required property int row
            width: (GridView.view as GridView).cellWidth
            height: (GridView.view as GridView).cellHeight
            ProductCell {
                anchors.centerIn: parent
                reuseIdentifier: slot.reuseIdentifier; values: slot.values; cellSize: slot.cellSize; row: slot.row
                tile: true
                onTapped: (row) => root.controller.collectionView.selectRow(row)
            }
        }
    }
}
