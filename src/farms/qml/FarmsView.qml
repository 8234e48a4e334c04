import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import "qrc:/ekinora/platform/qml"

// The farm cards, with the adding cell after the last one, and the panels of one farm: the farm itself,
// its crop and its products.
Rectangle {
    id: root
    objectName: "FarmsViewController"
    color: "#f2f4ef"

    readonly property color leaf: "#78b930"
    readonly property color ink: "#333333"

    component ActionButton: Button {
        font.capitalization: Font.MixedCase
        property string act: ""
        objectName: act
        implicitHeight: 48
        font.pixelSize: 16
        flat: true
        palette.buttonText: root.leaf
        Material.foreground: root.leaf
        Accessible.name: text
        onClicked: controller[act]()
    }
    component Caption: Text {
        color: "#7a7a7a"
        font.pixelSize: 13
    }
    // A chosen value that opens its panel when tapped.
    component Choice: Rectangle {
        id: choice
        property string act: ""
        property alias label: labelItem.model
        property string purpose: ""
        objectName: act
        width: parent.width
        height: Math.max(48, labelItem.implicitHeight + 24)
        radius: 6
        color: "white"
        border.color: "#d6d9d2"
        Accessible.role: Accessible.Button
        Accessible.name: purpose + ": " + labelItem.text
        PLabel {
            id: labelItem
            anchors { left: parent.left; right: arrow.left; verticalCenter: parent.verticalCenter; leftMargin: 12; rightMargin: 8 }
            font.pixelSize: 16
            color: root.ink
        }
        Text {
            id: arrow
            anchors { right: parent.right; verticalCenter: parent.verticalCenter; rightMargin: 12 }
            text: "›"
            font.pixelSize: 24
            color: "#9b9b9b"
        }
        MouseArea { anchors.fill: parent; onClicked: controller[choice.act]() }
    }

    // Above the list when it holds three farms: the list moves down to make room.
    PLabel {
        model: lblProductAlert
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
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; top: parent.top; topMargin: constCollTopMargin.constant }
        clip: true
        spacing: 16
        topMargin: 16
        bottomMargin: 16
        boundsBehavior: Flickable.StopAtBounds
        property int revision: collFarms.revision
        model: { revision; return controller.numberOfItemsInSection("collFarms", 0) }

        delegate: Item {
            id: slot
            property int row: index
            property var content: { farms.revision; return controller.cellForItem("collFarms", index) }
            property size itemSize: { farms.revision; return controller.sizeForItem("collFarms", index, farms.width) }
            width: farms.width
            height: itemSize.height

            // A farm.
            Rectangle {
                objectName: "FarmCell"
                property int row: slot.row
                visible: slot.content.reuseIdentifier === "FarmCell"
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
                MouseArea { anchors.fill: parent; onClicked: controller.didSelectItem("collFarms", slot.row) }
            }

            // The cell that adds a farm.
            Rectangle {
                objectName: "NewFarmCell"
                property int row: slot.row
                visible: slot.content.reuseIdentifier === "NewFarmCell"
                x: (farms.width - width) / 2
                width: slot.itemSize.width
                height: slot.itemSize.height
                radius: 3
                color: "white"
                border.color: root.leaf
                border.width: 1
                Accessible.role: Accessible.Button
                Accessible.name: "Yeni Tarla Ekle"
                Row {
                    anchors.centerIn: parent
                    spacing: 10
                    Text { text: "+"; color: root.leaf; font.pixelSize: 28; anchors.verticalCenter: parent.verticalCenter }
                    Text { text: "Yeni Tarla Ekle"; color: root.leaf; font.pixelSize: 17; font.bold: true; anchors.verticalCenter: parent.verticalCenter }
                }
                MouseArea { anchors.fill: parent; onClicked: controller.didSelectItem("collFarms", slot.row) }
            }
        }
    }

    // One farm: its crop, its size and its products, and what can be done with it.
    PView {
        model: viewNewProduce
        anchors.fill: parent
        color: "#f2f4ef"
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
                        color: root.ink
                    }
                    ActionButton {
                        act: "removeNewProduceView"
                        anchors { right: parent.right; verticalCenter: parent.verticalCenter }
                        text: "Vazgeç"
                    }
                }
                Caption { text: "Ekili ürün" }
                Choice { act: "openPlantsView"; label: lblFarm; purpose: "Ekili ürün" }
                Item { width: 1; height: 4 }
                Caption { text: "Tarla büyüklüğü (dekar)" }
                PTextField { model: txtFarmSize; width: parent.width; Accessible.name: "Tarla büyüklüğü (dekar)" }
                Item { width: 1; height: 4 }
                Caption { text: "Kullandığınız zirai ürünler (en fazla 3)" }
                Choice { act: "openProductView"; label: lblProduct; purpose: "Zirai ürünler" }
                Item { width: 1; height: 12 }
                PButton {
                    model: btnNewProduce
                    width: parent.width
                    implicitHeight: 50
                    font.pixelSize: 17; font.bold: true
                    Material.foreground: "white"
                    background: Rectangle { radius: 6; color: parent.down ? Qt.darker(root.leaf, 1.15) : root.leaf }
                }
                PButton {
                    model: btnUpdateProduce
                    width: parent.width
                    implicitHeight: 50
                    font.pixelSize: 17; font.bold: true
                    Material.foreground: "white"
                    background: Rectangle { radius: 6; color: parent.down ? Qt.darker(root.leaf, 1.15) : root.leaf }
                }
                PButton {
                    model: btnDeleteProduce
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
        model: viewPlant
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
                    color: root.ink
                }
                ActionButton {
                    act: "removePlantsView"
                    anchors { right: parent.right; rightMargin: 4; verticalCenter: parent.verticalCenter }
                    text: "Kapat"
                }
            }
            Flickable {
                id: plants
                objectName: "collPlants"
                anchors { top: plantsHeader.bottom; left: parent.left; right: parent.right }
                height: constCollPlantHeight.constant
                contentHeight: grid.height
                clip: true
                boundsBehavior: Flickable.StopAtBounds
                property int revision: collPlants.revision
                Rectangle { width: grid.width; height: grid.height; color: "#e6e8e2" } // the lines between cells
                Grid {
                    id: grid
                    width: plants.width
                    columns: 2
                    rowSpacing: 1
                    columnSpacing: 1
                    Repeater {
                        model: { plants.revision; return controller.numberOfItemsInSection("collPlants", 0) }
                        delegate: Rectangle {
                            id: plantCell
                            objectName: "PlantCell"
                            property int row: index
                            property var content: { plants.revision; return controller.cellForItem("collPlants", index) }
                            property size itemSize: controller.sizeForItem("collPlants", index, plants.width)
                            width: itemSize.width
                            height: itemSize.height
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
                                color: plantCell.content.textColor || root.ink
                                font.underline: plantCell.content.underline || false
                                font.pixelSize: 16
                            }
                            MouseArea { anchors.fill: parent; onClicked: controller.didSelectItem("collPlants", plantCell.row) }
                        }
                    }
                }
            }
        }
    }

    // The products, at most three chosen; the chosen ones underlined in green.
    PView {
        model: viewProduct
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
                    color: root.ink
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
                property int revision: tblProducts.revision
                model: { revision; return controller.numberOfItemsInSection("tblProducts", 0) }
                delegate: Item {
                    id: productCell
                    objectName: "ProductCell"
                    property int row: index
                    property var content: { products.revision; return controller.cellForItem("tblProducts", index) }
                    width: products.width
                    height: controller.sizeForItem("tblProducts", index, products.width).height
                    Accessible.role: Accessible.CheckBox
                    Accessible.name: content.textLabel || ""
                    Text {
                        objectName: "textLabel"
                        anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; leftMargin: 16; rightMargin: 16 }
                        elide: Text.ElideRight
                        text: productCell.content.textLabel || ""
                        color: productCell.content.textColor || root.ink
                        font.underline: productCell.content.underline || false
                        font.pixelSize: 16
                    }
                    Rectangle { anchors { left: parent.left; right: parent.right; bottom: parent.bottom; leftMargin: 16 } height: 1; color: "#ececec" }
                    MouseArea { anchors.fill: parent; onClicked: controller.didSelectItem("tblProducts", productCell.row) }
                }
            }
            Row {
                id: productButtons
                anchors { bottom: parent.bottom; right: parent.right; rightMargin: 8; bottomMargin: 4 }
                spacing: 4
                ActionButton { act: "removeProductView"; text: "Vazgeç" }
                ActionButton { act: "acceptProductView"; text: "Tamam"; font.bold: true }
            }
        }
    }
}
