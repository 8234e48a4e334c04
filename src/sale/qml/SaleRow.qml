import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Ekinora.Widgets

// A row of the sale list: a code's product ("barcodeCell", picture and name) or the last row's two
// buttons ("buttonCell", add and remove).
Item {
    id: cell
    required property string reuseIdentifier
    required property var values
    required property size cellSize
    required property int row
    readonly property var content: values
    signal add()
    signal erase()
    objectName: reuseIdentifier
    width: cellSize.width
    height: cellSize.height

    Item {
        visible: cell.reuseIdentifier === "barcodeCell"
        anchors.fill: parent
        Rectangle {
            anchors { fill: parent; leftMargin: 12; rightMargin: 12; topMargin: 4; bottomMargin: 4 }
            radius: Theme.radius
            color: Theme.card
            Image {
                id: picture
                objectName: "imgView"
                anchors { left: parent.left; leftMargin: 8; verticalCenter: parent.verticalCenter }
                width: 64
                height: 64
                fillMode: Image.PreserveAspectFit
                asynchronous: true
                source: cell.reuseIdentifier === "barcodeCell" ? (cell.content.imgView || "") : ""
            }
            Text {
                objectName: "label1"
                anchors { left: picture.right; right: parent.right; margins: 12; verticalCenter: parent.verticalCenter }
                text: cell.content.label1 || ""
                color: Theme.ink
                font.pixelSize: Theme.bodySize
                wrapMode: Text.WordWrap
                maximumLineCount: 2
                elide: Text.ElideRight
            }
        }
        // The separators go with the rows.
        Rectangle {
            visible: cell.content.separator === true
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom; leftMargin: 84; rightMargin: 12 }
            height: 1
            color: Theme.divider
        }
    }

    Column {
        visible: cell.reuseIdentifier === "buttonCell"
        anchors { fill: parent; margins: 12 }
        spacing: 8
        FilledButton {
            objectName: "ekleLabel"
            width: parent.width
            text: cell.content.ekleLabel || ""
            onClicked: cell.add()
        }
        Button {
            id: erase
            objectName: "eraseLabel"
            width: parent.width
            implicitHeight: 50
            flat: true
            text: cell.content.eraseLabel || ""
            font.pixelSize: 17
            font.capitalization: Font.MixedCase
            Material.foreground: "#3d88b3"
            Accessible.name: text
            // The remove button's rounded blue border.
            background: Rectangle { radius: 7; color: erase.down ? Theme.divider : Theme.card; border.width: 1; border.color: "#3d88b3" }
            onClicked: cell.erase()
        }
    }
}
