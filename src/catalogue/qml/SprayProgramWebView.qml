pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import Ekinora.Platform
import Ekinora.Catalogue

// One programme's page under its own bar: the status band, the close button and the title.
Rectangle {
    id: root
    required property SprayProgramWebViewController controller
    objectName: "SprayProgramWebViewController"
    color: "white"

    Rectangle {
        id: bar
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: 64
        color: Qt.rgba(0, 0.4, 0.6196078431372549, 1)
        Button {
            objectName: "closeButtonTapped"
            anchors { left: parent.left; leftMargin: 4; verticalCenter: parent.verticalCenter }
            width: 48; height: 48; flat: true
            text: "✕"; font.pixelSize: 20; palette.buttonText: "white"
            Accessible.name: "Kapat"
            onClicked: root.controller.closeButtonTapped()
        }
        PLabel {
            model: root.controller.navBar
            anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; leftMargin: 56; rightMargin: 56 }
            horizontalAlignment: Text.AlignHCenter
            color: "white"; font.pixelSize: 17; font.bold: true
            elide: Text.ElideRight
        }
    }
    PWebView {
        model: root.controller.webView
        anchors { left: parent.left; right: parent.right; top: bar.bottom; bottom: parent.bottom }
    }
}
