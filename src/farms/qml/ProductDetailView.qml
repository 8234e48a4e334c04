import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Farms

// Lines with a qmllint disable reach the screen from a delegate or a loaded component: the engine
// resolves them, Qt 6.4's linter cannot follow them.

// The crop calendar: the banner with its shade, the title between the close and edit buttons, the
// chain of periods, and the three pest lists, each beside its upright name.
Rectangle {
    id: root
    required property ProductDetailViewController controller
    objectName: "ProductDetailViewController"
    color: Theme.page

    readonly property real header: 300

    // Under the banner, so that the white names read before a picture comes.
    Rectangle { width: parent.width; height: root.header; color: "#3a4a2c" }
    PImageView {
        model: root.controller.imgBannerCrop
        width: parent.width
        height: 200
        fillMode: Image.PreserveAspectCrop
        clip: true
        Accessible.name: "Ürün görseli"
    }
    PView {
        model: root.controller.viewBannerShade
        width: parent.width
        height: root.controller.constBannerShadeHeight.constant
    }

    // The bar: close, title, edit.
    Item {
        id: bar
        anchors { left: parent.left; right: parent.right; top: parent.top; topMargin: 8 }
        height: 64
        PButton {
            model: root.controller.btnCancel
            anchors { left: parent.left; leftMargin: 4; verticalCenter: parent.verticalCenter }
            flat: true
            Material.foreground: "white"
            palette.buttonText: "white"
            font.bold: true
            Accessible.name: model.title.length > 0 ? model.title : "Kapat"
        }
        PLabel {
            model: root.controller.lblTitle
            anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; leftMargin: 92; rightMargin: 92 }
            horizontalAlignment: Text.AlignHCenter
            color: "white"
            font.pixelSize: 18
            font.bold: true
        }
        PButton {
            model: root.controller.btnEdit
            anchors { right: parent.right; rightMargin: 4; verticalCenter: parent.verticalCenter }
            flat: true
            Material.foreground: "white"
            palette.buttonText: "white"
            font.bold: true
            Accessible.name: model.title.length > 0 ? model.title : "Dönemi değiştir"
        }
    }

    // The chain of periods.
    Flickable {
        id: periods
        objectName: "collPeriods"
        readonly property real side: root.controller.periodItemSide
        y: 120
        width: parent.width
        height: side
        visible: !root.controller.collPeriods.hidden
        clip: true
        contentWidth: root.controller.collPeriods.rows.count * side
        contentHeight: height
        flickableDirection: Flickable.HorizontalFlick
        boundsBehavior: Flickable.StopAtBounds
        onWidthChanged: root.controller.collPeriods.size = Qt.size(width, height)
        onHeightChanged: root.controller.collPeriods.size = Qt.size(width, height)
        ScrollIndicator.horizontal: ScrollIndicator { id: periodsBar } // thin, and only while the list moves
        Accessible.name: "Dönemler"

        Repeater {
            model: root.controller.collPeriods.rows
            delegate: Item {
                id: period
                required property PeriodCollectionViewCell cell
                required property UICollectionView view
                readonly property PeriodCollectionViewCell m: cell
                readonly property real pictureCentre: 44
                objectName: m.reuseIdentifier
                property int row: m.row
                property int section: m.section
                // Square cells the height of the chain.
                x: m.row * width
                width: height
                height: parent ? parent.height : 0
                Accessible.role: Accessible.Button
                Accessible.name: m.lblTitle.text

                Rectangle {
                    objectName: "imgPeriodLeft"
                    x: 0
                    width: (period.width - picture.width) / 2
                    height: period.m.constraintImgPeriodLeftHeight.constant
                    y: period.pictureCentre - height / 2
                    color: period.m.imgPeriodLeft.backgroundColor
                }
                Rectangle {
                    objectName: "imgPeriodRight"
                    x: (period.width + picture.width) / 2
                    width: (period.width - picture.width) / 2
                    height: period.m.constraintImgPeriodRightHeight.constant
                    y: period.pictureCentre - height / 2
                    color: period.m.imgPeriodRight.backgroundColor
                }
                RoundedImage {
                    id: picture
                    model: period.m.imgPeriod
                    width: period.m.constraintImgPeriodWidth.constant
                    height: period.m.constraintImgPeriodHeight.constant
                    x: (period.width - width) / 2
                    y: period.pictureCentre - height / 2
                }
                PLabel {
                    model: period.m.lblTitle
                    x: 4
                    y: period.pictureCentre + 40
                    width: period.width - 8
                    horizontalAlignment: Text.AlignHCenter
                    font.pixelSize: 13
                    font.bold: !Qt.colorEqual(period.m.lblTitle.textColor, "white")
                }
                MouseArea { anchors.fill: parent; onClicked: period.view.selectItem(period.section, period.row) }
            }
        }

        NumberAnimation { id: periodsScroll; target: periods; property: "contentX"; duration: 350; easing.type: Easing.InOutQuad }
        Connections {
            target: root.controller.collPeriods
            function onScrollToItemRequested(section, item, position, animated) {
                var centre = item * periods.side + periods.side / 2
                var to = Math.max(0, Math.min(centre - periods.width / 2, periods.contentWidth - periods.width))
                if (animated) { periodsScroll.to = to; periodsScroll.restart() } else periods.contentX = to
            }
            function onScrollIndicatorsFlashed() { periodsBar.active = true; periodsFlash.restart() }
        }
        Timer { id: periodsFlash; interval: 700; onTriggered: periodsBar.active = false }
    }

    // The pest lists.
    Flickable {
        anchors { left: parent.left; right: parent.right; top: parent.top; topMargin: root.header; bottom: parent.bottom }
        contentHeight: lists.height
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        Column {
            id: lists
            width: parent.width
            topPadding: 4
            PestList { panel: root.controller.viewYabanciOtlar; sideLabel: root.controller.lblYabanciOtlar; collection: root.controller.collYabanciOtlar; layout: root.controller.layoutYabanciOtlar }
            PestList { panel: root.controller.viewZararliCanlilar; sideLabel: root.controller.lblZararliCanlilar; collection: root.controller.collZararliCanlilar; layout: root.controller.layoutZararliCanlilar }
            PestList { panel: root.controller.viewHastaliklar; sideLabel: root.controller.lblHastaliklar; collection: root.controller.collHastaliklar; layout: root.controller.layoutHastaliklar }
        }
    }

    // One list: the upright name in its panel and the cards that snap into place.
    component PestList: Row {
        id: list
        property UIView panel: null
        property SideLabel sideLabel: null
        property UICollectionView collection: null
        property ProductDetailFlowLayout layout: null
        width: parent ? parent.width : 0
        // An empty list hides its cards only: the panel and its upright name keep their strip.
        height: 180

        PView {
            model: list.panel
            width: 35
            height: list.height
            Text {
                objectName: list.sideLabel ? list.sideLabel.objectName : ""
                visible: list.sideLabel && !list.sideLabel.hidden
                anchors.centerIn: parent
                rotation: list.sideLabel ? list.sideLabel.rotation : 0
                text: list.sideLabel ? list.sideLabel.text : ""
                color: list.sideLabel ? list.sideLabel.textColor : Theme.ink
                font.pixelSize: list.sideLabel ? list.sideLabel.fontSize : 16
                font.weight: Font.Medium
            }
        }
        Flickable {
            id: flick
            objectName: list.collection ? list.collection.objectName : ""
            visible: list.collection !== null && !list.collection.hidden
            width: list.width - 35
            height: list.height
            clip: true
            contentWidth: list.layout ? list.layout.collectionViewContentSize.width : 0
            contentHeight: height
            flickableDirection: Flickable.HorizontalFlick
            boundsBehavior: Flickable.StopAtBounds
            function report() { if (list.collection) list.collection.size = Qt.size(width, height) }
            onWidthChanged: report()
            onHeightChanged: report()
            Component.onCompleted: report()
            ScrollIndicator.horizontal: ScrollIndicator { id: bar }
            Accessible.name: list.sideLabel ? list.sideLabel.text : ""

            // A finished scroll ends with a card 16 points from the left edge.
            onMovementEnded: {
                if (!list.layout) return
                var target = list.layout.targetContentOffsetForProposedContentOffset(Qt.point(contentX, 0), Qt.point(0, 0))
                snap.to = Math.max(0, Math.min(target.x, contentWidth - width))
                snap.restart()
            }
            NumberAnimation { id: snap; target: flick; property: "contentX"; duration: 250; easing.type: Easing.OutCubic }

            Repeater {
                model: list.collection ? list.collection.rows : null
                delegate: Item {
                    id: card
                    required property PestsCollectionViewCell cell
                    required property UICollectionView view
                    readonly property PestsCollectionViewCell m: cell
                    readonly property rect frame: {
                        list.layout.itemSize; list.layout.sectionItemCounts; list.layout.collectionViewSize // qmllint disable unqualified
                        return list.layout.frameForItem(m.section, m.row)
                    }
                    objectName: m.reuseIdentifier
                    property int row: m.row
                    property int section: m.section
                    x: frame.x
                    y: frame.y
                    width: frame.width
                    height: frame.height
                    Accessible.name: m.lblTitle.text

                    PLabel {
                        model: card.m.lblTitle
                        width: parent.width
                        height: card.m.titleHeight
                        verticalAlignment: Text.AlignVCenter
                        font.pixelSize: 16
                        font.bold: true
                    }
                    PView {
                        model: card.m.viewPest
                        y: card.m.titleHeight
                        width: parent.width
                        height: parent.height - card.m.titleHeight
                        color: "#e4ecd9"
                        PImageView {
                            model: card.m.imgBack
                            anchors.fill: parent
                            fillMode: Image.PreserveAspectCrop
                        }
                        Repeater {
                            model: card.m.productImages
                            // Each picture at its own frame, fitted with its aspect kept.
                            delegate: PImageView {
                                required property ProductImageView modelData
                                model: modelData
                                x: modelData.frame.x
                                y: modelData.frame.y
                                width: modelData.frame.width
                                height: modelData.frame.height
                                fillMode: Image.PreserveAspectFit
                                Accessible.name: "Ürün"
                            }
                        }
                    }
                    MouseArea { anchors.fill: parent; onClicked: card.view.selectItem(card.m.section, card.m.row) }
                }
            }

            Connections {
                target: list.collection
                function onScrollIndicatorsFlashed() { bar.active = true; flash.restart() }
            }
            Timer { id: flash; interval: 700; onTriggered: bar.active = false }
        }
    }
}
