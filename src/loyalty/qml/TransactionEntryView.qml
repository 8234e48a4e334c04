import QtQuick
import Ekinora.Widgets
import Ekinora.Loyalty

// A dealer's entry into a sale or a gift: what happens next, and the button that opens the reading of
// the farmer's QR code.
Rectangle {
    id: root
    required property TransactionEntryViewController controller
    objectName: controller.screenName
    color: Theme.page

    Column {
        anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; margins: 24 }
        spacing: 20
        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
            color: Theme.ink
            font.pixelSize: Theme.titleSize
            font.bold: true
            text: root.controller.heading
        }
        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
            color: Theme.muted
            font.pixelSize: Theme.bodySize
            text: root.controller.explanation
        }
        Rectangle {
            objectName: "openQrScan"
            width: parent.width
            height: 52
            radius: Theme.radius
            color: tapArea.pressed ? Qt.darker(Theme.leaf, 1.15) : Theme.leaf
            Accessible.role: Accessible.Button
            Accessible.name: label.text
            Text {
                id: label
                anchors.centerIn: parent
                color: "white"
                font.pixelSize: 17
                font.bold: true
                text: "Çiftçinin QR Kodunu Okut"
            }
            MouseArea {
                id: tapArea
                anchors.fill: parent
                onClicked: root.controller.openQrScan()
            }
        }
    }
}
