import QtQuick
import QtQuick.Controls
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Conversations

// Lines with a qmllint disable reach the screen from a delegate or a loaded component: the engine
// resolves them, Qt 6.4's linter cannot follow them.

// The subjects, each with its title, date, the asker's name for the answering side and its state;
// the asking button below for farmers.
Rectangle {
    id: root
    required property MessageViewController controller
    objectName: "MessageViewController"
    color: Theme.page

    ListView {
        id: table
        objectName: "tblMessage"
        anchors { left: parent.left; right: parent.right; top: parent.top; bottom: askArea.top }
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        model: root.controller.tblMessage.rows
        footer: Item { width: 1; height: 0 }
        onWidthChanged: root.controller.tblMessage.size = Qt.size(width, height)
        // Read once the drag has ended, when the list knows whether it flicks on.
        onDragEnded: dragEnd.start()
        Timer {
            id: dragEnd
            interval: 0
            onTriggered: {
                var last = table.indexAt(table.width / 2, table.contentY + table.height - 2)
                if (last < 0) last = table.count - 1
                root.controller.scrollViewDidEndDragging(last, table.flicking)
            }
        }

        delegate: Item {
            id: cell
            required property string reuseIdentifier
            required property var values
            required property int row
            required property UITableView view
            readonly property var content: values
            objectName: reuseIdentifier
            width: ListView.view.width
            height: 84
            clip: true
            Accessible.role: Accessible.Button
            Accessible.name: (content.lblMessage || "") + ", " + (content.lblReadCheck || "")

            // Behind the row, uncovered by a swipe to the left.
            Rectangle {
                objectName: "Sil"
                anchors { right: parent.right; top: parent.top; bottom: parent.bottom }
                width: 88
                color: Qt.rgba(0.9019607843137255, 0.6352941176470588, 0.011764705882352941, 1)
                Text { anchors.centerIn: parent; text: "Sil"; color: "white"; font.pixelSize: 16; font.bold: true }
                MouseArea {
                    anchors.fill: parent
                    onClicked: { front.x = 0; root.controller.deleteRow(cell.row) } // qmllint disable unqualified
                }
            }

            Rectangle {
                id: front
                width: parent.width
                height: parent.height
                color: Theme.card
                Behavior on x { NumberAnimation { duration: 150 } }
                MouseArea {
                    anchors.fill: parent
                    drag.target: front
                    drag.axis: Drag.XAxis
                    drag.minimumX: -88
                    drag.maximumX: 0
                    onReleased: front.x = front.x < -44 ? -88 : 0
                    onClicked: if (front.x === 0) cell.view.selectRow(cell.row)
                }
                Column {
                    anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; leftMargin: 16; rightMargin: 172 }
                    spacing: 3
                    Text {
                        objectName: "lblName"
                        visible: text.length > 0
                        width: parent.width
                        text: cell.content.lblName || ""
                        color: Theme.leaf
                        font.pixelSize: Theme.captionSize
                        font.bold: true
                        elide: Text.ElideRight
                    }
                    Text {
                        objectName: "lblMessage"
                        width: parent.width
                        text: cell.content.lblMessage || ""
                        color: Theme.ink
                        font.pixelSize: Theme.bodySize
                        font.weight: Font.Medium
                        elide: Text.ElideRight
                    }
                    Text {
                        objectName: "lblDate"
                        width: parent.width
                        text: cell.content.lblDate || ""
                        color: Theme.muted
                        font.pixelSize: Theme.captionSize
                    }
                }
                Rectangle {
                    objectName: "viewReadCheck"
                    visible: (cell.content.lblReadCheck || "").length > 0
                    anchors { right: parent.right; verticalCenter: parent.verticalCenter; rightMargin: 16 }
                    width: 148
                    height: 26
                    radius: 13
                    color: "transparent"
                    border.color: cell.content.readColor || Theme.ink
                    Row {
                        anchors.centerIn: parent
                        spacing: 5
                        Rectangle {
                            objectName: "imgReadColor"
                            anchors.verticalCenter: parent.verticalCenter
                            width: 6; height: 6; radius: 3
                            color: cell.content.readColor || Theme.ink
                        }
                        Text {
                            objectName: "lblReadCheck"
                            text: cell.content.lblReadCheck || ""
                            color: cell.content.readColor || Theme.ink
                            font.pixelSize: 11
                            font.bold: true
                        }
                    }
                }
                Rectangle { anchors { left: parent.left; right: parent.right; bottom: parent.bottom; leftMargin: 16 } height: 1; color: Theme.divider }
            }
        }
    }

    PLabel {
        model: root.controller.lblInfo
        anchors.centerIn: table
        width: parent.width - 64
        horizontalAlignment: Text.AlignHCenter
        font.pixelSize: Theme.bodySize
        color: Theme.muted
    }

    Item {
        id: askArea
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        height: root.controller.constraintQuestionHeight.constant > 0 ? root.controller.constraintQuestionHeight.constant + 16 : 0
        clip: true
        FilledButton {
            model: root.controller.btnNewMessage
            anchors { left: parent.left; right: parent.right; top: parent.top; leftMargin: Theme.margin; rightMargin: Theme.margin; topMargin: 8 }
            height: root.controller.constraintQuestionHeight.constant
        }
    }
}
