pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Catalogue

// One product: a gradient band with the picture and the names, the fact sheet, the documents, the
// sections (one open), the media strip and the call button. The measuring pages sit behind it all.
Rectangle {
    id: root
    required property ProductDetailViewController controller
    objectName: "ProductDetailViewController"
    color: Theme.page
    onWidthChanged: controller.viewWidth = width

    // One page per block, laid out at the width the sections get, never seen.
    Item {
        objectName: "measuringViews"
        x: 8; y: 0; width: parent.width - 16; height: 1
        opacity: 0
        z: -1
        Repeater {
            model: root.controller.measuringViews
            delegate: PWebView {
                required property var modelData
                model: modelData
                width: modelData.frameWidth
                height: 1
            }
        }
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
                width: parent.width
                height: 168
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
                    width: 104; height: 136; radius: Theme.radius
                    color: "white"
                    PImageView {
                        model: root.controller.productImg
                        anchors.fill: parent; anchors.margins: 6
                    }
                }
                Column {
                    anchors { left: pictureCard.right; right: parent.right; verticalCenter: parent.verticalCenter; leftMargin: 14; rightMargin: Theme.margin }
                    spacing: 6
                    PLabel {
                        model: root.controller.productSloganLbl
                        width: parent.width
                        color: "white"; font.pixelSize: 22; font.bold: true
                        textFormat: Text.StyledText
                        wrapMode: Text.WordWrap
                    }
                    PLabel {
                        model: root.controller.productNameLbl
                        width: parent.width
                        color: "white"; font.pixelSize: Theme.bodySize
                    }
                    PLabel { model: root.controller.productName2Lbl; width: parent.width; color: "white" }
                }
            }

            Rectangle {
                objectName: "factSheet"
                x: Theme.margin; width: parent.width - 2 * Theme.margin
                height: facts.height + 20
                radius: Theme.radius; color: Theme.card; border.color: Theme.line
                Column {
                    id: facts
                    x: 12; y: 10
                    width: parent.width - 24
                    spacing: 8
                    Repeater {
                        model: [["Ürün Grubu", root.controller.productGroupLbl], ["Etkili Madde", root.controller.productMatterLbl],
                                ["Formülasyon", root.controller.productFormulationLbl], ["Ambalaj", root.controller.productPackageLbl]]
                        delegate: Row {
                            id: fact
                            required property var modelData
                            spacing: 0
                            Text { width: 110; text: fact.modelData[0]; color: Theme.muted; font.pixelSize: Theme.captionSize + 1 }
                            PLabel {
                                model: fact.modelData[1]
                                width: facts.width - 110
                                wrapMode: Text.WordWrap
                                color: Theme.ink; font.pixelSize: Theme.captionSize + 1; font.bold: true
                            }
                        }
                    }
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
                clip: true
                spacing: 0
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
                            radius: doc.values.cornerRadius
                            border.width: Math.max(1, doc.values.borderWidth)
                            border.color: doc.values.borderColor
                            Image {
                                objectName: "imgView"
                                x: 10; anchors.verticalCenter: parent.verticalCenter
                                width: 28; height: 28
                                source: "qrc:/ekinora/images/" + doc.values.imgView + ".png"
                            }
                            Text {
                                objectName: "titleLabel"
                                x: 50; width: parent.width - 60; anchors.verticalCenter: parent.verticalCenter
                                text: doc.values.titleLabel; color: Theme.ink; font.pixelSize: Theme.bodySize
                                elide: Text.ElideRight
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
                        readonly property bool open: reuseIdentifier === "ProductDetail2AfterCell"
                        objectName: reuseIdentifier
                        width: parent.width; height: cellSize.height
                        color: Theme.card
                        border.color: Theme.line
                        Item {
                            objectName: section.open ? "headerContainerView" : "containerView"
                            width: parent.width; height: 56
                            Text {
                                objectName: "titleLbl"
                                x: 14; width: parent.width - 56; anchors.verticalCenter: parent.verticalCenter
                                text: section.values.titleLbl; font.pixelSize: Theme.bodySize; font.bold: true
                                color: section.open ? Theme.cerulean : Theme.ink
                                elide: Text.ElideRight
                            }
                            Text {
                                anchors { right: parent.right; rightMargin: 16; verticalCenter: parent.verticalCenter }
                                text: section.open ? "−" : "+"; font.pixelSize: 22; color: Theme.muted
                            }
                            MouseArea {
                                anchors.fill: parent
                                Accessible.role: Accessible.Button
                                Accessible.name: section.values.titleLbl
                                onClicked: section.view.selectRow(section.row)
                            }
                        }
                        PWebView {
                            objectName: "webView"
                            visible: section.open
                            model: section.open ? root.controller.openSectionWebView : null
                            x: 8; y: 56; width: parent.width - 16
                            height: section.values.webViewHeight || 0
                        }
                    }
                }
            }

            ListView {
                objectName: "collectionView"
                x: Theme.margin; width: parent.width - 2 * Theme.margin
                height: root.controller.collectionViewHeight.constant
                visible: height > 0
                orientation: ListView.Horizontal
                spacing: 8
                clip: true
                model: root.controller.collectionView.rows
                delegate: Rectangle {
                    id: media
                    required property var values
                    required property int row
                    required property size cellSize
                    required property UITableView view
                    objectName: "ProductDetailCollecitonViewCell"
                    width: cellSize.width; height: cellSize.height
                    radius: Theme.radius; color: "white"; border.color: Theme.line
                    clip: true
                    Image {
                        objectName: "imgView"
                        anchors.fill: parent; anchors.margins: 2
                        fillMode: Image.PreserveAspectCrop
                        asynchronous: true
                        source: media.values.imgView
                    }
                    Image {
                        objectName: "playImg"
                        visible: media.values.playImg
                        anchors.centerIn: parent
                        width: 44; height: 44
                        source: "qrc:/ekinora/images/play.png"
                    }
                    MouseArea { anchors.fill: parent; onClicked: media.view.selectRow(media.row) }
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
            width: 48; height: 48
            flat: true
            text: "✕"
            font.pixelSize: 22
            palette.buttonText: "white"
            Accessible.name: "Kapat"
            onClicked: root.controller.closeImageView()
        }
    }
}
