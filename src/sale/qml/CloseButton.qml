import QtQuick
import QtQuick.Controls

// The cross that closes a scanner or the list, drawn in white over the header band: 48 x 48 to touch.
AbstractButton {
    id: button
    implicitWidth: 48
    implicitHeight: 48
    Accessible.name: "Kapat"
    opacity: enabled ? 1 : 0.4
    contentItem: Item {
        Repeater {
            model: [45, -45]
            Rectangle {
                required property int modelData
                anchors.centerIn: parent
                width: 22
                height: 3
                radius: 1.5
                color: "white"
                rotation: modelData
            }
        }
    }
    background: Rectangle { radius: 24; color: button.down ? "#33000000" : "transparent" }
}
