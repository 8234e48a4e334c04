import QtQuick
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Farms

// The farm cards, with the adding cell after the last one, and the crop editor over them.
Rectangle {
    id: root
    required property FarmsViewController controller
    objectName: "FarmsViewController"
    color: Theme.page
    property Item cropEditorSlot: cropSlot

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
            required property UITableView view
            readonly property var content: values
            readonly property size itemSize: cellSize
            width: ListView.view.width
            height: itemSize.height

            // A farm.
            Rectangle {
                objectName: "FarmCell"
                property int row: slot.row
                visible: slot.reuseIdentifier === "FarmCell"
                x: (slot.width - width) / 2
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
                    sourceSize.width: width * 2
                    sourceSize.height: height * 2
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
                MouseArea { anchors.fill: parent; onClicked: slot.view.selectRow(slot.row) }
            }

            // The cell that adds a farm.
            Rectangle {
                objectName: "NewFarmCell"
                property int row: slot.row
                visible: slot.reuseIdentifier === "NewFarmCell"
                x: (slot.width - width) / 2
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
                MouseArea { anchors.fill: parent; onClicked: slot.view.selectRow(slot.row) }
            }
        }
    }

    // The crop editor: one farm, its crop and its products, over the list.
    Item { id: cropSlot; anchors.fill: parent }
}
