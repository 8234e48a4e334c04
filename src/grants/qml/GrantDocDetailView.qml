import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Grants

// A document under its own bar, attached to the top: the close button, the document's name and the
// mail button.
Rectangle {
    id: root
    required property GrantDocDetailViewController controller
    objectName: "GrantDocDetailViewController"
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
            anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; leftMargin: 56; rightMargin: 72 }
            horizontalAlignment: Text.AlignHCenter
            color: "white"
            font.pixelSize: 17
            font.bold: true
        }
        Button {
            objectName: "sendMail"
            anchors { right: parent.right; rightMargin: 4; verticalCenter: parent.verticalCenter }
            height: 48
            flat: true
            text: "Gönder"
            font.pixelSize: 15
            font.bold: true
            font.capitalization: Font.MixedCase
            Material.foreground: "white"
            Accessible.name: "E-posta ile gönder"
            onClicked: root.controller.sendMail()
        }
    }
    PWebView {
        model: root.controller.webViewDocument
        anchors { left: parent.left; right: parent.right; top: bar.bottom; bottom: parent.bottom }
    }
}
