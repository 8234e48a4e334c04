import QtQuick
import Ekinora.Widgets

// A product of the lists: a row of the table (picture on the left) or a tile of the grid (picture
// above). Its objectName is its reuse identifier; the controls inside keep their names.
Item {
    id: cell
    required property string reuseIdentifier
    required property var values
    required property size cellSize
    required property int row
    property bool tile: false
    property string nameControl: "label1"
    property string typeControl: "label2"
    signal tapped(int row)
    objectName: reuseIdentifier
    width: cellSize.width
    height: cellSize.height
    Accessible.role: Accessible.Button
    Accessible.name: name.text + ", " + type.text

    Rectangle {
        objectName: "containerView"
        anchors.fill: parent
        anchors.margins: cell.tile ? 0 : 6
        radius: 6
        color: Theme.card
        border.width: Math.max(1, cell.values.borderWidth || 0)
        border.color: Theme.line

        Image {
            id: picture
            objectName: "imgView"
            x: cell.tile ? (parent.width - width) / 2 : 8
            y: cell.tile ? 8 : (parent.height - height) / 2
            width: cell.tile ? parent.width - 16 : 72
            height: cell.tile ? parent.height - 78 : 72
            fillMode: Image.PreserveAspectFit
            asynchronous: true
            sourceSize.width: cell.tile ? 240 : 144
            sourceSize.height: cell.tile ? 315 : 189
            source: cell.values.imgView || ""
        }
        Column {
            x: cell.tile ? 8 : picture.x + picture.width + 12
            width: cell.tile ? parent.width - 16 : parent.width - x - 12
            anchors.verticalCenter: cell.tile ? undefined : parent.verticalCenter
            y: cell.tile ? picture.y + picture.height + 6 : 0
            spacing: 4
            Text {
                id: name
                objectName: cell.nameControl
                width: parent.width
                text: cell.values[cell.nameControl] || ""
                color: Theme.ink
                font.pixelSize: cell.tile ? 15 : Theme.bodySize
                font.bold: true
                wrapMode: Text.WordWrap
                maximumLineCount: 2
                elide: Text.ElideRight
                horizontalAlignment: cell.tile ? Text.AlignHCenter : Text.AlignLeft
            }
            Text {
                id: type
                objectName: cell.typeControl
                width: parent.width
                text: cell.values[cell.typeControl] || ""
                color: Theme.leaf
                font.pixelSize: Theme.captionSize
                elide: Text.ElideRight
                horizontalAlignment: cell.tile ? Text.AlignHCenter : Text.AlignLeft
            }
        }
    }
    MouseArea { anchors.fill: parent; onClicked: cell.tapped(cell.row) }
}
