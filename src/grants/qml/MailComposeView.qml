import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Grants

// The mail as it will go: recipient, subject, attachment; cancel or send.
Rectangle {
    id: root
    required property MailComposeViewController controller
    objectName: "MailComposeViewController"
    color: "white"

    component Field: Item {
        property string caption: ""
        property string value: ""
        property string name: ""
        width: parent.width
        height: 52
        Text {
            id: label
            text: parent.caption
            color: Theme.muted
            font.pixelSize: Theme.bodySize
            anchors { left: parent.left; leftMargin: Theme.margin; verticalCenter: parent.verticalCenter }
        }
        Text {
            objectName: parent.name
            text: parent.value
            color: Theme.ink
            font.pixelSize: Theme.bodySize
            elide: Text.ElideRight
            anchors { left: label.right; leftMargin: 8; right: parent.right; rightMargin: Theme.margin; verticalCenter: parent.verticalCenter }
        }
        Rectangle { anchors { left: parent.left; right: parent.right; bottom: parent.bottom; leftMargin: Theme.margin } height: 1; color: Theme.divider }
    }

    Rectangle {
        id: bar
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: 56
        color: "#f7f7f7"
        Button {
            objectName: "cancel"
            anchors { left: parent.left; leftMargin: 4; verticalCenter: parent.verticalCenter }
            height: 48
            flat: true
            text: "Vazgeç"
            font.pixelSize: Theme.bodySize
            font.capitalization: Font.MixedCase
            Material.foreground: Theme.cerulean
            Accessible.name: text
            onClicked: root.controller.cancel()
        }
        Text {
            anchors.centerIn: parent
            text: "Yeni E-posta"
            color: Theme.ink
            font.pixelSize: 17
            font.bold: true
        }
        Button {
            objectName: "send"
            anchors { right: parent.right; rightMargin: 4; verticalCenter: parent.verticalCenter }
            height: 48
            flat: true
            text: "Gönder"
            font.pixelSize: Theme.bodySize
            font.bold: true
            font.capitalization: Font.MixedCase
            Material.foreground: Theme.cerulean
            Accessible.name: text
            onClicked: root.controller.send()
        }
        Rectangle { anchors { left: parent.left; right: parent.right; bottom: parent.bottom } height: 1; color: Theme.line }
    }

    Column {
        anchors { left: parent.left; right: parent.right; top: bar.bottom }
        Field { caption: "Kime:"; value: root.controller.recipients; name: "lblRecipients" }
        Field { caption: "Konu:"; value: root.controller.subject; name: "lblSubject" }
        Item {
            width: parent.width
            height: 96
            Rectangle {
                objectName: "attachment"
                visible: root.controller.attachmentName.length > 0
                anchors { left: parent.left; leftMargin: Theme.margin; verticalCenter: parent.verticalCenter }
                width: 220; height: 64
                radius: Theme.radius
                color: "#f4f4f4"
                border.color: Theme.line
                Accessible.name: "Ek: " + root.controller.attachmentName
                Rectangle {
                    id: badge
                    anchors { left: parent.left; leftMargin: 10; verticalCenter: parent.verticalCenter }
                    width: 40; height: 48
                    radius: 4
                    color: Theme.danger
                    Text { anchors.centerIn: parent; text: "PDF"; color: "white"; font.pixelSize: 12; font.bold: true }
                }
                Column {
                    anchors { left: badge.right; leftMargin: 10; right: parent.right; rightMargin: 8; verticalCenter: parent.verticalCenter }
                    Text { objectName: "lblAttachment"; width: parent.width; text: root.controller.attachmentName; color: Theme.ink; font.pixelSize: 15; elide: Text.ElideMiddle }
                    Text { text: root.controller.attachmentSize; color: Theme.muted; font.pixelSize: Theme.captionSize }
                }
            }
        }
    }
}
