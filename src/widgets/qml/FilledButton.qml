import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Ekinora.Platform
import Ekinora.Widgets

// A screen's button model drawn filled in a colour (the leaf by default), white title, 50 high.
PButton {
    id: button
    property color fill: Theme.leaf
    implicitHeight: 50
    font.pixelSize: 17
    font.bold: true
    Material.foreground: "white"
    background: Rectangle { radius: Theme.radius; color: button.down ? Qt.darker(button.fill, 1.15) : button.fill }
}
