import QtQuick
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Loyalty

// The farmer's own QR code, large in the middle of the page, with a word on what it is for.
Rectangle {
    id: root
    required property MyQrCodeViewController controller
    objectName: "MyQrCodeViewController"
    color: Theme.page

    Text {
        id: heading
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: Theme.margin; topMargin: 28 }
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.WordWrap
        color: Theme.ink
        font.pixelSize: Theme.titleSize
        font.bold: true
        text: "Size özel QR kodunuz"
    }
    Text {
        id: hint
        anchors { left: parent.left; right: parent.right; top: heading.bottom; margins: Theme.margin; topMargin: 8 }
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.WordWrap
        color: Theme.muted
        font.pixelSize: Theme.bodySize
        text: "Satış ya da hediye için bayiniz bu kodu okutur."
    }
    Rectangle {
        anchors { horizontalCenter: parent.horizontalCenter; top: hint.bottom; topMargin: 24 }
        width: Math.min(parent.width - 2 * Theme.margin, 320)
        height: width
        color: "white"
        radius: Theme.radius
        PImageView {
            model: root.controller.qrImage
            anchors { fill: parent; margins: 16 }
            smooth: false
        }
    }
}
