import QtQuick
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Contests

// The winners, the farmer's own message and, when he won, his congratulation; before the draw, the
// day the contest ends.
Rectangle {
    id: root
    required property ResultViewController controller
    objectName: "ResultViewController"
    color: Theme.page

    Flickable {
        anchors.fill: parent
        contentHeight: body.height + 32
        boundsBehavior: Flickable.StopAtBounds
        Column {
            id: body
            x: Theme.margin; y: Theme.margin
            width: parent.width - 2 * Theme.margin
            spacing: 14

            PLabel {
                model: root.controller.lblCongrats
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.WordWrap
                color: Theme.leaf
                font.pixelSize: 22
                font.bold: true
            }
            Text {
                visible: !root.controller.tblScores.hidden
                text: "Kazananlar"
                color: Theme.ink
                font.pixelSize: Theme.headingSize
                font.bold: true
            }
            PView {
                model: root.controller.tblScores
                width: parent.width
                height: root.controller.constTblHeight.constant
                color: Theme.card
                ListView {
                    id: scores
                    objectName: "tblScores"
                    anchors.fill: parent
                    anchors.margins: 1
                    interactive: false
                    model: root.controller.tblScores.rows
                    onWidthChanged: root.controller.tblScores.size = Qt.size(width, height)
                    delegate: Item {
                        id: cell
                        required property string reuseIdentifier
                        required property var values
                        required property size cellSize
                        required property int row
                        objectName: reuseIdentifier
                        width: ListView.view.width
                        height: 41
                        Text {
                            objectName: "lblOrder"
                            anchors { left: parent.left; leftMargin: 12; verticalCenter: parent.verticalCenter }
                            width: 28
                            text: cell.values.lblOrder || ""
                            color: Theme.muted
                            font.pixelSize: Theme.bodySize
                        }
                        Text {
                            objectName: "lblName"
                            anchors { left: parent.left; leftMargin: 44; right: parent.right; rightMargin: 12; verticalCenter: parent.verticalCenter }
                            text: cell.values.lblName || ""
                            color: cell.values.textColor || Theme.ink
                            font.pixelSize: Theme.bodySize
                            font.bold: color == Theme.cerulean
                            elide: Text.ElideRight
                        }
                        Rectangle {
                            visible: cell.row > 0
                            anchors { left: parent.left; right: parent.right; top: parent.top }
                            height: 1
                            color: Theme.divider
                        }
                    }
                }
            }
            PLabel {
                model: root.controller.lblScoreMessage
                visible: !root.controller.tblScores.hidden
                width: parent.width
                wrapMode: Text.WordWrap
                color: Theme.ink
                font.pixelSize: Theme.bodySize
            }
            PView {
                model: root.controller.viewInfo
                width: parent.width
                height: infoColumn.height + 40
                radius: Theme.radius
                color: Theme.card
                border.color: Theme.line
                Column {
                    id: infoColumn
                    anchors.centerIn: parent
                    width: parent.width - 40
                    spacing: 8
                    Text {
                        width: parent.width
                        horizontalAlignment: Text.AlignHCenter
                        wrapMode: Text.WordWrap
                        text: "Çekiliş henüz yapılmadı. Kazananlar yarışmanın bittiği gün belli olacak."
                        color: Theme.ink
                        font.pixelSize: Theme.bodySize
                    }
                    Text {
                        width: parent.width
                        horizontalAlignment: Text.AlignHCenter
                        text: "Bitiş tarihi"
                        color: Theme.muted
                        font.pixelSize: Theme.captionSize
                    }
                    PLabel {
                        model: root.controller.lblInfo
                        width: parent.width
                        horizontalAlignment: Text.AlignHCenter
                        color: Theme.cerulean
                        font.pixelSize: 24
                        font.bold: true
                    }
                }
            }
            ActionButton {
                act: "goHome"
                text: "Yarışmalara Dön"
                anchors.horizontalCenter: parent.horizontalCenter
                onClicked: root.controller.goHome()
            }
        }
    }
}
