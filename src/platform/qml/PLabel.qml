import QtQuick
import Ekinora.Platform

Text {
    property UILabel model: null
    objectName: model ? model.objectName : ""
    visible: model ? !model.hidden : true
    opacity: model ? model.alpha : 1
    text: model ? model.text : ""
    color: model && model.textColor.a > 0 ? model.textColor : "#333333"
    font.pixelSize: 15
    wrapMode: model && model.numberOfLines !== 1 ? Text.WordWrap : Text.NoWrap
    maximumLineCount: model && model.numberOfLines > 0 ? model.numberOfLines : 1000
    elide: Text.ElideRight
}
