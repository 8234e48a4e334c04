import QtQuick

Image {
    property QtObject model: null
    objectName: model ? model.objectName : ""
    visible: model ? !model.hidden : true
    opacity: model ? model.alpha : 1
    asynchronous: true
    fillMode: Image.PreserveAspectFit
    source: !model ? "" : model.imageUrl.toString().length > 0 ? model.imageUrl
          : model.image.length > 0 ? "qrc:/ekinora/images/" + model.image + ".png" : ""
}
