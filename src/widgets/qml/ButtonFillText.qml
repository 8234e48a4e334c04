import QtQuick
import QtQuick.Templates as T

// A filled button's title: white, in the button's font, centred.
Text {
    property T.AbstractButton button
    text: button.text
    font: button.font
    color: "white"
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
    elide: Text.ElideRight
}
