import QtQuick
import QtQuick.Templates as T
import Ekinora.Widgets

// The filled look of a button: its colour, darker while pressed, grey while it cannot be used.
Rectangle {
    property T.AbstractButton button
    property color fill: Theme.leaf
    property real corner: 4
    radius: corner
    color: !button.enabled ? "#c8c8c8" : button.down ? Qt.darker(fill, 1.15) : fill
}
