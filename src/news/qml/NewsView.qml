import QtQuick
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.News

// The news as cards: the picture, and under it a band from blue to green with the title and the date.
// A drag that ends at the last card and goes on moving asks for the next page.
Rectangle {
    id: root
    required property NewsViewController controller
    objectName: "NewsViewController"
    color: Theme.page

    ListView {
        id: list
        objectName: "tblNews"
        anchors.fill: parent
        clip: true
        topMargin: 8
        bottomMargin: 8
        model: root.controller.tblNews.rows
        onWidthChanged: root.controller.tblNews.size = Qt.size(width, height)
        // An empty footer of no height: nothing drawn below the last card.
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
            Accessible.name: (content.lblContent || "") + ", " + (content.lblInfo || "")

            Rectangle {
                anchors { fill: parent; leftMargin: Theme.margin; rightMargin: Theme.margin; topMargin: 8; bottomMargin: 8 }
                radius: Theme.radius
                clip: true
                color: Theme.card
                Image {
                    objectName: "imgScreen"
                    anchors { left: parent.left; right: parent.right; top: parent.top; bottom: band.top }
                    fillMode: Image.PreserveAspectCrop
                    asynchronous: true
                    source: cell.content.imgScreen || ""
                }
                Rectangle {
                    id: band
                    objectName: "imgGradientBack"
                    anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
                    height: 84
                    gradient: Gradient {
                        orientation: Gradient.Horizontal
                        GradientStop { position: 0.0; color: Theme.cerulean }
                        GradientStop { position: 1.0; color: Theme.leaf }
                    }
                    Text {
                        objectName: "lblContent"
                        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 12 }
                        text: cell.content.lblContent || ""
                        color: "white"
                        font.pixelSize: Theme.bodySize
                        font.bold: true
                        wrapMode: Text.WordWrap
                        maximumLineCount: 2
                        elide: Text.ElideRight
                    }
                    Text {
                        objectName: "lblInfo"
                        anchors { left: parent.left; bottom: parent.bottom; margins: 12; bottomMargin: 8 }
                        text: cell.content.lblInfo || ""
                        color: "white"
                        font.pixelSize: Theme.captionSize
                    }
                }
            }
            MouseArea { anchors.fill: parent; onClicked: cell.view.selectRow(cell.row) }
        }
    }
}
