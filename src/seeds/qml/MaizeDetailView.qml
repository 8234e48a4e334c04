pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Seeds

// One hybrid: the band with picture and names over the range's background, the documents, the call
// button and the sections, the open one a stack of cards.
Rectangle {
    id: root
    required property MaizeDetailViewController controller
    objectName: "MaizeDetailViewController"
    color: Theme.page

    PImageView {
        model: root.controller.backgroundImg
        anchors.fill: parent
        fillMode: Image.PreserveAspectCrop
        opacity: 0.25
    }

    Flickable {
        id: page
        anchors.fill: parent
        contentHeight: content.height + 24
        clip: true
        boundsBehavior: Flickable.StopAtBounds

        Column {
            id: content
            width: page.width
            spacing: 12

            Item {
                objectName: "topView"
                width: parent.width; height: 168
                Rectangle {
                    anchors.fill: parent
                    gradient: Gradient {
                        orientation: Gradient.Horizontal
                        GradientStop { position: 0; color: Qt.rgba(0, 0.5647058823529412, 0.7725490196078432, 1) }
                        GradientStop { position: 1; color: Qt.rgba(0.47058823529411764, 0.7254901960784313, 0.18823529411764706, 1) }
                    }
                }
                Rectangle {
                    id: pictureCard
                    x: Theme.margin; anchors.verticalCenter: parent.verticalCenter
                    width: 104; height: 136; radius: Theme.radius; color: "white"
                    PImageView { model: root.controller.productImg; anchors.fill: parent; anchors.margins: 6 }
                }
                Column {
                    anchors { left: pictureCard.right; right: parent.right; verticalCenter: parent.verticalCenter; leftMargin: 14; rightMargin: Theme.margin }
                    spacing: 6
                    PLabel { model: root.controller.productSloganLbl; width: parent.width; color: "white"; font.pixelSize: 22; font.bold: true; wrapMode: Text.WordWrap }
                    PLabel { model: root.controller.productNameLbl; width: parent.width; color: "white"; font.pixelSize: Theme.bodySize }
                    PLabel { model: root.controller.groupNameLbl; width: parent.width; color: "white"; font.pixelSize: Theme.captionSize + 1 }
                }
            }

            FilledButton {
                objectName: "callButton"
                x: Theme.margin; width: parent.width - 2 * Theme.margin
                text: "Bölge Yetkilisini Ara"
                fill: Theme.cerulean
                onClicked: root.controller.callButton()
            }

            Column {
                objectName: "tableView1"
                x: Theme.margin; width: parent.width - 2 * Theme.margin
                height: root.controller.tableView1Height.constant
                onWidthChanged: root.controller.tableView1.size = Qt.size(width, 0)
                Repeater {
                    model: root.controller.tableView1.rows
                    delegate: Item {
                        id: doc
                        required property var values
                        required property int row
                        required property size cellSize
                        required property UITableView view
                        objectName: "tableView1Cell"
                        width: parent.width; height: cellSize.height
                        Accessible.role: Accessible.Button
                        Accessible.name: values.titleLabel
                        Rectangle {
                            objectName: "containerView"
                            anchors.fill: parent; anchors.bottomMargin: 6
                            radius: 10; border.width: 1; border.color: "#1e5286"
                            Image { x: 10; anchors.verticalCenter: parent.verticalCenter; width: 28; height: 28; source: "qrc:/ekinora/images/" + doc.values.imgView + ".png" }
                            Text {
                                objectName: "titleLabel"
                                x: 50; width: parent.width - 60; anchors.verticalCenter: parent.verticalCenter
                                text: doc.values.titleLabel; color: Theme.ink; font.pixelSize: Theme.bodySize; elide: Text.ElideRight
                            }
                        }
                        MouseArea { anchors.fill: parent; onClicked: doc.view.selectRow(doc.row) }
                    }
                }
            }

            Column {
                objectName: "tableView2"
                x: Theme.margin; width: parent.width - 2 * Theme.margin
                height: Math.max(root.controller.tableView2Height.constant, implicitHeight)
                onWidthChanged: root.controller.tableView2.size = Qt.size(width, 0)
                Repeater {
                    model: root.controller.tableView2.rows
                    delegate: Rectangle {
                        id: section
                        required property string reuseIdentifier
                        required property var values
                        required property int row
                        required property size cellSize
                        required property UITableView view
                        readonly property bool open: reuseIdentifier === "MaizeProductDetailAfter2Cell"
                        objectName: reuseIdentifier
                        width: parent.width; height: cellSize.height
                        color: Theme.card; border.color: Theme.line
                        Item {
                            objectName: "containerView"
                            width: parent.width; height: 56
                            Text {
                                objectName: "title"
                                x: 14; width: parent.width - 56; anchors.verticalCenter: parent.verticalCenter
                                text: section.values.title; font.pixelSize: Theme.bodySize; font.bold: true
                                color: section.open ? Theme.cerulean : Theme.ink; elide: Text.ElideRight
                            }
                            Text { anchors { right: parent.right; rightMargin: 16; verticalCenter: parent.verticalCenter }
                                   text: section.open ? "−" : "+"; font.pixelSize: 22; color: Theme.muted }
                            MouseArea {
                                anchors.fill: parent
                                Accessible.role: Accessible.Button
                                Accessible.name: section.values.title
                                onClicked: section.view.selectRow(section.row)
                            }
                        }
                        Column {
                            objectName: "stackView"
                            visible: section.open
                            x: 8; y: 56; width: parent.width - 16
                            Repeater {
                                model: section.open ? section.values.stackView : []
                                delegate: Item {
                                    id: card
                                    required property var modelData
                                    readonly property bool picture: modelData.kind === "MaizeDetailAfter2Img"
                                    objectName: modelData.kind
                                    visible: !modelData.hidden
                                    width: parent.width
                                    height: visible ? (picture ? 190 : 132) : 0
                                    Image {
                                        objectName: "imgView"
                                        visible: card.picture
                                        x: 0; y: 4; width: parent.width; height: 182
                                        fillMode: Image.PreserveAspectCrop
                                        clip: true
                                        asynchronous: true
                                        source: card.picture ? card.modelData.imgView : ""
                                    }
                                    Image {
                                        objectName: "imgView"
                                        visible: !card.picture && !card.modelData.imgViewHidden
                                        x: 4; y: 8; width: 96; height: 72
                                        fillMode: Image.PreserveAspectFit
                                        asynchronous: true
                                        source: card.picture ? "" : card.modelData.imgView
                                    }
                                    Column {
                                        visible: !card.picture
                                        x: card.modelData.imgViewHidden ? 4 : 110
                                        y: 8; width: parent.width - x - 4
                                        spacing: 4
                                        Text { objectName: "title"; visible: !card.modelData.titleHidden; width: parent.width; text: card.modelData.title
                                               font.pixelSize: Theme.bodySize; font.bold: true; color: Theme.ink; wrapMode: Text.WordWrap }
                                        Text { objectName: "canolaTitle"; visible: card.modelData.canolaTitle.length > 0; width: parent.width
                                               text: card.modelData.canolaTitle; font.pixelSize: Theme.bodySize; font.bold: true; color: Theme.cerulean }
                                        Text { objectName: "detail"; width: parent.width; text: card.modelData.detail; wrapMode: Text.WordWrap
                                               maximumLineCount: 4; elide: Text.ElideRight; font.pixelSize: Theme.captionSize + 1; color: Theme.ink }
                                    }
                                }
                            }
                        }
                    }
                }
            }
        }
    }

    Rectangle {
        objectName: "fullImageView"
        anchors.fill: parent
        visible: !root.controller.fullImageView.hidden
        color: "#ee000000"
        MouseArea { anchors.fill: parent }
        PImageView { model: root.controller.largeImageView; anchors.fill: parent; anchors.margins: 12 }
        Button {
            objectName: "closeImageButton"
            anchors { right: parent.right; top: parent.top; margins: 8 }
            width: 48; height: 48; flat: true
            text: "✕"; font.pixelSize: 22; palette.buttonText: "white"
            Accessible.name: "Kapat"
            onClicked: root.controller.closeImageView()
        }
    }
}
