import QtQuick
import Ekinora.Platform
import Ekinora.Widgets

// A price row: the crop's icon (when the row has one), its name, where the price is from, and the
// lowest and highest prices.
Rectangle {
    id: cell
    required property string reuseIdentifier
    required property var values
    required property size cellSize
    required property int row
    signal tapped(int row)
    objectName: reuseIdentifier
    width: cellSize.width
    height: cellSize.height
    color: Theme.page
    Accessible.role: Accessible.Button
    Accessible.name: (values.lblName || "") + ", en düşük " + (values.lblLowest || "") + ", en yüksek " + (values.lblHighest || "")

    Rectangle {
        objectName: "viewProduce"
        anchors { fill: parent; leftMargin: 12; rightMargin: 12; topMargin: 5; bottomMargin: 5 }
        radius: 3
        border.width: 0.5
        border.color: Theme.cerulean
        color: "white"
        Image {
            id: icon
            objectName: "imgProduce"
            visible: String(cell.values.imgProduce || "").length > 0
            anchors { left: parent.left; leftMargin: 10; verticalCenter: parent.verticalCenter }
            width: visible ? 48 : 0; height: 48
            asynchronous: true
            fillMode: Image.PreserveAspectFit
            source: cell.values.imgProduce || ""
        }
        Column {
            anchors { left: icon.right; leftMargin: 10; right: prices.left; rightMargin: 8; verticalCenter: parent.verticalCenter }
            spacing: 4
            Text {
                objectName: "lblName"
                width: parent.width
                text: cell.values.lblName || ""
                color: Theme.ink
                font.pixelSize: Theme.bodySize
                font.bold: true
                elide: Text.ElideRight
            }
            Text {
                objectName: "lblLocation"
                width: parent.width
                text: cell.values.lblLocation || ""
                color: Theme.muted
                font.pixelSize: Theme.captionSize
                elide: Text.ElideRight
            }
        }
        Grid {
            id: prices
            anchors { right: parent.right; rightMargin: 10; verticalCenter: parent.verticalCenter }
            columns: 2
            columnSpacing: 6
            rowSpacing: 4
            horizontalItemAlignment: Grid.AlignRight
            Text { text: "En düşük"; color: Theme.muted; font.pixelSize: 12 }
            Text { objectName: "lblLowest"; text: cell.values.lblLowest || ""; color: Theme.cerulean; font.pixelSize: 15; font.bold: true }
            Text { text: "En yüksek"; color: Theme.muted; font.pixelSize: 12 }
            Text { objectName: "lblHighest"; text: cell.values.lblHighest || ""; color: Theme.leaf; font.pixelSize: 15; font.bold: true }
        }
    }
    MouseArea { anchors.fill: parent; onClicked: cell.tapped(cell.row) }
}
