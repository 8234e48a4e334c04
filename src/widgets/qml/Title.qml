import QtQuick
import Ekinora.Widgets

// A panel's title: large, bold, the width of its column.
Text {
    width: parent ? parent.width : implicitWidth
    color: Theme.ink
    font.pixelSize: 22
    font.bold: true
    wrapMode: Text.WordWrap
}
