import QtQuick
import QtQuick.Controls
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Farms

// One product as a card: picture and name, and a way to close it.
Rectangle {
    id: root
    required property ProductViewController controller
    objectName: "ProductViewController"
    color: "#80000000"
    MouseArea { anchors.fill: parent }

    PView {
        model: root.controller.viewProduct
        anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; margins: 32 }
        height: 320
        radius: 8
        color: "white"
        Column {
            anchors { fill: parent; margins: 16 }
            spacing: 12
            PImageView { model: root.controller.imageLogo; width: parent.width; height: 180; Accessible.name: "Ürün görseli" }
            PLabel { model: root.controller.labelName; width: parent.width; horizontalAlignment: Text.AlignHCenter; font.pixelSize: 18; font.bold: true }
        }
    }
    Button {
        objectName: "closeView"
        anchors { right: parent.right; top: parent.top; margins: 24 }
        width: 48; height: 48
        text: "✕"
        Accessible.name: "Kapat"
        onClicked: root.controller.closeView()
    }
}
