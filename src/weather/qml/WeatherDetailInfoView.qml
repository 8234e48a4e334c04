import QtQuick
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Weather

// A day: the place and date, the 24 hours in a strip, and the chosen hour's values (favourites, or all
// of them with their stars while choosing).
Rectangle {
    id: root
    required property WeatherDetailInfoViewController controller
    objectName: "WeatherDetailInfoViewController"
    color: Theme.page

    Column {
        id: head
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: Theme.margin }
        spacing: 4
        PLabel {
            model: root.controller.lblWeatherLocation
            width: parent.width
            font.pixelSize: Theme.headingSize
            font.bold: true
            color: Theme.ink
            elide: Text.ElideRight
        }
        PLabel {
            model: root.controller.lblWeatherDate
            width: parent.width
            font.pixelSize: Theme.bodySize
            color: Theme.muted
        }
    }

    ListView {
        id: hours
        objectName: "collectionWeatherHours"
        anchors { left: parent.left; right: parent.right; top: head.bottom; topMargin: 12 }
        height: Theme.touch
        orientation: ListView.Horizontal
        spacing: 8
        leftMargin: 8
        rightMargin: 8
        clip: true
        model: root.controller.collectionWeatherHours.rows
        onWidthChanged: root.controller.collectionWeatherHours.size = Qt.size(width, height)
        onMovementEnded: {
            var cells = []
            for (var i = 0; i < count; ++i) {
                var item = itemAtIndex(i)
                if (item && item.x + item.width > contentX && item.x < contentX + width)
                    cells[cells.length] = { "item": i, "centerX": item.x + item.width / 2 }
            }
            root.controller.scrollViewDidEndDecelerating(cells, width, contentX)
        }
        NumberAnimation { id: hourScroll; target: hours; property: "contentX"; duration: 300; easing.type: Easing.InOutQuad }
        // The chosen hour to the middle: the list finds the place, the animation goes there.
        function centre(item: int, animated: bool) {
            const from = contentX
            positionViewAtIndex(item, ListView.Center)
            if (!animated) return
            hourScroll.to = contentX
            contentX = from
            hourScroll.restart()
        }
        Component.onCompleted: root.controller.scrollHourToCentre.connect(centre)
        delegate: Item {
            id: hour
            required property var values
            required property size cellSize
            required property int row
            required property UITableView view
            objectName: "WeatherHourCell"
            width: cellSize.width
            height: ListView.view.height
            Rectangle {
                anchors.fill: parent
                radius: 3
                color: hour.values.chosen ? "#e3f1f8" : "transparent"
            }
            Text {
                objectName: "labelHour"
                anchors.centerIn: parent
                text: hour.values.labelHour || ""
                color: hour.values.textColor || Theme.ink
                font.pixelSize: hour.values.fontSize || 14
                font.bold: hour.values.chosen || false
            }
            MouseArea { anchors.fill: parent; onClicked: hour.view.selectRow(hour.row) }
        }
    }

    ListView {
        id: valueList
        objectName: "collectionWeather"
        anchors { left: parent.left; right: parent.right; top: hours.bottom; bottom: favButton.top; topMargin: 12; bottomMargin: 8 }
        clip: true
        spacing: 16
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
            height: Math.max(cellSize.height, Theme.touch)
            Rectangle {
                objectName: "WeatherCell"
                x: (slot.ListView.view.width - width) / 2
                width: slot.cellSize.width
                height: parent.height
                radius: slot.values.cornerRadius || 0
                border.width: slot.values.borderWidth || 0
                border.color: Theme.cerulean
                clip: slot.values.clipsToBounds || false
                color: Theme.card
                Image {
                    objectName: "imageCondition"
                    anchors { left: parent.left; leftMargin: 8; verticalCenter: parent.verticalCenter }
                    width: 32; height: 32
                    sourceSize.width: 64
                    sourceSize.height: 64
                    visible: source != ""
                    source: slot.values.imageConditionUrl || ""
                }
                WeatherIcon {
                    anchors { left: parent.left; leftMargin: 8; verticalCenter: parent.verticalCenter }
                    width: 32
                    name: slot.values.imageCondition || ""
                }
                Text {
                    objectName: "labelInfo"
                    anchors { left: parent.left; leftMargin: 48; right: valueText.left; rightMargin: 8; verticalCenter: parent.verticalCenter }
                    text: slot.values.labelInfo || ""
                    color: Theme.ink
                    font.pixelSize: 15
                    elide: Text.ElideRight
                }
                Text {
                    id: valueText
                    objectName: "labelInfoValue"
                    anchors { right: fav.left; rightMargin: 8; verticalCenter: parent.verticalCenter }
                    text: slot.values.labelInfoValue || ""
                    color: Theme.ink
                    font.pixelSize: 15
                    font.bold: true
                }
                WeatherIcon {
                    id: fav
                    objectName: "imageFav"
                    anchors { right: parent.right; rightMargin: 8; verticalCenter: parent.verticalCenter }
                    width: 32
                    name: slot.values.imageFav || ""
                    Accessible.name: name
                }
                MouseArea { anchors.fill: parent; onClicked: slot.view.selectRow(slot.row) }
            }
        }
    }

    // Shown when no favourite is left.
    PView {
        model: root.controller.viewEmptyScreen
        anchors.fill: valueList
        color: "transparent"
        Text {
            anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; margins: 32 }
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
            text: "Favori hava durumu bilgisi seçilmedi. Seçmek için DETAYLAR'a dokunun."
            color: Theme.muted
            font.pixelSize: Theme.bodySize
        }
    }

    FilledButton {
        id: favButton
        model: root.controller.btnFavList
        fill: Theme.cerulean
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: Theme.margin }
    }
}
