import QtQuick
import QtQuick.Controls
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Info

// The heading row with its picture, the three legal pages, and the way into the product site's guide.
Rectangle {
    id: root
    required property InfoViewController controller
    objectName: "InfoViewController"
    color: "white"

    ListView {
        id: list
        objectName: "tableViewInfo"
        anchors { left: parent.left; right: parent.right; top: parent.top; bottom: guide.top }
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        model: root.controller.tableViewInfo.rows
        onWidthChanged: root.controller.tableViewInfo.size = Qt.size(width, height)

        delegate: Item {
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

            // Row 0: the heading over its picture.
            Item {
                anchors.fill: parent
                visible: cell.reuseIdentifier === "HeaderCell"
                Image {
                    anchors.fill: parent
                    fillMode: Image.PreserveAspectCrop
                    source: "qrc:/ekinora/images/infoHeader.jpg"
                }
                Rectangle {
                    anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
                    height: 72
                    gradient: Gradient {
                        GradientStop { position: 0.0; color: "#00000000" }
                        GradientStop { position: 1.0; color: "#99000000" }
                    }
                }
                Text {
                    anchors { left: parent.left; bottom: parent.bottom; margins: Theme.margin }
                    text: "Bilgilendirme Metinleri"
                    color: "white"
                    font.pixelSize: Theme.titleSize
                    font.bold: true
                }
            }
            // A page.
            Item {
                anchors.fill: parent
                visible: cell.reuseIdentifier === "InfoCell"
                Accessible.role: Accessible.Button
                Accessible.name: cell.content.labelTitle || ""
                Text {
                    objectName: "labelTitle"
                    anchors { left: parent.left; right: chevron.left; verticalCenter: parent.verticalCenter; leftMargin: Theme.margin; rightMargin: 8 }
                    text: cell.content.labelTitle || ""
                    color: Theme.ink
                    font.pixelSize: Theme.bodySize
                    wrapMode: Text.WordWrap
                }
                Text {
                    id: chevron
                    anchors { right: parent.right; verticalCenter: parent.verticalCenter; rightMargin: Theme.margin }
                    text: "›"
                    color: Theme.leaf
                    font.pixelSize: 28
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

    FilledButton {
        id: guide
        objectName: "openSiteGuide"
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: Theme.margin }
        text: "Güvenli Kullanım Rehberi"
        onClicked: root.controller.openSiteGuide()
    }
}
