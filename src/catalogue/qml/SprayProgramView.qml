pragma ComponentBehavior: Bound

import QtQuick
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Catalogue

// The spray programmes as two columns of tiles: the crop's picture and the programme's name.
Rectangle {
    id: root
    required property SprayProgramViewController controller
    objectName: "SprayProgramViewController"
    color: Theme.page

    GridView {
        id: grid
        objectName: "collectionView"
        anchors { fill: parent; margins: 10 }
        cellWidth: width / 2
        cellHeight: 160
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        model: root.controller.collectionView.rows
        onWidthChanged: root.controller.collectionView.size = Qt.size(width, height)
        Component.onCompleted: root.controller.collectionView.size = Qt.size(width, height)
        delegate: Item {
            id: slot
            required property var values
            required property int row
            required property size cellSize
            required property UITableView view
            width: (GridView.view as GridView).cellWidth; height: (GridView.view as GridView).cellHeight
            Rectangle {
                objectName: "sprayCell"
                anchors.centerIn: parent
                width: Math.max(slot.cellSize.width, (slot.GridView.view as GridView).cellWidth - 10); height: slot.cellSize.height
                radius: Theme.radius; color: Theme.card; border.color: Theme.line
                clip: true
                Accessible.role: Accessible.Button
                Accessible.name: slot.values.nameLabel
                Image {
                    objectName: "imgView"
                    anchors { left: parent.left; right: parent.right; top: parent.top; bottom: name.top; margins: 4 }
                    fillMode: Image.PreserveAspectCrop
                    asynchronous: true
                    source: slot.values.imgView
                }
                Text {
                    id: name
                    objectName: "nameLabel"
                    anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: 6 }
                    height: 42
                    text: slot.values.nameLabel
                    wrapMode: Text.WordWrap; maximumLineCount: 2; elide: Text.ElideRight
                    horizontalAlignment: Text.AlignHCenter; verticalAlignment: Text.AlignVCenter
                    font.pixelSize: Theme.captionSize + 1; font.bold: true; color: Theme.ink
                }
                MouseArea { anchors.fill: parent; onClicked: slot.view.selectRow(slot.row) }
            }
        }
    }
}
