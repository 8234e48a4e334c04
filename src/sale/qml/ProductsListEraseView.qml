import QtQuick
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Loyalty
import Ekinora.Sale

// Removing a code: the header band with its cross, the camera, and the card of the product read with
// the remove button. A touch beside the card hides it and reads again.
Rectangle {
    id: root
    required property ProductsListEraseViewController controller
    objectName: "ProductsListEraseViewController"
    color: "black"

    // A touch anywhere but on the card hides it and reads again.
    MouseArea { anchors.fill: parent; onPressed: root.controller.touchesBegan(false) }

    ScannerHeader {
        id: header
        objectName: "topView"
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: 64
        label: root.controller.topViewLabel
        CloseButton {
            objectName: "closeBtnTapped"
            anchors { left: parent.left; leftMargin: 4; verticalCenter: parent.verticalCenter }
            onClicked: root.controller.closeBtnTapped()
        }
    }

    Item {
        objectName: "cameraContainerView"
        anchors { left: parent.left; right: parent.right; top: header.bottom; bottom: parent.bottom }
        ScannerCamera { scanner: root.controller; anchors.fill: parent }
    }

    ProductCard {
        anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; margins: 24 }
        model: root.controller.alertView
        image: root.controller.imgView
        name: root.controller.ilacAdiLabel
        onTouchedCard: root.controller.touchesBegan(true)
        FilledButton {
            objectName: "removeButtonTapped"
            width: parent.width
            fill: Theme.danger
            text: "Listeden Çıkar"
            onClicked: root.controller.removeButtonTapped()
        }
        FilledButton {
            objectName: "yeniTaratButtonTapped"
            width: parent.width
            fill: Theme.cerulean
            text: "Yeni Ürün Tarat"
            onClicked: root.controller.yeniTaratButtonTapped()
        }
    }
}
