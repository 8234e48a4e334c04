import QtQuick
import QtQuick.Controls
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Sale

// The sale list: a band with the cross that ends the session, the codes with their pictures and
// names, a last row to add or remove, and the confirmation at the foot. Behind an empty list the
// table says so in large letters; a pull on the list loads it again.
Rectangle {
    id: root
    required property ProductListViewController controller
    objectName: "ProductListViewController"
    color: Theme.page

    Rectangle {
        id: header
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: 64
        gradient: Gradient {
            orientation: Gradient.Horizontal
            GradientStop { position: 0.0; color: Theme.cerulean }
            GradientStop { position: 1.0; color: Theme.leaf }
        }
        Text {
            anchors { fill: parent; leftMargin: 56; rightMargin: 56 }
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            text: "Ürün Listesi"
            color: "white"
            font.pixelSize: Theme.headingSize
            font.bold: true
        }
        CloseButton {
            objectName: "closeButtonTapped"
            anchors { left: parent.left; leftMargin: 4; verticalCenter: parent.verticalCenter }
            Accessible.name: "Oturumu Sonlandır"
            onClicked: root.controller.closeButtonTapped()
        }
    }

    PLabel {
        objectName: "backgroundView"
        anchors { left: parent.left; right: parent.right; top: header.bottom; bottom: confirm.top; margins: 16 }
        model: root.controller.backgroundView
        color: "black"
        font.pixelSize: 100
        fontSizeMode: Text.Fit
        minimumPixelSize: 24
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.WordWrap
    }

    ListView {
        id: list
        objectName: "tableView"
        anchors { left: parent.left; right: parent.right; top: header.bottom; bottom: confirm.top; bottomMargin: 8 }
        clip: true
        model: root.controller.tableView.rows
        onWidthChanged: root.controller.tableView.size = Qt.size(width, height)
        // A pull past the top reloads the list.
        onDragEnded: if (contentY < originY - 72) root.controller.beginRefreshing()
        header: Item {
            width: list.width
            height: root.controller.refreshing ? 40 : 0
            BusyIndicator { anchors.centerIn: parent; running: root.controller.refreshing; visible: running; height: 36 }
        }

        delegate: Item {
            id: cell
            required property string reuseIdentifier
            required property var values
            required property size cellSize
            required property int row
            readonly property var content: values
            objectName: reuseIdentifier
            width: ListView.view.width
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
                    visible: root.controller.separatorStyle !== 0
                    anchors { left: parent.left; right: parent.right; bottom: parent.bottom; leftMargin: 84 }
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
                    onClicked: root.controller.ekleButtonTappedWithSender()
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
                    palette.buttonText: "#3d88b3"
                    Accessible.name: text
                    background: Rectangle { radius: 7; color: erase.down ? Theme.divider : Theme.card; border.width: 1; border.color: "#3d88b3" }
                    onClicked: root.controller.eraseButtonTappedWithSender()
                }
            }
        }
    }

    FilledButton {
        id: confirm
        objectName: "completeProcessButtonTapped"
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: 16 }
        text: "İşlemi Onayla"
        onClicked: root.controller.completeProcessButtonTapped()
    }
}
