import QtQuick
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Catalogue

// The filter's result: the chosen names as chips, then the products as a list or a two-column grid.
Rectangle {
    id: root
    required property SelectedProductViewController controller
    objectName: "SelectedProductViewController"
    color: Theme.page

    ListView {
        id: chips
        objectName: "collectionViewTop"
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 8 }
        height: 44
        orientation: ListView.Horizontal
        spacing: 5
        interactive: contentWidth > width
        model: root.controller.collectionViewTop.rows
        onWidthChanged: root.controller.collectionViewTop.size = Qt.size(width, height)
        delegate: Rectangle {
            id: chip
            required property string reuseIdentifier
            required property var values
            required property size cellSize
            required property int row
            objectName: reuseIdentifier
            width: cellSize.width
            height: ListView.view.height
            radius: height / 2
            color: Theme.leaf
            Text {
                objectName: "topLbl"
                anchors { fill: parent; leftMargin: 10; rightMargin: 10 }
                text: chip.values.topLbl || ""
                color: "white"
                font.pixelSize: Theme.captionSize
                font.bold: true
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                wrapMode: Text.WordWrap
                maximumLineCount: 2
                elide: Text.ElideRight
            }
        }
    }

    ListView {
        objectName: "tableView"
        visible: !root.controller.tableView.hidden
        anchors { left: parent.left; right: parent.right; top: chips.bottom; bottom: parent.bottom; topMargin: 4 }
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        model: root.controller.tableView.rows
        onWidthChanged: root.controller.tableView.size = Qt.size(width, height)
        delegate: ProductCell { onTapped: (row) => root.controller.tableView.selectRow(row) }
    }

    GridView {
        id: grid
        objectName: "collectionViewBottom"
        visible: !root.controller.collectionViewBottom.hidden
        anchors { left: parent.left; right: parent.right; top: chips.bottom; bottom: parent.bottom; topMargin: 5 }
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        cellWidth: width / 2
        cellHeight: 205
        model: root.controller.collectionViewBottom.rows
        onWidthChanged: root.controller.collectionViewBottom.size = Qt.size(width, height)
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
                nameControl: "nameLabel"
                typeControl: "typeLabel"
                onTapped: (row) => root.controller.collectionViewBottom.selectRow(row)
            }
        }
    }
}
