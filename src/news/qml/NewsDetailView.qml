import QtQuick
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.News

// One news item: the coloured header with its title and date, the picture, the text below.
Rectangle {
    id: root
    required property NewsDetailViewController controller
    objectName: "NewsDetailViewController"
    color: Theme.card

    PView {
        id: header
        model: root.controller.viewHeader
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: Math.max(72, title.implicitHeight + 44)
        gradient: Gradient {
            orientation: Gradient.Horizontal
            GradientStop { position: 0.0; color: Theme.cerulean }
            GradientStop { position: 1.0; color: Theme.leaf }
        }
        PLabel {
            id: title
            model: root.controller.lblTitle
            anchors { left: parent.left; right: parent.right; top: parent.top; margins: Theme.margin; topMargin: 12 }
            color: "white"
            font.pixelSize: Theme.headingSize
            font.bold: true
        }
        PLabel {
            model: root.controller.lblDate
            anchors { left: parent.left; bottom: parent.bottom; leftMargin: Theme.margin; bottomMargin: 8 }
            color: "white"
            font.pixelSize: Theme.captionSize
        }
    }
    PImageView {
        id: photo
        model: root.controller.imagePhoto
        anchors { left: parent.left; right: parent.right; top: header.bottom }
        height: width * 9 / 16
        fillMode: Image.PreserveAspectCrop
        clip: true
    }
    Flickable {
        id: text
        objectName: "txtContentScroll"
        anchors { left: parent.left; right: parent.right; top: photo.bottom; bottom: parent.bottom }
        clip: true
        interactive: root.controller.contentScrollEnabled
        contentHeight: body.implicitHeight + 2 * Theme.margin
        // Every layout pass starts the text at its top.
        onWidthChanged: contentY = 0
        onHeightChanged: contentY = 0
        PLabel {
            id: body
            model: root.controller.txtContent
            x: Theme.margin
            y: Theme.margin
            width: text.width - 2 * Theme.margin
            font.pixelSize: Theme.bodySize
            lineHeight: 1.2
            elide: Text.ElideNone
        }
    }
}
