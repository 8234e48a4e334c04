import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Ekinora.Widgets

// A flat text button in the leaf colour that runs one action of its screen. Its objectName is the
// action's name, as the object contract wants of a button that only triggers an action.
Button {
    id: button
    property string act: ""
    objectName: act
    flat: true
    implicitHeight: Theme.touch
    font.pixelSize: Theme.bodySize
    font.capitalization: Font.MixedCase
    palette.buttonText: Theme.leaf
    Material.foreground: Theme.leaf
    Accessible.name: text
}
