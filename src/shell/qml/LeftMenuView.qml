import QtQuick
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Shell
import QtQuick.Controls
import QtQuick.Controls.Material

// Lines marked with a qmllint disable are right at run time: Qt 6.4's linter flags ids reached from inside
// a delegate, an inline or a loaded component (the pragma that allows them comes with 6.5), and cannot see properties
// inherited across the runtime's controls (its type registrar drops base classes named without their namespace).

// The menu's rows over the container's background: icon and label, white on the dark picture.
Item {
    id: root
    required property LeftMenuViewController controller
    objectName: "LeftMenuViewController"

    ListView {
        id: list
        objectName: "tableView"
        x: root.controller.tableFrame.x
        y: root.controller.tableFrame.y
        width: root.controller.tableFrame.width
        height: root.controller.tableFrame.height
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentHeight > height
        model: root.controller.tableView.rows

        delegate: ItemDelegate {
            id: cell
            required property string reuseIdentifier
            required property var values
            required property size cellSize
            required property int row
            readonly property var content: values
            objectName: reuseIdentifier
            width: ListView.view.width
            height: cellSize.height
            padding: 0
            background: Item {}
            Accessible.name: content.text || ""
            contentItem: Row { // qmllint disable deferred-property-id
                spacing: 14
                leftPadding: 24
                Image {
                    objectName: "cellIcon"
                    anchors.verticalCenter: parent.verticalCenter
                    width: 24; height: 24
                    sourceSize: Qt.size(48, 48) // qmllint disable type
                    source: cell.content.icon ? "qrc:/ekinora/icons/" + cell.content.icon + ".svg" : ""
                }
                Text {
                    id: label
                    objectName: "textLabel"
                    // The part of the row that the slid-aside content leaves in view.
                    readonly property real room: Math.min(cell.width, root.width - list.x) - 24 - 24 - 14 - 8 // qmllint disable unqualified
                    anchors.verticalCenter: parent.verticalCenter
                    width: room
                    text: cell.content.html || ""
                    textFormat: Text.RichText
                    color: cell.pressed ? "#aaaaaa" : "white" // the platform's light grey, 170 of 255
                    // Shrinks to fit, down to a fifth of its size.
                    font.pixelSize: Math.max(17 * 0.2, Math.min(17, 17 * room / Math.max(1, measure.advanceWidth)))
                    elide: Text.ElideNone
                    TextMetrics {
                        id: measure
                        font.family: label.font.family
                        font.pixelSize: 17
                        text: (cell.content.text || "") + " "
                    }
                }
            }
            onClicked: root.controller.tableView.selectRow(cell.row) // qmllint disable unqualified
        }
    }

    Button {
        font.capitalization: Font.MixedCase
        objectName: "logout"
        anchors { left: parent.left; bottom: parent.bottom; leftMargin: 20; bottomMargin: 40 }
        flat: true
        height: 48
        text: "Çıkış Yap"
        font.pixelSize: 17
        palette.buttonText: "white"
        Material.foreground: "white"
        onClicked: root.controller.logout()
        Accessible.name: text
    }
}
