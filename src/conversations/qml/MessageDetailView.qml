import QtQuick
import QtQuick.Controls
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Conversations

// Lines with a qmllint disable reach the screen from a delegate or a loaded component: the engine
// resolves them, Qt 6.4's linter cannot follow them.

// One subject: the question on top, the thread as a chat, the answer field at the bottom, and the
// full-screen picture over everything when a picture is tapped.
Rectangle {
    id: root
    required property MessageDetailViewController controller
    objectName: "MessageDetailViewController"
    color: Theme.page

    Item {
        id: frame
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: root.height - root.controller.constraintKeyboard.constant

        Rectangle {
            id: question
            anchors { left: parent.left; right: parent.right; top: parent.top }
            height: Math.min(questionColumn.implicitHeight + 20, 180)
            color: Theme.card
            Column {
                id: questionColumn
                anchors { left: parent.left; right: parent.right; top: parent.top; margins: 10; leftMargin: Theme.margin; rightMargin: Theme.margin }
                spacing: 4
                Item {
                    width: parent.width
                    height: Math.max(title.implicitHeight, date.implicitHeight)
                    PLabel {
                        id: title
                        model: root.controller.lblQuestionTitle
                        anchors { left: parent.left; right: date.left; rightMargin: 8 }
                        font.pixelSize: Theme.headingSize
                        font.bold: true
                    }
                    PLabel {
                        id: date
                        model: root.controller.lblQuestionDate
                        anchors.right: parent.right
                        font.pixelSize: Theme.captionSize
                        color: Theme.muted
                    }
                }
                Flickable {
                    id: descriptionScroll
                    width: parent.width
                    height: Math.min(description.implicitHeight, 120)
                    contentHeight: description.implicitHeight
                    clip: true
                    boundsBehavior: Flickable.StopAtBounds
                    ScrollIndicator.vertical: ScrollIndicator { active: descriptionScroll.contentHeight > descriptionScroll.height }
                    PLabel {
                        id: description
                        model: root.controller.lblQuestionDescription
                        width: parent.width
                        color: Theme.muted
                    }
                }
            }
            Rectangle { anchors { left: parent.left; right: parent.right; bottom: parent.bottom } height: 1; color: Theme.line }
        }

        ListView {
            id: table
            objectName: "tblMessages"
            anchors { left: parent.left; right: parent.right; top: question.bottom; bottom: inputBar.top }
            clip: true
            spacing: 6
            topMargin: 10
            bottomMargin: 10
            boundsBehavior: Flickable.StopAtBounds
            model: root.controller.tblMessages.rows
            onWidthChanged: root.controller.tblMessages.size = Qt.size(width, height)
            // Each request of the screen to bring its last message up.
            readonly property int scrollRequest: root.controller.scrollRequest
            onScrollRequestChanged: positionViewAtIndex(root.controller.scrollTarget, ListView.Beginning)

            delegate: Item {
                id: cell
                required property string reuseIdentifier
                required property var values
                required property size cellSize
                required property int row
                required property UITableView view
                readonly property var content: values
                readonly property bool media: reuseIdentifier === "OutgoingMediaCell" || reuseIdentifier === "IncomingMediaCell"
                readonly property bool more: reuseIdentifier === "IncomingMoreCell"
                readonly property bool outgoing: content.outgoing === true
                objectName: reuseIdentifier
                width: ListView.view.width
                height: more || media ? cellSize.height : bubbleText.implicitHeight + bubbleDate.implicitHeight + 26

                // A message: on the right for the asking side, on the left for the answering side.
                Rectangle {
                    objectName: "viewBack"
                    visible: !cell.more
                    x: cell.outgoing ? parent.width - width - 12 : 12
                    width: cell.media ? Math.min(parent.width * 0.7, 260) : Math.min(parent.width * 0.78, Math.max(bubbleText.implicitWidth, bubbleDate.implicitWidth) + 24)
                    height: parent.height
                    radius: 5
                    color: cell.outgoing ? "#f1f8e8" : "#e8f4fa"
                    border.width: 1
                    border.color: cell.outgoing ? Theme.leaf : Theme.cerulean
                    Image {
                        objectName: "imgPhoto"
                        visible: cell.media
                        anchors { left: parent.left; right: parent.right; top: parent.top; bottom: bubbleDate.top; margins: 6 }
                        fillMode: Image.PreserveAspectCrop
                        asynchronous: true
                        source: cell.media ? (cell.content.imgPhoto || "") : ""
                        layer.enabled: status === Image.Ready
                    }
                    Text {
                        id: bubbleText
                        objectName: "lblMessage"
                        visible: !cell.media
                        x: 12; y: 8
                        width: Math.min(implicitWidth, cell.width * 0.78 - 24)
                        text: cell.media ? "" : (cell.content.lblMessage || "")
                        wrapMode: Text.WordWrap
                        color: Theme.ink
                        font.pixelSize: 15
                    }
                    Text {
                        id: bubbleDate
                        objectName: "lblMessageDate"
                        anchors { right: parent.right; bottom: parent.bottom; rightMargin: 10; bottomMargin: 6 }
                        text: cell.content.lblMessageDate || ""
                        color: Theme.muted
                        font.pixelSize: 11
                    }
                    MouseArea { anchors.fill: parent; enabled: cell.media; onClicked: cell.view.selectRow(cell.row) }
                }

                // The closing row.
                Rectangle {
                    objectName: "viewBack"
                    visible: cell.more
                    anchors { fill: parent; leftMargin: 12; rightMargin: 12 }
                    radius: 5
                    color: Theme.card
                    Column {
                        anchors.centerIn: parent
                        width: parent.width - 24
                        spacing: 10
                        Text {
                            objectName: "labelQuestion"
                            width: parent.width
                            horizontalAlignment: Text.AlignHCenter
                            text: cell.content.labelQuestion || ""
                            color: Theme.ink
                            font.pixelSize: Theme.bodySize
                            wrapMode: Text.WordWrap
                        }
                        Button {
                            objectName: "buttonAction"
                            visible: cell.content.buttonHidden === false
                            anchors.horizontalCenter: parent.horizontalCenter
                            width: Math.max(160, implicitWidth + 24)
                            height: cell.content.constraintButtonHeight || 0
                            text: cell.content.buttonAction || ""
                            font.capitalization: Font.MixedCase
                            font.pixelSize: 15
                            font.bold: true
                            contentItem: Text {
                                text: cell.content.buttonAction || ""
                                color: "white"
                                font.pixelSize: 15
                                font.bold: true
                                horizontalAlignment: Text.AlignHCenter
                                verticalAlignment: Text.AlignVCenter
                            }
                            background: Rectangle { radius: Theme.radius; color: Theme.cerulean }
                            onClicked: root.controller.sendMessageStatus() // qmllint disable unqualified
                        }
                    }
                }
            }
        }

        Rectangle {
            id: inputBar
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
            height: 64
            color: Theme.card
            Rectangle { anchors { left: parent.left; right: parent.right; top: parent.top } height: 1; color: Theme.line }
            PButton {
                id: video
                model: root.controller.btnVideo
                anchors { left: parent.left; leftMargin: 6; verticalCenter: parent.verticalCenter }
                width: 72
                flat: true
                font.pixelSize: 14
            }
            PTextField {
                model: root.controller.txtMessage
                anchors { left: video.right; right: send.left; leftMargin: 4; rightMargin: 4; verticalCenter: parent.verticalCenter }
                font.pixelSize: 15
            }
            FilledButton {
                id: send
                model: root.controller.btnSend
                anchors { right: parent.right; rightMargin: 8; verticalCenter: parent.verticalCenter }
                width: 88
                implicitHeight: 46
                font.pixelSize: 15
            }
        }
    }

    // The picture of a message over the whole window.
    Popup {
        objectName: "viewImage"
        parent: Overlay.overlay
        x: 0; y: 0
        width: parent ? parent.width : 0
        height: parent ? parent.height : 0
        padding: 0
        modal: true
        visible: root.controller.viewerOpen
        closePolicy: Popup.NoAutoClose
        background: Rectangle { color: Theme.ink }
        Image {
            y: 72
            width: parent.width
            height: parent.height - 144
            fillMode: Image.PreserveAspectFit
            asynchronous: true
            source: root.controller.viewerImage
        }
        ToolButton {
            objectName: "closeViewImage"
            x: 8; y: 32
            width: 40; height: 40
            icon.source: "qrc:/ekinora/images/crossWhite.png"
            icon.color: "white"
            Accessible.name: "Kapat"
            onClicked: root.controller.closeViewImage()
        }
    }
}
