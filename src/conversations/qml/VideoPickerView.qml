import QtQuick
import QtQuick.Controls
import Ekinora.Widgets
import Ekinora.Conversations

// Lines with a qmllint disable reach the screen from a delegate or a loaded component: the engine
// resolves them, Qt 6.4's linter cannot follow them.

// The video picker: the videos of the library by name, newest first.
Rectangle {
    id: root
    required property VideoPickerController controller
    objectName: "VideoPickerController"
    color: Theme.page

    Rectangle {
        id: bar
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: 56
        color: Theme.card
        Text {
            anchors.centerIn: parent
            text: "Video Seç"
            color: Theme.ink
            font.pixelSize: Theme.headingSize
            font.bold: true
        }
        ActionButton {
            act: "cancel"
            text: "İptal"
            anchors { right: parent.right; rightMargin: 4; verticalCenter: parent.verticalCenter }
            onClicked: root.controller.cancel()
        }
        Rectangle { anchors { left: parent.left; right: parent.right; bottom: parent.bottom } height: 1; color: Theme.line }
    }

    ListView {
        anchors { left: parent.left; right: parent.right; top: bar.bottom; bottom: parent.bottom }
        clip: true
        model: root.controller.videos
        delegate: ItemDelegate {
            required property string modelData
            objectName: "VideoCell"
            width: ListView.view.width
            height: Theme.touch + 8
            text: modelData.substring(modelData.lastIndexOf("/") + 1)
            font.pixelSize: Theme.bodySize
            enabled: !root.controller.busy // qmllint disable unqualified
            onClicked: root.controller.pickFile(modelData) // qmllint disable unqualified
        }
    }
    Text {
        visible: root.controller.videos.length === 0
        anchors.centerIn: parent
        width: parent.width - 64
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.WordWrap
        text: "Videolar klasörünüzde video bulunamadı."
        color: Theme.muted
        font.pixelSize: Theme.bodySize
    }
    BusyIndicator { anchors.centerIn: parent; running: root.controller.busy }
}
