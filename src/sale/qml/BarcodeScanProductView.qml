import QtQuick
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Loyalty
import Ekinora.Sale

// Adding package codes: the header band with the close item (off while a card is up), the camera,
// and the card of the product just added with its two ways on.
Rectangle {
    id: root
    required property BarcodeScanProductViewController controller
    objectName: "BarcodeScanProductViewController"
    color: "black"

    ScannerHeader {
        id: header
        objectName: "topView"
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: 64
        label: root.controller.topViewLabel
        CloseButton {
            objectName: "closeButton"
            anchors { left: parent.left; leftMargin: 4; verticalCenter: parent.verticalCenter }
            enabled: root.controller.closeButton.enabled
            Accessible.name: "Oturumu Sonlandır"
            onClicked: root.controller.closeButton.tap()
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
        placeholder: "fungol"
        FilledButton {
            objectName: "scanNewProductButtonTapped"
            width: parent.width
            text: "Yeni Ürün Okut"
            onClicked: root.controller.scanNewProductButtonTapped()
        }
        FilledButton {
            objectName: "continueButtonTapped"
            width: parent.width
            fill: Theme.cerulean
            text: "Listeye Git"
            onClicked: root.controller.continueButtonTapped()
        }
    }
}
