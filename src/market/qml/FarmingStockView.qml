import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Market

// The two price sources as a two-tab picture, the product-group filter and the location switch over
// the price list.
Rectangle {
    id: root
    required property FarmingStockViewController controller
    objectName: "FarmingStockViewController"
    color: Theme.page

    Column {
        id: head
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 12 }
        spacing: 10

        Item {
            width: parent.width
            height: width * 80 / 716
            PImageView {
                model: root.controller.imgSegment
                anchors.fill: parent
            }
            Row {
                anchors.fill: parent
                PButton {
                    model: root.controller.btnStockH
                    width: parent.width / 2; height: parent.height
                    background: Item {}
                    contentItem: Item {}
                }
                PButton {
                    model: root.controller.btnStockB
                    width: parent.width / 2; height: parent.height
                    background: Item {}
                    contentItem: Item {}
                }
            }
        }
        Row {
            width: parent.width
            spacing: 10
            PButton {
                id: filter
                model: root.controller.btnFilter
                width: parent.width - place.width - 10
                implicitHeight: 48
                flat: true
                leftPadding: 12
                rightPadding: 32
                background: Rectangle { color: "white"; radius: 3; border.width: 1; border.color: Theme.cerulean }
                contentItem: Text {
                    text: filter.text
                    color: Theme.ink
                    font.pixelSize: 15
                    elide: Text.ElideRight
                    verticalAlignment: Text.AlignVCenter
                }
                Accessible.name: "Ürün grubu: " + text
                Text {
                    text: "▾"
                    color: Theme.cerulean
                    font.pixelSize: 18
                    anchors { right: parent.right; rightMargin: 10; verticalCenter: parent.verticalCenter }
                    rotation: root.controller.dropDownMenu && root.controller.dropDownMenu.senderImageFlipped ? 180 : 0
                }
            }
            Row {
                id: place
                height: 48
                spacing: 2
                Text {
                    anchors.verticalCenter: parent.verticalCenter
                    text: "Tüm Konumlar"
                    color: Theme.ink
                    font.pixelSize: Theme.captionSize
                }
                Switch {
                    objectName: "switchLocation"
                    anchors.verticalCenter: parent.verticalCenter
                    checked: root.controller.switchLocation.on
                    Material.accent: Theme.leaf
                    Accessible.name: "Tüm konumlar"
                    onToggled: root.controller.switchLocation.toggle(checked)
                }
            }
        }
    }

    ListView {
        id: stocks
        objectName: "tblStocks"
        visible: !root.controller.tblStocks.hidden
        anchors { left: parent.left; right: parent.right; top: head.bottom; bottom: parent.bottom; topMargin: 6 }
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        bottomMargin: 8
        model: root.controller.tblStocks.rows
        onWidthChanged: root.controller.tblStocks.size = Qt.size(width, height)
        delegate: StockRow { onTapped: (row) => root.controller.tblStocks.selectRow(row) }
        Connections {
            target: root.controller
            function onScrollToTop() { stocks.positionViewAtBeginning() }
        }
    }

    DropDownListView {
        anchors.fill: parent
        model: root.controller.dropDownMenu
        senders: [filter]
    }
}
