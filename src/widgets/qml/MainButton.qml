import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Ekinora.Widgets

// A filled button that runs one action of its screen, named after the action as the object contract
// wants; the width of its column unless placed otherwise. Drawn here rather than by the style, so that it needs no shader effect (the raised style's
// shadow layer draws nothing where the scene graph renders in software).
Button {
    id: button
    property string act: ""
    property color fill: Theme.leaf
    property real corner: 4
    objectName: act
    width: parent ? parent.width : implicitWidth
    implicitHeight: 50
    font.capitalization: Font.MixedCase
    font.pixelSize: 17
    font.bold: true
    background: ButtonFill { button: button; fill: button.fill; corner: button.corner }
    contentItem: ButtonFillText { button: button }
    Accessible.name: text
}
