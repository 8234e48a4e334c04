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
        delegate: SaleRow {
            onAdd: () => root.controller.ekleButtonTappedWithSender()
            onErase: () => root.controller.eraseButtonTappedWithSender()
        }
    }

    BusyIndicator {
        objectName: "refreshControl"
        anchors { horizontalCenter: parent.horizontalCenter; top: header.bottom; topMargin: 8 }
        running: root.controller.refreshing
        visible: running
    }

    FilledButton {
        id: confirm
        objectName: "completeProcessButtonTapped"
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: 16 }
        text: "İşlemi Onayla"
        onClicked: root.controller.completeProcessButtonTapped()
    }
}
