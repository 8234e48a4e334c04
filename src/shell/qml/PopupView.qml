import QtQuick
import QtQuick.Controls
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Shell

// The campaign card over the whole screen: close button, banner, title, body, product box.
Rectangle {
    id: root
    required property PopupViewController controller
    color: "#99000000"
    MouseArea { anchors.fill: parent }

    Rectangle {
        id: card
        anchors { fill: parent; topMargin: 60; bottomMargin: 40; leftMargin: 8; rightMargin: 8 }
        radius: 10
        color: "white"
        clip: true

        Column {
            id: top
            anchors { left: parent.left; right: parent.right; top: parent.top; topMargin: 8 }
            spacing: 8

            PImageView {
                model: root.controller.imgProduce
                width: parent.width - 16
                anchors.horizontalCenter: parent.horizontalCenter
                height: root.controller.constraintImageBannerHeight.constant
                visible: height > 0
                fillMode: Image.PreserveAspectCrop
            }
            PLabel {
                model: root.controller.lblTitle
                width: parent.width - 32
                anchors.horizontalCenter: parent.horizontalCenter
                font.pixelSize: 20
                font.bold: true
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.WordWrap
            }
        }

        PWebView {
            model: root.controller.webViewContent
            anchors { left: parent.left; right: parent.right; top: top.bottom; bottom: product.top; margins: 16 }
        }

        PView {
            id: product
            model: root.controller.viewProduct
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: 16 }
            height: root.controller.constraintViewProductHeight.constant
            visible: height > 0
            Row {
                anchors.fill: parent
                anchors.margins: 8
                spacing: 12
                PImageView { model: root.controller.imgProduct; height: parent.height; width: height }
                PLabel {
                    model: root.controller.lblProductName
                    width: parent.width - parent.height - 12
                    anchors.verticalCenter: parent.verticalCenter
                    font.pixelSize: 16
                    font.bold: true
                    wrapMode: Text.WordWrap
                }
            }
        }
    }

    RoundButton {
        objectName: "closePopup"
        anchors { right: parent.right; top: parent.top; topMargin: 36; rightMargin: 0 }
        width: 48; height: 48
        text: "✕"
        font.pixelSize: 18
        onClicked: root.controller.closePopup()
        Accessible.name: "Kapat"
    }
}
