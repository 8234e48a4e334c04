import QtQuick
import Ekinora.Platform

// An image view bound to its model: a bundled picture by name or a remote one, drawn at the model's
// render size when it names one. The laid-out size goes back to the model, and so does the end of each
// load, so that a screen can finish its work when the picture is there.
Image {
    id: image
    property UIImageView model: null
    objectName: model ? model.objectName : ""
    visible: model ? !model.hidden : true
    opacity: model ? model.alpha : 1
    clip: model ? model.clipsToBounds : false
    // A bundled picture is read with the view, so that it is in the view's first frame (the splash in
    // the application's first frame); a remote one comes when it comes.
    asynchronous: !model || String(model.imageUrl).length > 0
    fillMode: Image.PreserveAspectFit
    source: !model ? "" : String(model.imageUrl).length > 0 ? model.imageUrl
          : model.image.length > 0 ? "qrc:/ekinora/images/" + model.image + ".png" : ""
    sourceSize: model && model.renderSize.width > 0 ? model.renderSize : undefined

    function reportSize() { if (model) model.frameSize = Qt.size(width, height) }
    onWidthChanged: reportSize()
    onHeightChanged: reportSize()
    onModelChanged: reportSize()
    function reportEnd() {
        if (!model || String(model.imageUrl).length === 0) return
        if (status === Image.Ready) model.imageLoadEnded(model.imageUrl, true)
        else if (status === Image.Error) model.imageLoadEnded(model.imageUrl, false)
    }
    // Reported after the change that caused it has settled.
    onStatusChanged: reporting.restart()
    Timer { id: reporting; interval: 0; onTriggered: image.reportEnd() }
    Connections {
        target: image.model
        // The same address again loads nothing new: its end is the present state.
        function onImageRequested() { if (image.source == image.model.imageUrl) reporting.restart() }
    }
}
