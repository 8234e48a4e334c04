import QtQuick
import Ekinora.Widgets

// A small grey caption above a field.
Text {
    color: Theme.muted
    font.pixelSize: Theme.captionSize
    wrapMode: Text.WordWrap
}
