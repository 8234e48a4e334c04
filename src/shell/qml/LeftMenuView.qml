import QtQuick
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Shell
import QtQuick.Controls
import QtQuick.Controls.Material

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
            required property UITableView view
            readonly property var content: values
            objectName: reuseIdentifier
            width: ListView.view.width
            height: cellSize.height
            padding: 0
            background: Item {}
            Accessible.name: content.text || ""
            contentItem: Row {
                spacing: 14
                leftPadding: 24
                Image {
                    objectName: "cellIcon"
                    anchors.verticalCenter: parent.verticalCenter
                    width: 24; height: 24
                    sourceSize.width: 48; sourceSize.height: 48
                    source: cell.content.icon ? "qrc:/ekinora/icons/" + cell.content.icon + ".svg" : ""
                }
                Text {
                    objectName: "textLabel"
                    // The part of the row that the slid-aside content leaves in view.
                    readonly property real room: Math.min(cell.width, cell.ListView.view.parent.width - cell.ListView.view.x) - 24 - 24 - 14 - 8
                    anchors.verticalCenter: parent.verticalCenter
                    width: room
                    text: cell.content.html || ""
                    textFormat: Text.RichText
                    color: cell.pressed ? "#aaaaaa" : "white" // the platform's light grey, 170 of 255
                    // Shrinks to fit, down to a fifth of its size.
                    font.pixelSize: Math.max(17 * 0.2, Math.min(17, 17 * room / Math.max(1, measure.advanceWidth)))
                    elide: Text.ElideNone
                    readonly property TextMetrics measure: TextMetrics {
                        font.pixelSize: 17
                        text: (cell.content.text || "") + " "
                    }
                }
            }
            onClicked: cell.view.selectRow(cell.row)
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
