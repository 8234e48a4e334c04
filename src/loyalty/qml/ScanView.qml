import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Loyalty

// The farmer's scan: the gradient header with the close button, the camera under it, and the result
// card over the camera. A touch anywhere but on the card puts the card away and scans again.
Rectangle {
    id: root
    required property ScanViewController controller
    objectName: "ScanViewController"
    color: "#202020"

    MouseArea {
        anchors.fill: parent
        onPressed: root.controller.touchesBegan(root.controller.cameraContainerView)
    }

    Item {
        objectName: "cameraContainerView"
        anchors { left: parent.left; right: parent.right; top: header.bottom; bottom: parent.bottom }
        ScannerCamera {
            scanner: root.controller
            anchors.fill: parent
        }
        Rectangle {
            anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom; bottomMargin: 28 }
            width: Math.min(parent.width - 2 * Theme.margin, hint.implicitWidth + 24)
            height: hint.implicitHeight + 16
            radius: height / 2
            color: Theme.shade
            Text {
                id: hint
                anchors { fill: parent; leftMargin: 12; rightMargin: 12 }
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                wrapMode: Text.WordWrap
                color: "white"
                font.pixelSize: Theme.captionSize + 1
                text: "Ürün ambalajının üzerindeki kodu kameraya gösterin."
            }
        }
    }

    ScannerHeader {
        id: header
        objectName: "titleView"
        label: root.controller.titleLabel
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: 64
        Button {
            objectName: "closeButtonTapped"
            anchors { left: parent.left; leftMargin: 4; verticalCenter: parent.verticalCenter }
            width: 48; height: 48
            flat: true
            text: "✕"
            font.pixelSize: 20
            Material.foreground: "white"
            Accessible.name: "Kapat"
            onClicked: root.controller.closeButtonTapped()
        }
    }

    Rectangle {
        id: card
        readonly property UIView model: root.controller.alertView
        objectName: "alertView"
        anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; margins: 24 }
        height: cardColumn.implicitHeight + 2 * Theme.margin
        radius: 12
        color: Theme.card
        clip: model.clipsToBounds
        opacity: model.hidden ? 0 : 1
        visible: opacity > 0
        Behavior on opacity { NumberAnimation { duration: root.controller.cardTransitionMs } }

        // A touch on the bare card keeps it.
        MouseArea {
            anchors.fill: parent
            onPressed: root.controller.touchesBegan(root.controller.alertView)
        }

        Column {
            id: cardColumn
            anchors { left: parent.left; right: parent.right; top: parent.top; margins: Theme.margin }
            spacing: 12
            PImageView {
                model: root.controller.imgView
                width: parent.width
                height: 150
            }
            PLabel {
                model: root.controller.ilacAdiLabel
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                font.pixelSize: Theme.headingSize
                font.bold: true
                color: Theme.ink
            }
            PointText {
                model: root.controller.ilacPuanLabel
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
            }
            PointText {
                model: root.controller.purchasePtLabel
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
            }
            ActionButton {
                act: "yeniTaratButtonTapped"
                width: parent.width
                text: "Yeni Ürün Tarat"
                font.bold: true
                onClicked: root.controller.yeniTaratButtonTapped()
            }
        }
    }
}
