import QtQuick
import Ekinora.Platform

// An image view drawn inside its corner radius with its border: a period's round picture. The end of
// each load goes back to the model.
Canvas {
    id: canvas
    property UIImageView model: null
    readonly property url address: model ? model.imageUrl : ""
    objectName: model ? model.objectName : ""
    visible: model ? !model.hidden : true
    opacity: model ? model.alpha : 1

    function reportIfLoaded() {
        if (model && String(address).length > 0 && isImageLoaded(address)) model.imageLoadEnded(address, true)
    }
    onAddressChanged: {
        if (String(address).length > 0 && !isImageLoaded(address)) loadImage(address)
        requestPaint()
    }
    onImageLoaded: { requestPaint(); reportIfLoaded() }
    onWidthChanged: requestPaint()
    onHeightChanged: requestPaint()
    Connections {
        target: canvas.model
        function onChanged() { canvas.requestPaint() }
        function onImageRequested() { canvas.reportIfLoaded() }
    }

    onPaint: {
        var ctx = getContext("2d")
        ctx.reset()
        if (!model || width <= 0 || height <= 0) return
        var r = model.clipsToBounds ? Math.min(model.cornerRadius, width / 2, height / 2) : 0
        function shape(inset) {
            var x = inset, y = inset, w = width - 2 * inset, h = height - 2 * inset, q = Math.max(0, r - inset)
            ctx.beginPath()
            ctx.moveTo(x + q, y)
            ctx.arcTo(x + w, y, x + w, y + h, q)
            ctx.arcTo(x + w, y + h, x, y + h, q)
            ctx.arcTo(x, y + h, x, y, q)
            ctx.arcTo(x, y, x + w, y, q)
            ctx.closePath()
        }
        ctx.save()
        shape(0)
        ctx.clip()
        ctx.fillStyle = "#55ffffff"
        ctx.fillRect(0, 0, width, height)
        if (String(address).length > 0 && isImageLoaded(address)) ctx.drawImage(address, 0, 0, width, height)
        ctx.restore()
        if (model.borderWidth > 0) {
            ctx.lineWidth = model.borderWidth
            ctx.strokeStyle = model.borderColor
            shape(model.borderWidth / 2)
            ctx.stroke()
        }
    }
}
