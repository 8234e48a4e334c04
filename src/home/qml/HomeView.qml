import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Home

// The farmer's home: today's weather card, the market and contact buttons, the farm cards, and the
// panels over them (the crop editor that adds a farm, the consent questions and notice).
Rectangle {
    id: root
    required property ViewController controller
    objectName: "ViewController"
    color: Theme.page

    property Item cropEditorSlot: cropSlot
    property Item consentSlot: consentHolder

    // The weather card's small captions, white on the card's green.
    component CardCaption: Text {
        color: "white"
        opacity: 0.85
        font.pixelSize: 13
    }
    Flickable {
        id: page
        anchors.fill: parent
        contentHeight: content.height + 24
        boundsBehavior: Flickable.StopAtBounds
        clip: true

        Column {
            id: content
            width: page.width
            topPadding: 16
            spacing: 12

            // Today's weather in the farmer's county.
            Rectangle {
                id: weather
                x: 16
                width: parent.width - 32
                height: 168
                radius: 12
                gradient: Gradient {
                    GradientStop { position: 0; color: "#8cc63f" }
                    GradientStop { position: 1; color: "#5d9a1f" }
                }
                // The card opens the week's weather.
                MouseArea { objectName: "openWeatherDetail"; anchors.fill: parent; onClicked: root.controller.openWeatherDetail() }

                PLabel {
                    model: root.controller.lblWeatherLocation
                    anchors { left: parent.left; top: parent.top; leftMargin: 16; topMargin: 14 }
                    width: parent.width - 150
                    color: "white"
                    font.pixelSize: 20
                    font.bold: true
                }
                PLabel {
                    model: root.controller.lblWeatherDate
                    anchors { right: parent.right; top: parent.top; rightMargin: 16; topMargin: 18 }
                    color: "white"
                    font.pixelSize: 14
                }
                PImageView {
                    id: icon
                    model: root.controller.imgWeatherCondition
                    anchors { left: parent.left; leftMargin: 12; top: parent.top; topMargin: 50 }
                    width: 88; height: 88
                    Accessible.name: "Hava durumu simgesi"
                }
                Row {
                    id: temperature
                    anchors { left: icon.right; leftMargin: 8; top: icon.top; topMargin: 4 }
                    PLabel {
                        model: root.controller.lblWeatherTemprature
                        color: "white"
                        font.pixelSize: 52
                        font.bold: true
                    }
                    Text { text: "°C"; color: "white"; font.pixelSize: 22; topPadding: 8 }
                }
                PLabel {
                    model: root.controller.lblWeatherCondition
                    anchors { left: temperature.left; top: temperature.bottom }
                    width: 130
                    color: "white"
                    font.pixelSize: 14
                }
                Column {
                    anchors { right: parent.right; rightMargin: 16; verticalCenter: icon.verticalCenter }
                    spacing: 10
                    Column {
                        CardCaption { text: "Yağış" }
                        Row {
                            spacing: 4
                            PLabel { model: root.controller.lblWeatherRain; color: "white"; font.pixelSize: 18; font.bold: true }
                            Text { text: "mm"; color: "white"; font.pixelSize: 14; anchors.baseline: parent.children[0].baseline }
                        }
                    }
                    Column {
                        CardCaption { text: "Rüzgar" }
                        Row {
                            spacing: 4
                            PLabel { model: root.controller.lblWeatherWind; color: "white"; font.pixelSize: 18; font.bold: true }
                            Text { text: "km/sa"; color: "white"; font.pixelSize: 14; anchors.baseline: parent.children[0].baseline }
                        }
                    }
                }
            }

            // The market prices and the regional contact.
            Row {
                x: 16
                spacing: 12
                PView {
                    model: root.controller.viewEvent
                    width: (content.width - 32 - 12) / 2
                    height: 52
                    radius: 8
                    color: "white"
                    Text {
                        anchors.centerIn: parent
                        text: "Tarım Borsası"
                        color: Theme.ink
                        font.pixelSize: 16
                        font.bold: true
                    }
                    MouseArea {
                        objectName: "openEventView"
                        anchors.fill: parent
                        onClicked: root.controller.openEventView()
                        Accessible.role: Accessible.Button
                        Accessible.name: "Tarım Borsası"
                    }
                }
                MainButton {
                    act: "callPerson"
                    onClicked: root.controller.callPerson()
                    width: (content.width - 32 - 12) / 2
                    height: 52
                    text: "Yetkiliyi Ara"
                    fill: Theme.cerulean
                    corner: 8
                    font.pixelSize: 16
                }
            }

            Text {
                x: 16
                text: "Tarlalarım"
                color: Theme.ink
                font.pixelSize: 18
                font.bold: true
            }

            // The note at the limit stands in the space the list moves down by.
            Item {
                width: parent.width
                height: root.controller.constCollTopMargin.constant
                visible: height > 0
                PLabel {
                    model: root.controller.lblProductAlert
                    anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; leftMargin: 16; rightMargin: 16 }
                    color: "#c0392b"
                    font.pixelSize: 14
                    wrapMode: Text.WordWrap
                }
            }

            // The farm cards and the card for adding one.
            Item {
                id: farms
                objectName: "collFarms"
                width: parent.width
                height: farmColumn.height + 32 // the section's insets of 16 above and below
                visible: !root.controller.collFarms.hidden
                onWidthChanged: root.controller.collFarms.size = Qt.size(width, height)

                Column {
                    id: farmColumn
                    x: 16
                    y: 16
                    spacing: 16
                    Repeater {
                        model: root.controller.collFarms.rows
                        delegate: Item {
                            id: cell
                            required property string reuseIdentifier
                            required property var values
                            required property size cellSize
                            required property int row
                            required property int section
                            required property UITableView view
                            readonly property var content: values
                            objectName: reuseIdentifier
                            width: cellSize.width
                            height: cellSize.height
                            Accessible.role: Accessible.Button
                            Accessible.name: content.reuseIdentifier === "FarmCell" ? content.lblFarm : "Tarla Ekle"

                            // A farm: its picture, crop and present period.
                            Rectangle {
                                anchors.fill: parent
                                visible: cell.content.reuseIdentifier === "FarmCell"
                                radius: cell.content.cornerRadius || 0
                                clip: cell.content.clipsToBounds || false
                                color: "#dfe8d5"
                                Image {
                                    objectName: "imgBack"
                                    anchors.fill: parent
                                    asynchronous: true
                                    fillMode: Image.PreserveAspectCrop
                                    sourceSize.width: 716
                                    source: cell.content.imageUrl ? cell.content.imageUrl
                                          : cell.content.image ? "qrc:/ekinora/images/" + cell.content.image + ".png" : ""
                                }
                                Rectangle {
                                    anchors.fill: parent
                                    gradient: Gradient {
                                        orientation: Gradient.Horizontal
                                        GradientStop { position: 0; color: "#a0000000" }
                                        GradientStop { position: 0.75; color: "#00000000" }
                                    }
                                }
                                Column {
                                    anchors { left: parent.left; bottom: parent.bottom; leftMargin: 16; bottomMargin: 16 }
                                    width: parent.width - 32
                                    spacing: 4
                                    Text {
                                        objectName: "lblFarm"
                                        text: cell.content.lblFarm || ""
                                        color: "white"
                                        font.pixelSize: 24
                                        font.bold: true
                                        width: parent.width
                                        elide: Text.ElideRight
                                    }
                                    Text {
                                        objectName: "lblPeriod"
                                        text: cell.content.lblPeriod || ""
                                        visible: text.length > 0
                                        color: "white"
                                        font.pixelSize: 15
                                        width: parent.width
                                        elide: Text.ElideRight
                                    }
                                }
                            }
                            // The card for adding a farm.
                            Rectangle {
                                anchors.fill: parent
                                visible: cell.content.reuseIdentifier === "NewFarmCell"
                                radius: 8
                                color: "white"
                                border.color: Theme.leaf
                                border.width: 1.5
                                Text {
                                    anchors.centerIn: parent
                                    text: "+  Tarla Ekle"
                                    color: Theme.leaf
                                    font.pixelSize: 17
                                    font.bold: true
                                }
                            }
                            MouseArea { anchors.fill: parent; onClicked: cell.view.selectRow(cell.row) }
                        }
                    }
                }
            }
        }
    }

    // The panel that adds a farm, and the consent questions and notice over it.
    Item { id: cropSlot; anchors.fill: parent }
    Item { id: consentHolder; anchors.fill: parent }

    // The splash lies over the whole window, the bars included, until it is taken away.
    PImageView {
        model: root.controller.imgLoading
        parent: root.Window.window ? (root.Window.window.contentItem as Item) : (root as Item)
        x: 0; y: 0
        width: parent ? parent.width : 0
        height: parent ? parent.height : 0
        z: 2000
        fillMode: Image.PreserveAspectCrop
        MouseArea { anchors.fill: parent }
        Accessible.name: "Ekinora"
    }
}
