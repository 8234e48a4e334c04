import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material

// The menu's rows over the container's background: icon and label, white on the dark picture.
Item {
    id: root
    objectName: "LeftMenuViewController"

    ListView {
        id: list
        objectName: "tableView"
        x: controller.tableFrame.x
        y: controller.tableFrame.y
        width: controller.tableFrame.width
        height: controller.tableFrame.height
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentHeight > height
        // Rows are read again only when the controller reloads the table.
        property int revision: tableView.revision
        model: { revision; return controller.numberOfRowsInSection(0) }

        delegate: ItemDelegate {
            id: cell
            objectName: "Cell"
            property int row: index
            property var content: { list.revision; return controller.cellForRow(index) }
            width: ListView.view.width
            height: controller.heightForRow(index)
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
                    sourceSize: Qt.size(48, 48)
                    source: cell.content.icon ? "qrc:/ekinora/icons/" + cell.content.icon + ".svg" : ""
                }
                Text {
                    id: label
                    objectName: "textLabel"
                    // The part of the row that the slid-aside content leaves in view.
                    readonly property real room: Math.min(cell.width, root.width - list.x) - 24 - 24 - 14 - 8
                    anchors.verticalCenter: parent.verticalCenter
                    width: room
                    text: cell.content.html || ""
                    textFormat: Text.RichText
                    color: cell.pressed ? "#d3d3d3" : "white"
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
            onClicked: controller.didSelectRow(index)
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
        onClicked: controller.logout()
        Accessible.name: text
    }
}
