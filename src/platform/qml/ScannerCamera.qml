import QtQuick
import Ekinora.Platform

// What a scanner screen shows of its camera: the preview filling the container, and the frame that
// flashes around the code just read.
Item {
    id: camera
    required property ScannerViewController scanner
    clip: true

    CapturePreview {
        anchors.fill: parent
        previewLayer: camera.scanner.previewLayer
    }

    Rectangle {
        readonly property UIFrameView bounds: camera.scanner.qrCodeBounds
        x: bounds.frame.x
        y: bounds.frame.y
        width: bounds.frame.width
        height: bounds.frame.height
        color: "transparent"
        border.width: bounds.borderWidth
        border.color: bounds.borderColor
        radius: bounds.cornerRadius
        opacity: bounds.alpha
        Behavior on opacity {
            NumberAnimation { duration: camera.scanner.qrCodeBounds.alphaAnimationMs }
        }
    }
}
