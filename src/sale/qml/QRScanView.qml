import QtQuick
import Ekinora.Platform
import Ekinora.Loyalty
import Ekinora.Sale

// Reading the farmer: the header band with its cross, the camera below it, and the instruction over
// the camera's foot.
Rectangle {
    id: root
    required property QRScanViewController controller
    objectName: "QRScanViewController"
    color: "black"

    ScannerHeader {
        id: header
        objectName: "topView"
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: 64
        label: root.controller.topViewLabel
        CloseButton {
            objectName: "closeButtonTapped"
            anchors { left: parent.left; leftMargin: 4; verticalCenter: parent.verticalCenter }
            onClicked: root.controller.closeButtonTapped()
        }
    }

    Item {
        objectName: "cameraContainerView"
        anchors { left: parent.left; right: parent.right; top: header.bottom; bottom: parent.bottom }
        ScannerCamera { scanner: root.controller; anchors.fill: parent }

        Rectangle {
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
            height: 96
            color: "#99000000"
            PLabel {
                anchors { fill: parent; margins: 16 }
                model: root.controller.baslikLabel
                // The label's words are the screen's own, not the controller's.
                text: "Çiftçinin uygulamadaki QR kodunu çerçeveye getirin"
                color: "white"
                font.pixelSize: 17
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                wrapMode: Text.WordWrap
                maximumLineCount: 3
            }
        }
    }
}
