import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Farms

// A document under its own bar: the close button and the document's title.
Rectangle {
    id: root
    required property DocumentViewController controller
    objectName: "DocumentViewController"
    color: "white"

    Rectangle {
        id: bar
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: 64
        color: "#78b930"
        Button {
            objectName: "close"
            anchors { left: parent.left; leftMargin: 4; verticalCenter: parent.verticalCenter }
            width: 48; height: 48
            flat: true
            text: "✕"
            font.pixelSize: 20
            Material.foreground: "white"
            palette.buttonText: "white"
            Accessible.name: "Kapat"
            onClicked: root.controller.close()
        }
        PLabel {
            model: root.controller.navBar
            anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; leftMargin: 56; rightMargin: 56 }
            horizontalAlignment: Text.AlignHCenter
            color: "white"
            font.pixelSize: 17
            font.bold: true
        }
    }
    PWebView {
        model: root.controller.webViewDocument
        anchors { left: parent.left; right: parent.right; top: bar.bottom; bottom: parent.bottom }
    }
}
