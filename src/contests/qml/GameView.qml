import QtQuick
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Contests

// The contests as cards: title, end date, text, and what can be done now on the right.
Rectangle {
    id: root
    required property GameViewController controller
    objectName: "GameViewController"
    color: Theme.page

    ListView {
        id: games
        objectName: "tblGame"
        anchors.fill: parent
        clip: true
        spacing: 12
        topMargin: 12
        bottomMargin: 12
        boundsBehavior: Flickable.StopAtBounds
        model: root.controller.tblGame.rows
        onWidthChanged: root.controller.tblGame.size = Qt.size(width, height)
        onMovementEnded: root.controller.scrollViewDidEndDragging(indexAt(width / 2, contentY + height - 1), false)
        onFlickStarted: root.controller.scrollViewDidEndDragging(indexAt(width / 2, contentY + height - 1), true)

        delegate: Rectangle {
            id: cell
            required property string reuseIdentifier
            required property var values
            required property size cellSize
            required property int row
            required property UITableView view
            readonly property var content: values
            objectName: reuseIdentifier
            x: 12
            width: ListView.view.width - 24
            height: Math.max(120, info.implicitHeight + 28)
            radius: Theme.radius
            color: Theme.card
            border.color: Theme.line
            Accessible.role: Accessible.Button
            Accessible.name: (content.lblContent || "") + ", " + (content.lblAction || "")

            // The state at the left edge: green while one can enter.
            Rectangle {
                objectName: "imgStatus"
                property color tint: cell.content.imgStatusColor || Theme.leaf
                anchors { left: parent.left; top: parent.top; bottom: parent.bottom }
                width: 6
                radius: 3
                color: tint
            }
            Column {
                id: info
                anchors { left: parent.left; leftMargin: 20; right: action.left; rightMargin: 12; top: parent.top; topMargin: 14 }
                spacing: 6
                Text {
                    objectName: "lblContent"
                    width: parent.width
                    text: cell.content.lblContent || ""
                    color: Theme.ink
                    font.pixelSize: 17
                    font.bold: true
                    wrapMode: Text.WordWrap
                }
                Text {
                    objectName: "lblInfo"
                    width: parent.width
                    text: cell.content.lblInfo || ""
                    color: Theme.muted
                    font.pixelSize: Theme.captionSize
                }
                Text {
                    objectName: "lblDescription"
                    width: parent.width
                    text: cell.content.lblDescription || ""
                    color: Theme.ink
                    font.pixelSize: 14
                    wrapMode: Text.WordWrap
                    maximumLineCount: 4
                    elide: Text.ElideRight
                }
            }
            Rectangle {
                id: action
                anchors { right: parent.right; rightMargin: 12; verticalCenter: parent.verticalCenter }
                width: 108
                height: Theme.touch
                radius: Theme.radius
                color: cell.content.lblActionBackground || Theme.leaf
                Text {
                    objectName: "lblAction"
                    anchors.centerIn: parent
                    text: cell.content.lblAction || ""
                    color: "white"
                    font.pixelSize: 14
                    font.bold: true
                }
            }
            MouseArea { anchors.fill: parent; onClicked: cell.view.selectRow(cell.row) }
        }
    }

    // Nothing to show.
    Column {
        anchors.centerIn: parent
        width: parent.width - 64
        spacing: 16
        PImageView {
            model: root.controller.imgInfoBack
            anchors.horizontalCenter: parent.horizontalCenter
            width: 200
            height: 134
        }
        PLabel {
            model: root.controller.lblInfoBack
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            color: Theme.muted
            font.pixelSize: Theme.bodySize
        }
    }
}
