import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import "qrc:/ekinora/platform/qml"

// A document under its own bar: the close button and the document's title.
Rectangle {
    id: root
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
            onClicked: controller.close()
        }
        PLabel {
            model: navBar
            anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; leftMargin: 56; rightMargin: 56 }
            horizontalAlignment: Text.AlignHCenter
            color: "white"
            font.pixelSize: 17
            font.bold: true
        }
    }
    PWebView {
        model: webViewDocument
        anchors { left: parent.left; right: parent.right; top: bar.bottom; bottom: parent.bottom }
    }
}
