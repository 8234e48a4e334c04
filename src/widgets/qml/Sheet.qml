import QtQuick
import Ekinora.Platform
import Ekinora.Widgets

// A panel over its screen: a view model's shade that takes the touches, with a white card holding a
// heading, an optional button on the heading's right and the content.
PView {
    id: sheet
    property string heading: ""
    property alias headerItem: headerSlot.data
    default property alias content: body.data
    // The card's height; by default it fills the screen less its margins.
    property real cardHeight: height - 2 * Theme.margin
    anchors.fill: parent
    color: Theme.shade
    MouseArea { anchors.fill: parent }
    Rectangle {
        id: card
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: Theme.margin }
        height: sheet.cardHeight
        radius: 8
        color: Theme.card
        clip: true
        Item {
            id: header
            width: parent.width
            height: 52
            Text {
                anchors { left: parent.left; leftMargin: Theme.margin; verticalCenter: parent.verticalCenter; right: headerSlot.left }
                text: sheet.heading
                font.pixelSize: Theme.headingSize
                font.bold: true
                color: Theme.ink
                elide: Text.ElideRight
            }
            Item {
                id: headerSlot
                anchors { right: parent.right; rightMargin: 4; top: parent.top; bottom: parent.bottom }
                width: childrenRect.width
            }
        }
        Item {
            id: body
            anchors { top: header.bottom; left: parent.left; right: parent.right; bottom: parent.bottom }
        }
    }
}
