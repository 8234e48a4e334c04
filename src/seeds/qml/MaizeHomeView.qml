pragma ComponentBehavior: Bound

import QtQuick
import Ekinora.Widgets
import Ekinora.Seeds

// The maize range by product group: all hybrids, then silage, grain and early ones.
Rectangle {
    id: root
    required property MaizeHomeViewController controller
    objectName: "MaizeHomeViewController"
    color: Theme.page

    Column {
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: Theme.margin }
        spacing: 14
        Text {
            width: parent.width
            text: "Bölgenize ve amacınıza uygun mısır hibritini ürün grubuna göre inceleyin."
            wrapMode: Text.WordWrap
            color: Theme.ink; font.pixelSize: Theme.bodySize
        }
        Repeater {
            model: [["toAllButton", "Tüm Mısır Ürünleri", "#1e5286"], ["pg1", "Silajlık Mısır", "#78b930"],
                    ["pg2", "Danelik Mısır", "#e59f0e"], ["pg3", "Erkenci Mısır", "#0090c5"]]
            delegate: Rectangle {
                id: tile
                required property var modelData
                objectName: modelData[0]
                width: parent.width; height: 92
                radius: 10
                color: modelData[2]
                Accessible.role: Accessible.Button
                Accessible.name: modelData[1]
                Text {
                    anchors { left: parent.left; leftMargin: 20; verticalCenter: parent.verticalCenter }
                    text: tile.modelData[1]; color: "white"; font.pixelSize: 20; font.bold: true
                }
                Text {
                    anchors { right: parent.right; rightMargin: 20; verticalCenter: parent.verticalCenter }
                    text: "›"; color: "white"; font.pixelSize: 34
                }
                MouseArea {
                    anchors.fill: parent
                    onClicked: {
                        if (tile.modelData[0] === "toAllButton") root.controller.toAllButtonTapped()
                        else if (tile.modelData[0] === "pg1") root.controller.pg1Tapped()
                        else if (tile.modelData[0] === "pg2") root.controller.pg2Tapped()
                        else root.controller.pg3Tapped()
                    }
                }
            }
        }
    }
}
