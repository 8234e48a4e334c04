import QtQuick
import QtQuick.Controls.Material
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Farms

// Lines with a qmllint disable reach the screen from a delegate or a loaded component: the engine
// resolves them, Qt 6.4's linter cannot follow them.

// One crop: its kind, its size and its products, with the list of kinds and the list of products
// over it. It lies in its host's view over the host's own content; its texts come from the host.
Item {
    id: root
    required property CropEditor controller

    // The crop itself and what can be done with it.
    PView {
        model: root.controller.viewNewProduce
        anchors.fill: parent
        color: Theme.page
        MouseArea { anchors.fill: parent } // what lies below takes no touches while the panel is open

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
                        text: root.controller.heading
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
                Caption { text: root.controller.plantCaption }
                Choice {
                    width: parent.width
                    act: "openPlantsView"
                    onTriggered: root.controller.openPlantsView()
                    label: root.controller.lblFarm
                    purpose: root.controller.plantPurpose
                    Accessible.name: root.controller.purposeWithValue ? purpose + ": " + root.controller.lblFarm.text : purpose
                }
                Item { width: 1; height: 4 }
                Caption { text: root.controller.sizeCaption; visible: text.length > 0 }
                PTextField {
                    id: size
                    model: root.controller.txtFarmSize
                    width: parent.width
                    Accessible.name: root.controller.sizePurpose.length > 0 ? root.controller.sizePurpose
                                     : size.placeholderText.length > 0 ? size.placeholderText : size.objectName
                }
                Item { width: 1; height: 4 }
                Caption { text: root.controller.productCaption }
                Choice {
                    width: parent.width
                    act: "openProductView"
                    onTriggered: root.controller.openProductView()
                    label: root.controller.lblProduct
                    purpose: root.controller.productPurpose
                    Accessible.name: root.controller.purposeWithValue ? purpose + ": " + root.controller.lblProduct.text : purpose
                }
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

    // The crop kinds, two a row; the chosen one underlined in green.
    PView {
        model: root.controller.viewPlant
        anchors.fill: parent
        color: Theme.shade
        MouseArea { anchors.fill: parent }
        Rectangle {
            // The list is as tall as its host settled (up to the screen less 64 and 50); the panel
            // moves up rather than cut it.
            anchors { left: parent.left; right: parent.right; leftMargin: 16; rightMargin: 16 }
            y: Math.max(0, Math.min(16, parent.height - height))
            height: plantsHeader.height + plants.height + 16
            radius: 8
            color: Theme.card
            clip: true
            Item {
                id: plantsHeader
                width: parent.width; height: 52
                Text {
                    anchors { left: parent.left; leftMargin: 16; verticalCenter: parent.verticalCenter }
                    text: root.controller.plantsHeading
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
                            required property UITableView view
                            readonly property var content: values
                            objectName: reuseIdentifier
                            width: cellSize.width
                            height: cellSize.height
                            color: Theme.card
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
                            MouseArea { anchors.fill: parent; onClicked: plantCell.view.selectRow(plantCell.row) }
                        }
                    }
                }
            }
        }
    }

    // The products, as many chosen as the host allows; the chosen ones underlined in green.
    PView {
        model: root.controller.viewProduct
        anchors.fill: parent
        color: Theme.shade
        MouseArea { anchors.fill: parent }
        Rectangle {
            anchors { fill: parent; margins: 16 }
            radius: 8
            color: Theme.card
            clip: true
            Column {
                id: productsHeader
                width: parent.width
                Item {
                    width: parent.width; height: 52
                    Text {
                        anchors { left: parent.left; leftMargin: 16; verticalCenter: parent.verticalCenter }
                        text: root.controller.productsHeading
                        font.pixelSize: 18; font.bold: true
                        color: Theme.ink
                    }
                }
                Caption {
                    x: 16
                    width: parent.width - 32
                    bottomPadding: 8
                    text: root.controller.productsHint
                    visible: text.length > 0
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
                delegate: Item {
                    id: productCell
                    required property string reuseIdentifier
                    required property var values
                    required property size cellSize
                    required property int row
                    required property UITableView view
                    readonly property var content: values
                    readonly property string name: content[root.controller.productTextControl] || "" // qmllint disable unqualified
                    objectName: reuseIdentifier
                    width: cellSize.width
                    height: cellSize.height
                    Accessible.role: Accessible.CheckBox
                    Accessible.name: name
                    Text {
                        objectName: root.controller.productTextName // qmllint disable unqualified
                        anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; leftMargin: Theme.margin; rightMargin: Theme.margin }
                        elide: Text.ElideRight
                        text: productCell.name
                        color: productCell.content.textColor || Theme.ink
                        font.underline: productCell.content.underline || false
                        font.pixelSize: Theme.bodySize
                    }
                    Rectangle {
                        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; leftMargin: Theme.margin }
                        height: 1
                        color: Theme.divider
                    }
                    MouseArea { anchors.fill: parent; onClicked: productCell.view.selectRow(productCell.row) }
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
