import QtQuick
import QtQuick.Controls
import "qrc:/ekinora/platform/qml"

// One product as a card: picture and name, and a way to close it.
Rectangle {
    id: root
    objectName: "ProductViewController"
    color: "#80000000"
    MouseArea { anchors.fill: parent }

    PView {
        model: viewProduct
        anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; margins: 32 }
        height: 320
        radius: 8
        color: "white"
        Column {
            anchors { fill: parent; margins: 16 }
            spacing: 12
            PImageView { model: imageLogo; width: parent.width; height: 180; Accessible.name: "Ürün görseli" }
            PLabel { model: labelName; width: parent.width; horizontalAlignment: Text.AlignHCenter; font.pixelSize: 18; font.bold: true }
        }
    }
    Button {
        objectName: "closeView"
        anchors { right: parent.right; top: parent.top; margins: 24 }
        width: 48; height: 48
        text: "✕"
        Accessible.name: "Kapat"
        onClicked: controller.closeView()
    }
}
