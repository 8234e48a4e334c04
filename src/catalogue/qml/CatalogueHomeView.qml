import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Catalogue

// The catalogue's entry: three rows that open the panel of their list, the result and clearing
// buttons, the way to the whole catalogue, and the panel itself over everything.
Rectangle {
    id: root
    required property HomeViewController controller
    objectName: "HomeViewController"
    color: Theme.page

    component FilterRow: PView {
        id: filterRow
        property UILabel label: null
        property string act: ""
        property string purpose: ""
        signal triggered()
        width: parent.width
        height: Math.max(Theme.touch + 8, text.implicitHeight + 24)
        color: Theme.card
        border.color: Theme.line
        border.width: 1
        Accessible.role: Accessible.Button
        Accessible.name: purpose + ": " + text.text
        Rectangle { x: 0; width: 6; height: parent.height; color: Theme.leaf }
        PLabel {
            id: text
            model: filterRow.label
            anchors { left: parent.left; right: arrow.left; verticalCenter: parent.verticalCenter; leftMargin: 20; rightMargin: 8 }
            font.pixelSize: Theme.bodySize
            color: Theme.ink
            wrapMode: Text.WordWrap
            maximumLineCount: 2
        }
        Text {
            id: arrow
            anchors { right: parent.right; verticalCenter: parent.verticalCenter; rightMargin: 14 }
            text: "›"
            font.pixelSize: 26
            color: Theme.border
        }
        MouseArea { anchors.fill: parent; onClicked: filterRow.triggered() }
    }

    Flickable {
        anchors.fill: parent
        contentHeight: form.height + 32
        boundsBehavior: Flickable.StopAtBounds
        Column {
            id: form
            x: Theme.margin; y: Theme.margin
            width: parent.width - 2 * Theme.margin
            spacing: 12

            Text {
                width: parent.width
                text: "Bitkinize, ürün grubuna ya da hastalık, zararlı ve yabancı ota göre ürünleri süzün."
                wrapMode: Text.WordWrap
                color: Theme.muted
                font.pixelSize: Theme.captionSize + 1
            }
            FilterRow {
                model: root.controller.bitkiAdiView; label: root.controller.plantNameLbl; purpose: "Bitki"
                onTriggered: root.controller.bitkiAdiTapped()
            }
            FilterRow {
                model: root.controller.urunGrubuView; label: root.controller.productGrpLbl; purpose: "Ürün grubu"
                onTriggered: root.controller.urunGrubuTapped()
            }
            FilterRow {
                model: root.controller.hastalikView; label: root.controller.disasterLbl; purpose: "Hastalık, zararlı ya da yabancı ot"
                onTriggered: root.controller.hastalikTapped()
            }
            Item { width: 1; height: 4 }
            Button {
                id: show
                objectName: "selectedProductButtonTapped"
                width: parent.width
                implicitHeight: 50
                text: "Ürünleri Göster"
                font.pixelSize: 17
                font.bold: true
                font.capitalization: Font.MixedCase
                Material.foreground: "white"
                Accessible.name: text
                background: Rectangle { radius: Theme.radius; color: show.down ? Qt.darker(Theme.leaf, 1.15) : Theme.leaf }
                onClicked: root.controller.selectedProductButtonTapped()
            }
            ActionButton {
                act: "clearFiltersButtonTapped"
                anchors.horizontalCenter: parent.horizontalCenter
                text: "Filtreyi Temizle"
                onClicked: root.controller.clearFiltersButtonTapped()
            }
            Rectangle { width: parent.width; height: 1; color: Theme.line }
            ActionButton {
                act: "showAllProducts"
                anchors.horizontalCenter: parent.horizontalCenter
                text: "Tüm Ürünleri Listele"
                onClicked: root.controller.showAllProducts()
            }
            ActionButton {
                act: "showSprayPrograms"
                anchors.horizontalCenter: parent.horizontalCenter
                text: "İlaçlama Programları"
                onClicked: root.controller.showSprayPrograms()
            }
        }
    }

    // The panel: the shown list with its search field.
    PView {
        id: panel
        model: root.controller.categoriesView
        anchors { fill: parent; margins: 12 }
        color: Theme.card
        border.color: Theme.line
        border.width: 1
        MouseArea { anchors.fill: parent } // the rows below take no touches while it is open

        Item {
            id: head
            anchors { left: parent.left; right: parent.right; top: parent.top; margins: 8 }
            height: Theme.touch
            PImageView {
                model: root.controller.searchImgView
                anchors { left: parent.left; verticalCenter: parent.verticalCenter }
                width: 24; height: 24
            }
            PTextField {
                model: root.controller.searchText
                anchors { left: parent.left; right: close.left; verticalCenter: parent.verticalCenter; leftMargin: 32; rightMargin: 8 }
                Accessible.name: "Listede ara"
            }
            PButton {
                id: close
                model: root.controller.closeButton
                anchors { right: parent.right; verticalCenter: parent.verticalCenter }
                implicitHeight: Theme.touch
                flat: true
                font.capitalization: Font.MixedCase
                Material.foreground: Theme.leaf
            }
        }
        ListView {
            objectName: "tableView"
            anchors { left: parent.left; right: parent.right; top: head.bottom; bottom: parent.bottom; topMargin: 4; bottomMargin: 4 }
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            model: root.controller.tableView.rows
            onWidthChanged: root.controller.tableView.size = Qt.size(width, height)
            delegate: ListCell { onTapped: (row) => root.controller.tableView.selectRow(row) }
        }
    }
}
