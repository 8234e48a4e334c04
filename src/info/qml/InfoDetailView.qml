import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Info

// A legal page under its own bar: the close button and the page's name.
Rectangle {
    id: root
    required property InfoDetailViewController controller
    objectName: "InfoDetailViewController"
    color: "white"

    Rectangle {
        id: bar
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: 64
        color: Theme.leaf
        Button {
            objectName: "close"
            anchors { left: parent.left; leftMargin: 4; verticalCenter: parent.verticalCenter }
            width: 48; height: 48
            flat: true
            text: "✕"
            font.pixelSize: 20
            Material.foreground: "white"
            Accessible.name: "Kapat"
            onClicked: root.controller.close()
        }
        PLabel {
            model: root.controller.navBar
            anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; leftMargin: 56; rightMargin: 16 }
            horizontalAlignment: Text.AlignHCenter
            color: "white"
            font.pixelSize: 16
            font.bold: true
        }
    }
    PWebView {
        model: root.controller.webViewDocument
        anchors { left: parent.left; right: parent.right; top: bar.bottom; bottom: parent.bottom; leftMargin: 8; rightMargin: 8 }
    }
}
