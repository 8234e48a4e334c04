import QtQuick
import Ekinora.Widgets
import Ekinora.Contests

// Lines with a qmllint disable reach the screen from a delegate or a loaded component: the engine
// resolves them, Qt 6.4's linter cannot follow them.

// The picture picker: the pictures of the library three a row, newest first; or, for the camera, what
// the camera sees and the shutter.
Rectangle {
    id: root
    required property ImagePickerController controller
    objectName: "ImagePickerController"
    color: Theme.page

    Rectangle {
        id: bar
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: 56
        color: Theme.card
        Text {
            anchors.centerIn: parent
            text: root.controller.title
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

    GridView {
        id: grid
        visible: !root.controller.camera
        anchors { left: parent.left; right: parent.right; top: bar.bottom; bottom: parent.bottom; margins: 2 }
        cellWidth: width / 3
        cellHeight: cellWidth
        clip: true
        model: root.controller.photos
        delegate: Item {
            id: photo
            required property string modelData
            required property int index
            objectName: "PhotoCell"
            width: (GridView.view as GridView).cellWidth
            height: (GridView.view as GridView).cellHeight
            Accessible.role: Accessible.Button
            Accessible.name: "Fotoğraf " + (index + 1)
            Image {
                anchors { fill: parent; margins: 2 }
                fillMode: Image.PreserveAspectCrop
                asynchronous: true
                sourceSize.width: width * 2; sourceSize.height: height * 2
                source: "file://" + photo.modelData
            }
            MouseArea { anchors.fill: parent; onClicked: root.controller.pickFile(photo.modelData) } // qmllint disable unqualified
        }
    }
    Text {
        visible: !root.controller.camera && root.controller.photos.length === 0
        anchors.centerIn: parent
        width: parent.width - 64
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.WordWrap
        text: "Resimler klasörünüzde fotoğraf bulunamadı."
        color: Theme.muted
        font.pixelSize: Theme.bodySize
    }

    // The camera starts only when this picker is the camera's.
    Loader {
        anchors { left: parent.left; right: parent.right; top: bar.bottom; bottom: parent.bottom }
        active: root.controller.camera
        sourceComponent: CameraView { controller: root.controller } // qmllint disable unqualified
    }
}
