import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Grants

// Lines with a qmllint disable reach the screen from a delegate or a loaded component: the engine
// resolves them, Qt 6.4's linter cannot follow them.

// The three choices on a gradient band, the search button, and the programmes found as cards.
Rectangle {
    id: root
    required property GrantViewController controller
    objectName: "GrantViewController"
    color: Theme.page

    // A choice: the button's title with an arrow, framed as the controller says.
    component ChoiceButton: PButton {
        id: choice
        implicitHeight: 48
        flat: true
        leftPadding: 12
        rightPadding: 32
        background: Rectangle {
            color: "white"
            radius: choice.model ? choice.model.cornerRadius : 0
            border.width: choice.model ? choice.model.borderWidth : 0
            border.color: choice.model ? choice.model.borderColor : "transparent"
            opacity: choice.enabled ? 1 : 0.7
        }
        contentItem: Text {
            text: choice.text
            color: Theme.ink
            font.pixelSize: Theme.bodySize
            elide: Text.ElideRight
            verticalAlignment: Text.AlignVCenter
        }
        Text {
            text: "▾"
            color: Theme.cerulean
            font.pixelSize: 18
            anchors { right: parent.right; rightMargin: 10; verticalCenter: parent.verticalCenter }
            rotation: root.controller.dropDown && root.controller.dropDown.btnSender === choice.model // qmllint disable unqualified
                      && root.controller.dropDown.senderImageFlipped ? 180 : 0
        }
    }

    Rectangle {
        id: band
        objectName: "imgBack"
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: form.height + 32
        gradient: Gradient {
            orientation: Gradient.Horizontal
            GradientStop { position: 0.0; color: Theme.cerulean }
            GradientStop { position: 1.0; color: Theme.leaf }
        }
        Column {
            id: form
            anchors { left: parent.left; right: parent.right; top: parent.top; margins: 16 }
            spacing: 10
            Text {
                width: parent.width
                text: "Bölgenize ve ürününüze uygun hibe ve destek programlarını sorgulayın."
                color: "white"
                font.pixelSize: Theme.captionSize + 1
                wrapMode: Text.WordWrap
            }
            Row {
                width: parent.width
                spacing: 10
                ChoiceButton { id: city; model: root.controller.btnCity; width: (parent.width - 10) / 2; Accessible.name: "İl: " + text }
                ChoiceButton { id: county; model: root.controller.btnCounty; width: (parent.width - 10) / 2; Accessible.name: "İlçe: " + text }
            }
            ChoiceButton { id: product; model: root.controller.btnProduct; width: parent.width; Accessible.name: "Ürün: " + text }
            Button {
                id: search
                objectName: "getGrants"
                width: parent.width
                implicitHeight: 48
                text: "Hibe Desteği Sorgula"
                font.pixelSize: Theme.bodySize
                font.bold: true
                font.capitalization: Font.MixedCase
                background: Rectangle { radius: Theme.radius; color: search.down ? "#e8f3f8" : "white" }
                contentItem: Text {
                    text: search.text
                    font: search.font
                    color: Theme.cerulean
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                }
                Accessible.name: text
                onClicked: root.controller.getGrants()
            }
        }
    }

    ListView {
        id: grants
        objectName: "collGrant"
        visible: !root.controller.collGrant.hidden
        anchors { left: parent.left; right: parent.right; top: band.bottom; bottom: parent.bottom }
        clip: true
        spacing: 12
        topMargin: 12
        bottomMargin: 12
        boundsBehavior: Flickable.StopAtBounds
        model: root.controller.collGrant.rows
        onWidthChanged: root.controller.collGrant.size = Qt.size(width, height)
        delegate: Item {
            id: slot
            required property string reuseIdentifier
            required property var values
            required property size cellSize
            required property int row
            required property UITableView view
            width: ListView.view.width
            height: cellSize.height
            Rectangle {
                objectName: slot.reuseIdentifier
                property int row: slot.row
                visible: slot.reuseIdentifier === "GrantCell"
                x: (slot.ListView.view.width - width) / 2
                width: slot.cellSize.width
                height: slot.cellSize.height
                radius: slot.values.cornerRadius || 0
                clip: slot.values.clipsToBounds || false
                color: "white"
                border.color: Theme.line
                Accessible.role: Accessible.Button
                Accessible.name: slot.values.lblTitle || ""
                Rectangle {
                    objectName: "viewBack"
                    anchors { left: parent.left; top: parent.top; bottom: parent.bottom }
                    width: 6
                    radius: 3
                    color: Theme.leaf
                }
                Column {
                    anchors { fill: parent; leftMargin: 18; rightMargin: 12; topMargin: 12; bottomMargin: 12 }
                    spacing: 6
                    Text {
                        objectName: "lblTitle"
                        width: parent.width
                        text: slot.values.lblTitle || ""
                        color: Theme.ink
                        font.pixelSize: 17
                        font.bold: true
                        wrapMode: Text.WordWrap
                        maximumLineCount: 2
                        elide: Text.ElideRight
                    }
                    Text {
                        objectName: "lblType"
                        width: parent.width
                        text: slot.values.lblType || ""
                        color: Theme.cerulean
                        font.pixelSize: Theme.captionSize + 1
                        elide: Text.ElideRight
                    }
                    Rectangle {
                        width: date.implicitWidth
                        height: 24
                        radius: 3
                        clip: true
                        color: Theme.squash
                        Text {
                            id: date
                            objectName: "lblDate"
                            anchors.verticalCenter: parent.verticalCenter
                            text: slot.values.lblDate || ""
                            color: "white"
                            font.pixelSize: Theme.captionSize
                            font.bold: true
                        }
                    }
                    Text {
                        objectName: "lblText"
                        width: parent.width
                        height: parent.height - y
                        text: slot.values.lblText || ""
                        textFormat: Text.RichText
                        color: Theme.ink
                        font.pixelSize: 14
                        wrapMode: Text.WordWrap
                        clip: true
                    }
                }
                MouseArea { anchors.fill: parent; onClicked: slot.view.selectRow(slot.row) }
            }
        }
    }

    DropDownListView {
        anchors.fill: parent
        model: root.controller.dropDown
        senders: [city, county, product]
    }
}
