import QtQuick
import QtMultimedia
import Ekinora.Widgets
import Ekinora.Contests

// The camera's picture and the shutter; the picture taken goes to the picker as a file.
Item {
    id: view
    property ImagePickerController controller: null

    MediaDevices { id: devices }
    CaptureSession {
        camera: Camera { active: devices.videoInputs.length > 0 }
        imageCapture: ImageCapture {
            id: capture
            onImageSaved: (requestId, path) => { if (view.controller) view.controller.pickFile(path) }
        }
        videoOutput: output
    }
    VideoOutput {
        id: output
        anchors.fill: parent
        fillMode: VideoOutput.PreserveAspectCrop
    }
    Text {
        visible: devices.videoInputs.length === 0
        anchors.centerIn: parent
        width: parent.width - 64
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.WordWrap
        text: "Kamera bulunamadı. Fotoğrafı kütüphaneden seçebilirsiniz."
        color: Theme.muted
        font.pixelSize: Theme.bodySize
    }
    Rectangle {
        objectName: "takePicture"
        visible: devices.videoInputs.length > 0
        anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom; bottomMargin: 32 }
        width: 72; height: 72; radius: 36
        color: "white"
        border.color: Theme.leaf
        border.width: 6
        Accessible.role: Accessible.Button
        Accessible.name: "Fotoğraf Çek"
        MouseArea {
            anchors.fill: parent
            onClicked: capture.captureToFile(view.controller.captureFolder + "/ekinora-photo-" + Date.now() + ".jpg")
        }
    }
}
