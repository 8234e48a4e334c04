import QtQuick
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Weather

// The coming days of the county: a card a day with its picture, the highs and lows and the rain.
Rectangle {
    id: root
    required property WeatherDetailViewController controller
    objectName: "WeatherDetailViewController"
    color: Theme.page

    PLabel {
        id: location
        model: root.controller.lblWeatherLocation
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: Theme.margin }
        font.pixelSize: Theme.headingSize
        font.bold: true
        color: Theme.ink
        elide: Text.ElideRight
    }

    ListView {
        id: days
        objectName: "collectionWeather"
        anchors { left: parent.left; right: parent.right; top: location.bottom; bottom: parent.bottom; topMargin: 8 }
        clip: true
        spacing: 12
        bottomMargin: 16
        boundsBehavior: Flickable.StopAtBounds
        model: root.controller.collectionWeather.rows
        onWidthChanged: root.controller.collectionWeather.size = Qt.size(width, height)

        delegate: Item {
            id: slot
            required property var values
            required property size cellSize
            required property int row
            required property UITableView view
            width: ListView.view.width
            height: cellSize.height

            Rectangle {
                objectName: "WeatherCell"
                x: (slot.ListView.view.width - width) / 2
                width: slot.cellSize.width
                height: slot.cellSize.height
                radius: slot.values.cornerRadius || 0
                clip: slot.values.clipsToBounds || false
                border.width: slot.values.borderWidth || 0
                border.color: Theme.cerulean
                color: Theme.card
                Accessible.role: Accessible.Button
                Accessible.name: (slot.values.labelDate || "") + ", " + (slot.values.labelTempMax || "")

                // The date on its own bordered strip.
                Rectangle {
                    objectName: "viewDate"
                    anchors { left: parent.left; right: parent.right; top: parent.top }
                    height: 32
                    radius: slot.values.cornerRadius || 0
                    border.width: slot.values.borderWidth || 0
                    border.color: Theme.cerulean
                    color: "#eaf5fa"
                    Text {
                        objectName: "labelDate"
                        anchors { fill: parent; leftMargin: 12; rightMargin: 12 }
                        verticalAlignment: Text.AlignVCenter
                        text: slot.values.labelDate || ""
                        color: Theme.ink
                        font.pixelSize: 15
                        font.bold: true
                        elide: Text.ElideRight
                    }
                }
                Image {
                    objectName: "imageCondition"
                    anchors { left: parent.left; leftMargin: 12; top: parent.top; topMargin: 40 }
                    width: 64; height: 64
                    sourceSize.width: 128
                    sourceSize.height: 128
                    asynchronous: true
                    source: slot.values.imageConditionUrl || ""
                }
                Row {
                    anchors { left: parent.left; leftMargin: 92; right: parent.right; rightMargin: 12; top: parent.top; topMargin: 44 }
                    spacing: 8
                    Column {
                        width: (parent.width - 8) / 2
                        spacing: 4
                        Text { objectName: "labelTempMax"; text: "En yüksek " + (slot.values.labelTempMax || ""); color: Theme.ink; font.pixelSize: 15 }
                        Text { objectName: "labelTempMin"; text: "En düşük " + (slot.values.labelTempMin || ""); color: Theme.muted; font.pixelSize: 15 }
                    }
                    Column {
                        width: (parent.width - 8) / 2
                        spacing: 4
                        Text { objectName: "labelRainChance"; text: "☂ " + (slot.values.labelRainChance || ""); color: Theme.cerulean; font.pixelSize: 15 }
                        Text { objectName: "labelRainSize"; text: slot.values.labelRainSize || ""; color: Theme.cerulean; font.pixelSize: 15 }
                    }
                }
                MouseArea { anchors.fill: parent; onClicked: slot.view.selectRow(slot.row) }
            }
        }
    }
}
