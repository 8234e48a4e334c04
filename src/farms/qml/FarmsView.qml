import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Farms

// The farm cards, with the adding cell after the last one, and the panels of one farm: the farm itself,
// its crop and its products.
Rectangle {
    id: root
    required property FarmsViewController controller
    objectName: "FarmsViewController"
    color: Theme.page

    // Above the list when it holds three farms: the list moves down to make room.
    PLabel {
        model: root.controller.lblProductAlert
        anchors { left: parent.left; right: parent.right; top: parent.top; leftMargin: 16; rightMargin: 16; topMargin: 8 }
        height: 24
        font.pixelSize: 13
        color: "#8a6d1c"
        verticalAlignment: Text.AlignBottom
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: 9
    }

    ListView {
        id: farms
        objectName: "collFarms"
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; top: parent.top; topMargin: root.controller.constCollTopMargin.constant }
        clip: true
        spacing: 16
        topMargin: 16
        bottomMargin: 16
        boundsBehavior: Flickable.StopAtBounds
        model: root.controller.collFarms.rows
        onWidthChanged: root.controller.collFarms.size = Qt.size(width, height)

        delegate: Item {
            id: slot
            required property string reuseIdentifier
            required property var values
            required property size cellSize
            required property int row
            readonly property var content: values
            readonly property size itemSize: cellSize
            width: farms.width
            height: itemSize.height

            // A farm.
            Rectangle {
                objectName: "FarmCell"
                property int row: slot.row
                visible: slot.reuseIdentifier === "FarmCell"
                x: (farms.width - width) / 2
                width: slot.itemSize.width
                height: slot.itemSize.height
                radius: slot.content.cornerRadius || 0
                clip: slot.content.clipsToBounds || false
                color: "#8fb95c"
                Accessible.role: Accessible.Button
                Accessible.name: "Tarla: " + (slot.content.lblFarm || "") + ", " + (slot.content.lblFarmSize || "")

                Image {
                    objectName: "imgBack"
                    anchors.fill: parent
                    fillMode: Image.PreserveAspectCrop
                    asynchronous: true
                    sourceSize: Qt.size(width * 2, height * 2)
                    source: slot.content.imgBackUrl ? slot.content.imgBackUrl
                          : slot.content.imgBack ? "qrc:/ekinora/images/" + slot.content.imgBack + ".png" : ""
                }
                // Shade on the left, so that white texts read on any picture.
                Rectangle {
                    anchors.fill: parent
                    gradient: Gradient {
                        orientation: Gradient.Horizontal
                        GradientStop { position: 0.0; color: "#99000000" }
                        GradientStop { position: 0.75; color: "#00000000" }
                    }
                }
                Column {
                    anchors { left: parent.left; top: parent.top; right: parent.right; margins: 16 }
                    spacing: 4
                    Text {
                        objectName: "lblFarm"
                        width: parent.width
                        text: slot.content.lblFarm || ""
                        color: "white"
                        font.pixelSize: 22
                        font.bold: true
                        elide: Text.ElideRight
                        style: Text.Raised; styleColor: "#40000000"
                    }
                    Text {
                        objectName: "lblFarmSize"
                        text: slot.content.lblFarmSize || ""
                        color: "white"
                        font.pixelSize: 15
                        style: Text.Raised; styleColor: "#40000000"
                    }
                    Item { width: 1; height: 8 }
                    Text {
                        objectName: "lblProducts"
                        width: parent.width * 0.8
                        text: slot.content.lblProducts || ""
                        color: "white"
                        font.pixelSize: 14
                        lineHeight: 1.15
                        maximumLineCount: 3
                        elide: Text.ElideRight
                        style: Text.Raised; styleColor: "#40000000"
                    }
                }
                MouseArea { anchors.fill: parent; onClicked: root.controller.collFarms.selectRow(slot.row) }
            }

            // The cell that adds a farm.
            Rectangle {
                objectName: "NewFarmCell"
                property int row: slot.row
                visible: slot.reuseIdentifier === "NewFarmCell"
                x: (farms.width - width) / 2
                width: slot.itemSize.width
                height: slot.itemSize.height
                radius: 3
                color: "white"
                border.color: Theme.leaf
                border.width: 1
                Accessible.role: Accessible.Button
                Accessible.name: "Yeni Tarla Ekle"
                Row {
                    anchors.centerIn: parent
                    spacing: 10
                    Text { text: "+"; color: Theme.leaf; font.pixelSize: 28; anchors.verticalCenter: parent.verticalCenter }
                    Text { text: "Yeni Tarla Ekle"; color: Theme.leaf; font.pixelSize: 17; font.bold: true; anchors.verticalCenter: parent.verticalCenter }
                }
                MouseArea { anchors.fill: parent; onClicked: root.controller.collFarms.selectRow(slot.row) }
            }
        }
    }

    // One farm: its crop, its size and its products, and what can be done with it.
    PView {
        model: root.controller.viewNewProduce
        anchors.fill: parent
        color: Theme.page
        MouseArea { anchors.fill: parent } // the list below takes no touches while the panel is open

        Flickable {
            anchors.fill: parent
            contentHeight: form.height + 32
            boundsBehavior: Flickable.StopAtBounds
            Column {
                id: form
                x: 16; y: 16
                width: parent.width - 32
                spacing: 10

                Item {
                    width: parent.width; height: 44
                    Text {
                        anchors { left: parent.left; verticalCenter: parent.verticalCenter }
                        text: "Tarla Bilgileri"
                        font.pixelSize: 20; font.bold: true
                        color: Theme.ink
                    }
                    ActionButton {
                        act: "removeNewProduceView"
                        onClicked: root.controller.removeNewProduceView()
                        anchors { right: parent.right; verticalCenter: parent.verticalCenter }
                        text: "Vazgeç"
                    }
                }
                Caption { text: "Ekili ürün" }
                Choice { width: parent.width; act: "openPlantsView"; onTriggered: root.controller.openPlantsView(); label: root.controller.lblFarm; purpose: "Ekili ürün" }
                Item { width: 1; height: 4 }
                Caption { text: "Tarla büyüklüğü (dekar)" }
                PTextField { model: root.controller.txtFarmSize; width: parent.width; Accessible.name: "Tarla büyüklüğü (dekar)" }
                Item { width: 1; height: 4 }
                Caption { text: "Kullandığınız zirai ürünler (en fazla 3)" }
                Choice { width: parent.width; act: "openProductView"; onTriggered: root.controller.openProductView(); label: root.controller.lblProduct; purpose: "Zirai ürünler" }
                Item { width: 1; height: 12 }
                FilledButton {
                    model: root.controller.btnNewProduce
                    width: parent.width
                }
                FilledButton {
                    model: root.controller.btnUpdateProduce
                    width: parent.width
                }
                PButton {
                    model: root.controller.btnDeleteProduce
                    width: parent.width
                    implicitHeight: 48
                    flat: true
                    font.pixelSize: 16
                    Material.foreground: "#d0342c"
                }
            }
        }
    }

    // The crops, two a row; the chosen one underlined in green.
    PView {
        model: root.controller.viewPlant
        anchors.fill: parent
        color: "#99000000"
        MouseArea { anchors.fill: parent }
        Rectangle {
            anchors { left: parent.left; right: parent.right; top: parent.top; margins: 16 }
            height: Math.min(parent.height - 32, plantsHeader.height + plants.height + 16)
            radius: 8
            color: "white"
            clip: true
            Item {
                id: plantsHeader
                width: parent.width; height: 52
                Text {
                    anchors { left: parent.left; leftMargin: 16; verticalCenter: parent.verticalCenter }
                    text: "Ekili Ürün"
                    font.pixelSize: 18; font.bold: true
                    color: Theme.ink
                }
                ActionButton {
                    act: "removePlantsView"
                    onClicked: root.controller.removePlantsView()
                    anchors { right: parent.right; rightMargin: 4; verticalCenter: parent.verticalCenter }
                    text: "Kapat"
                }
            }
            Flickable {
                id: plants
                objectName: "collPlants"
                anchors { top: plantsHeader.bottom; left: parent.left; right: parent.right }
                height: root.controller.constCollPlantHeight.constant
                contentHeight: grid.height
                clip: true
                boundsBehavior: Flickable.StopAtBounds
                onWidthChanged: root.controller.collPlants.size = Qt.size(width, height)
                Rectangle { width: grid.width; height: grid.height; color: "#e6e8e2" } // the lines between cells
                Grid {
                    id: grid
                    width: plants.width
                    columns: 2
                    rowSpacing: 1
                    columnSpacing: 1
                    Repeater {
                        model: root.controller.collPlants.rows
                        delegate: Rectangle {
                            id: plantCell
                            required property string reuseIdentifier
                            required property var values
                            required property size cellSize
                            required property int row
                            readonly property var content: values
                            objectName: reuseIdentifier
                            width: cellSize.width
                            height: cellSize.height
                            color: "white"
                            Accessible.role: Accessible.Button
                            Accessible.name: content.lblPlantName || ""
                            Text {
                                objectName: "lblPlantName"
                                anchors.centerIn: parent
                                width: parent.width - 16
                                horizontalAlignment: Text.AlignHCenter
                                elide: Text.ElideRight
                                text: plantCell.content.lblPlantName || ""
                                color: plantCell.content.textColor || Theme.ink
                                font.underline: plantCell.content.underline || false
                                font.pixelSize: 16
                            }
                            MouseArea { anchors.fill: parent; onClicked: root.controller.collPlants.selectRow(plantCell.row) }
                        }
                    }
                }
            }
        }
    }

    // The products, at most three chosen; the chosen ones underlined in green.
    PView {
        model: root.controller.viewProduct
        anchors.fill: parent
        color: "#99000000"
        MouseArea { anchors.fill: parent }
        Rectangle {
            anchors { fill: parent; margins: 16 }
            radius: 8
            color: "white"
            clip: true
            Item {
                id: productsHeader
                width: parent.width; height: 52
                Text {
                    anchors { left: parent.left; leftMargin: 16; verticalCenter: parent.verticalCenter }
                    text: "Zirai Ürünler"
                    font.pixelSize: 18; font.bold: true
                    color: Theme.ink
                }
                Caption {
                    anchors { right: parent.right; rightMargin: 16; verticalCenter: parent.verticalCenter }
                    text: "En fazla 3 ürün"
                }
            }
            ListView {
                id: products
                objectName: "tblProducts"
                anchors { top: productsHeader.bottom; left: parent.left; right: parent.right; bottom: productButtons.top }
                clip: true
                boundsBehavior: Flickable.StopAtBounds
                model: root.controller.tblProducts.rows
                onWidthChanged: root.controller.tblProducts.size = Qt.size(width, height)
                delegate: ListCell {
                    Accessible.role: Accessible.CheckBox
                    onTapped: (row) => root.controller.tblProducts.selectRow(row)
                }
            }
            Row {
                id: productButtons
                anchors { bottom: parent.bottom; right: parent.right; rightMargin: 8; bottomMargin: 4 }
                spacing: 4
                ActionButton { act: "removeProductView"; onClicked: root.controller.removeProductView(); text: "Vazgeç" }
                ActionButton { act: "acceptProductView"; onClicked: root.controller.acceptProductView(); text: "Tamam"; font.bold: true }
            }
        }
    }
}
