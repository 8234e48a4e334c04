import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Grants

// One programme: the title on the gradient, the kind and last date, the description, the documents.
Rectangle {
    id: root
    required property GrantDetailViewController controller
    objectName: "GrantDetailViewController"
    color: Theme.page

    Rectangle {
        id: head
        objectName: "viewTitle"
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: title.implicitHeight + 32
        gradient: Gradient {
            orientation: Gradient.Horizontal
            GradientStop { position: 0.0; color: Theme.cerulean }
            GradientStop { position: 1.0; color: Theme.leaf }
        }
        PLabel {
            id: title
            model: root.controller.lblTitle
            anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; margins: 16 }
            color: "white"
            font.pixelSize: 19
            font.bold: true
        }
    }

    Flickable {
        anchors { left: parent.left; right: parent.right; top: head.bottom; bottom: docs.top; bottomMargin: 8 }
        clip: true
        contentHeight: body.height + 32
        boundsBehavior: Flickable.StopAtBounds
        Column {
            id: body
            x: 16; y: 16
            width: parent.width - 32
            spacing: 12
            PLabel {
                model: root.controller.lblType
                width: parent.width
                color: Theme.cerulean
                font.pixelSize: Theme.bodySize
                font.bold: true
            }
            Rectangle {
                width: date.implicitWidth + 20
                height: 32
                radius: root.controller.lblDate.cornerRadius
                border.width: root.controller.lblDate.borderWidth
                border.color: root.controller.lblDate.borderColor
                color: "white"
                PLabel {
                    id: date
                    model: root.controller.lblDate
                    anchors.centerIn: parent
                    color: Theme.cerulean
                    font.pixelSize: Theme.captionSize + 1
                }
            }
            PLabel {
                model: root.controller.txtContent
                width: parent.width
                textFormat: Text.RichText
                font.pixelSize: 15
                lineHeight: 1.15
            }
        }
    }

    FilledButton {
        id: docs
        objectName: "showDocs"
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: 16 }
        text: "Başvuru Belgeleri"
        onClicked: root.controller.showDocs()
    }
}
