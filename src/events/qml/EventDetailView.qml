import QtQuick
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Events

// One event: the date block beside the title, place and dates, the text in a web view, and at the
// bottom the farmer's two answers.
Rectangle {
    id: root
    required property EventDetailViewController controller
    objectName: "EventDetailViewController"
    color: "white"

    Item {
        id: top
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: Theme.margin }
        height: Math.max(date.height, info.implicitHeight)
        Rectangle {
            id: date
            width: 76; height: 84
            radius: 4
            color: Theme.leaf
            Column {
                anchors.centerIn: parent
                PLabel {
                    model: root.controller.lblDay
                    anchors.horizontalCenter: parent.horizontalCenter
                    color: "white"
                    font.pixelSize: 30
                    font.bold: true
                }
                PLabel {
                    model: root.controller.lblMonth
                    anchors.horizontalCenter: parent.horizontalCenter
                    color: "white"
                    font.pixelSize: Theme.captionSize
                }
            }
        }
        Column {
            id: info
            anchors { left: date.right; right: parent.right; top: parent.top; leftMargin: 12 }
            spacing: 4
            PLabel {
                model: root.controller.lblTitle
                width: parent.width
                font.pixelSize: Theme.headingSize
                font.bold: true
            }
            PLabel {
                model: root.controller.lblDateRange
                width: parent.width
                color: Theme.cerulean
                font.pixelSize: 14
            }
            PLabel {
                model: root.controller.lblPlace
                width: parent.width
                color: Theme.muted
                font.pixelSize: 14
            }
        }
    }
    Rectangle {
        id: rule
        anchors { left: parent.left; right: parent.right; top: top.bottom; topMargin: 12 }
        height: 1
        color: Theme.divider
    }
    PWebView {
        model: root.controller.webContent
        anchors { left: parent.left; right: parent.right; top: rule.bottom; bottom: answers.top; leftMargin: 8; rightMargin: 8 }
    }
    Row {
        id: answers
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: Theme.margin }
        height: root.controller.constraintButtonHeight.constant
        visible: height > 0
        spacing: 12
        Repeater {
            model: [root.controller.btnAccept, root.controller.btnReject]
            delegate: PButton {
                id: answer
                required property UIButton modelData
                model: modelData
                width: parent ? (parent.width - 12) / 2 : 0
                height: parent ? parent.height : 0
                icon.color: "white"
                palette.buttonText: modelData.titleColor
                background: Rectangle { radius: Theme.radius; color: answer.modelData.backgroundColor }
                font.pixelSize: Theme.bodySize
                font.bold: true
            }
        }
    }
}
