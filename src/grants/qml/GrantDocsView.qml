import QtQuick
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Grants

// The application documents of a programme, one a row.
Rectangle {
    id: root
    required property GrantDocsViewController controller
    objectName: "GrantDocsViewController"
    color: Theme.page

    ListView {
        id: docs
        objectName: "tblDocs"
        anchors.fill: parent
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        model: root.controller.tblDocs.rows
        onWidthChanged: root.controller.tblDocs.size = Qt.size(width, height)
        // An empty footer: no separators under the last row.
        footer: Item { height: 0 }
        delegate: Rectangle {
            id: cell
            required property string reuseIdentifier
            required property var values
            required property size cellSize
            required property int row
            required property UITableView view
            objectName: reuseIdentifier
            width: ListView.view.width
            height: cellSize.height
            color: "white"
            Accessible.role: Accessible.Button
            Accessible.name: values.lblTitle || ""
            Text {
                text: "PDF"
                color: Theme.danger
                font.pixelSize: 12
                font.bold: true
                anchors { left: parent.left; leftMargin: Theme.margin; verticalCenter: parent.verticalCenter }
            }
            Text {
                objectName: "lblTitle"
                anchors { left: parent.left; right: arrow.left; verticalCenter: parent.verticalCenter; leftMargin: 56 }
                text: cell.values.lblTitle || ""
                color: Theme.ink
                font.pixelSize: Theme.bodySize
                elide: Text.ElideRight
            }
            Text {
                id: arrow
                text: "›"
                color: Theme.border
                font.pixelSize: 24
                anchors { right: parent.right; rightMargin: Theme.margin; verticalCenter: parent.verticalCenter }
            }
            Rectangle {
                anchors { left: parent.left; right: parent.right; bottom: parent.bottom; leftMargin: Theme.margin }
                height: 1
                color: Theme.divider
            }
            MouseArea { anchors.fill: parent; onClicked: cell.view.selectRow(cell.row) }
        }
    }
}
