import QtQuick
import Ekinora.Platform
import Ekinora.Widgets

// The header band of the scanner screens: a gradient across from blue to green, the title above it.
Rectangle {
    id: band
    required property UILabel label

    gradient: Gradient {
        orientation: Gradient.Horizontal
        GradientStop { position: 0.0; color: Theme.cerulean }
        GradientStop { position: 1.0; color: Theme.leaf }
    }

    Text {
        anchors.fill: parent
        anchors.leftMargin: 56
        anchors.rightMargin: 56
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.WordWrap
        text: band.label.text
        color: "white"
        font.pixelSize: Theme.headingSize
        font.bold: true
    }
}
