import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Notifications

// The notice list: its own bar attached to the top with the close button, the notices below, and the
// empty state in the middle.
Rectangle {
    id: root
    required property NotificationViewController controller
    objectName: "NotificationViewController"
    color: "#f4f5f2"

    Rectangle {
        id: bar
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: 56
        color: "white"
        Rectangle { anchors { left: parent.left; right: parent.right; bottom: parent.bottom } height: 1; color: "#e6e6e6" }
        Text {
            anchors.centerIn: parent
            text: "Bildirimler"
            font.pixelSize: 18
            font.weight: Font.Medium
            color: "#333333"
        }
        ToolButton {
            font.capitalization: Font.MixedCase
            objectName: "closeView"
            anchors { right: parent.right; verticalCenter: parent.verticalCenter; rightMargin: 4 }
            width: 64; height: 48
            text: "Kapat"
            font.pixelSize: 15
            Material.foreground: "#78b930"
            onClicked: root.controller.closeView()
            Accessible.name: "Kapat"
        }
    }

    ListView {
        id: table
        objectName: "tblNotification"
        anchors { left: parent.left; right: parent.right; top: bar.bottom; bottom: parent.bottom }
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        model: root.controller.tblNotification.rows
        // An empty footer of no height: no separators below the last row.
        footer: Item { width: 1; height: 0 }

        delegate: Rectangle {
            id: cell
            required property string reuseIdentifier
            required property var values
            required property int row
            readonly property var content: values
            objectName: reuseIdentifier
            width: ListView.view.width
            height: Math.max(64, column.implicitHeight + 24)
            color: "white"
            Accessible.name: (content.lblNotification || "") + " " + (content.lblDate || "")

            Rectangle {
                objectName: "imgReadColor"
                x: 16
                y: 18
                width: 10; height: 10; radius: 5
                color: cell.content.imgReadColor || "#333333"
            }
            Column {
                id: column
                anchors { left: parent.left; right: parent.right; top: parent.top; leftMargin: 38; rightMargin: 16; topMargin: 12 }
                spacing: 6
                Text {
                    objectName: "lblNotification"
                    width: parent.width
                    text: cell.content.lblNotification || ""
                    wrapMode: Text.WordWrap
                    font.pixelSize: 15
                    color: "#333333"
                }
                Text {
                    objectName: "lblDate"
                    width: parent.width
                    text: cell.content.lblDate || ""
                    font.pixelSize: 12
                    color: "#8a8a8a"
                }
            }
            Rectangle {
                anchors { left: parent.left; right: parent.right; bottom: parent.bottom; leftMargin: 16 }
                height: 1
                color: "#e6e6e6"
            }
        }
    }

    PLabel {
        model: root.controller.lblInfo
        anchors.centerIn: parent
        width: parent.width - 64
        horizontalAlignment: Text.AlignHCenter
        font.pixelSize: 16
        color: "#8a8a8a"
        text: "Henüz bir bildiriminiz bulunmuyor."
    }
}
