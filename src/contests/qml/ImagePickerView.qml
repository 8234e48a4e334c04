import QtQuick
import Ekinora.Widgets
import Ekinora.Contests

// Lines marked with a qmllint disable are right at run time: Qt 6.4's linter flags ids reached from inside
// a delegate, an inline or a loaded component (the pragma that allows them comes with 6.5), and cannot see properties
// inherited across the runtime's controls (its type registrar drops base classes named without their namespace).

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
            text: root.controller.title // qmllint disable type
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
            width: grid.cellWidth // qmllint disable unqualified
            height: grid.cellHeight // qmllint disable unqualified
            Accessible.role: Accessible.Button
            Accessible.name: "Fotoğraf " + (index + 1)
            Image {
                anchors { fill: parent; margins: 2 }
                fillMode: Image.PreserveAspectCrop
                asynchronous: true
                sourceSize: Qt.size(width * 2, height * 2) // qmllint disable type
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
