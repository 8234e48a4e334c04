import QtQuick
import Ekinora.Widgets

// A point label: its text with the marked range drawn in the range's own font and colours.
Rectangle {
    id: box
    // A PointLabel; untyped, as the checker does not follow the runtime's label back to its view.
    required property var model
    property alias textColor: body.color
    property alias horizontalAlignment: body.horizontalAlignment
    property int pixelSize: 15
    objectName: model.objectName
    visible: !model.hidden
    color: model.backgroundColor
    radius: model.cornerRadius
    clip: model.clipsToBounds
    implicitHeight: body.implicitHeight + 8
    // What the label says, for tests and accessibility.
    readonly property string text: model.text
    Accessible.name: model.text

    Text {
        id: body
        anchors { fill: parent; leftMargin: 8; rightMargin: 8 }
        verticalAlignment: Text.AlignVCenter
        textFormat: Text.RichText
        text: box.model.richText
        wrapMode: Text.WordWrap
        font.pixelSize: box.pixelSize
        color: Theme.ink
    }
}
