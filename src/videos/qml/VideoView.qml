import QtQuick
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Videos

// The videos as their thumbnails with a play mark and the title under them. A drag that ends at the
// last one and goes on moving asks for the next page.
Rectangle {
    id: root
    required property VideoViewController controller
    objectName: "VideoViewController"
    color: Theme.page

    ListView {
        id: list
        objectName: "tblVideo"
        anchors.fill: parent
        clip: true
        model: root.controller.tblVideo.rows
        onWidthChanged: root.controller.tblVideo.size = Qt.size(width, height)
        footer: Item { width: 1; height: 0 }

        function lastVisibleRow() {
            var y = contentY + height - 1
            var index = indexAt(width / 2, y)
            while (index < 0 && y > contentY) { y -= 20; index = indexAt(width / 2, y) }
            return index
        }
        // Whether the list coasts on is known once the release has been handled.
        onDraggingChanged: if (!dragging) dragEnd.restart()
        Timer {
            id: dragEnd
            interval: 0
            onTriggered: root.controller.scrollViewDidEndDragging(list.lastVisibleRow(), list.flicking)
        }

        delegate: Item {
            id: cell
            required property string reuseIdentifier
            required property var values
            required property size cellSize
            required property int row
            required property UITableView view
            readonly property var content: values
            objectName: reuseIdentifier
            width: ListView.view.width
            height: cellSize.height
            Accessible.role: Accessible.Button
            Accessible.name: "Videoyu oynat: " + (content.lblTitle || "")

            Image {
                id: screen
                objectName: "imgScreen"
                anchors { left: parent.left; right: parent.right; top: parent.top }
                height: width * 9 / 16
                fillMode: Image.PreserveAspectCrop
                asynchronous: true
                source: cell.content.imgScreen || ""
                Rectangle {
                    anchors.centerIn: parent
                    width: 64; height: 64; radius: 32
                    color: "#99000000"
                    Text {
                        anchors.centerIn: parent
                        anchors.horizontalCenterOffset: 3
                        text: "▶"
                        color: "white"
                        font.pixelSize: 28
                    }
                }
            }
            Text {
                objectName: "lblTitle"
                anchors { left: parent.left; right: parent.right; top: screen.bottom; bottom: parent.bottom; leftMargin: Theme.margin; rightMargin: Theme.margin }
                verticalAlignment: Text.AlignVCenter
                text: cell.content.lblTitle || ""
                color: Theme.ink
                font.pixelSize: Theme.bodySize
                font.bold: true
                wrapMode: Text.WordWrap
                maximumLineCount: 2
                elide: Text.ElideRight
            }
            MouseArea { anchors.fill: parent; onClicked: cell.view.selectRow(cell.row) }
        }
    }
}
