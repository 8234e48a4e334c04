import QtQuick
import Ekinora.Platform
import Ekinora.Widgets

// A text row of a list drawn from a list model: its reuse identifier as its objectName, its row, the
// text of its control "name" in the row's values, green and underlined when chosen.
Item {
    id: cell
    required property string reuseIdentifier
    required property var values
    required property size cellSize
    required property int row
    property string textControl: "textLabel"
    property bool separator: true
    signal tapped(int row)
    objectName: reuseIdentifier
    width: cellSize.width
    height: cellSize.height
    Accessible.role: Accessible.Button
    Accessible.name: label.text
    Text {
        id: label
        objectName: cell.textControl
        anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; leftMargin: Theme.margin; rightMargin: Theme.margin }
        elide: Text.ElideRight
        text: cell.values[cell.textControl] || ""
        color: cell.values.textColor || Theme.ink
        font.underline: cell.values.underline || false
        font.pixelSize: Theme.bodySize
    }
    Rectangle {
        visible: cell.separator
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; leftMargin: Theme.margin }
        height: 1
        color: Theme.divider
    }
    MouseArea { anchors.fill: parent; onClicked: cell.tapped(cell.row) }
}
