import QtQuick
import Ekinora.Platform
import Ekinora.Widgets

// A chosen value that opens its panel when tapped: the label's text and an arrow.
Rectangle {
    id: choice
    property string act: ""
    property alias label: labelItem.model
    property string purpose: ""
    signal triggered()
    objectName: act
    implicitWidth: 200
    height: Math.max(Theme.touch, labelItem.implicitHeight + 24)
    radius: Theme.radius
    color: Theme.card
    border.color: Theme.line
    Accessible.role: Accessible.Button
    Accessible.name: purpose + ": " + labelItem.text
    PLabel {
        id: labelItem
        anchors { left: parent.left; right: arrow.left; verticalCenter: parent.verticalCenter; leftMargin: 12; rightMargin: 8 }
        font.pixelSize: Theme.bodySize
        color: Theme.ink
    }
    Text {
        id: arrow
        anchors { right: parent.right; verticalCenter: parent.verticalCenter; rightMargin: 12 }
        text: "›"
        font.pixelSize: 24
        color: Theme.border
    }
    MouseArea { anchors.fill: parent; onClicked: choice.triggered() }
}
