import QtQuick
import Ekinora.Platform

// qmllint disable type
// Qt 6.4's type registrar drops a base class named without its namespace (Label : View), so the linter
// cannot see the inherited properties of the runtime's controls (objectName, hidden, alpha, title...).

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
