import QtQuick
import Ekinora.Platform
import QtQuick.Controls

// A button bound to its model; a tap sends the model's actions. At least 44 points high.
Button {
    font.capitalization: Font.MixedCase
    id: button
    property UIButton model: null
    objectName: model ? model.objectName : ""
    visible: model ? !model.hidden : true
    opacity: model ? model.alpha : 1
    enabled: model ? model.enabled && model.userInteractionEnabled : true
    text: model ? model.title : ""
    icon.source: model && model.image.length > 0 ? "qrc:/ekinora/images/" + model.image + ".png" : ""
    implicitHeight: Math.max(44, implicitContentHeight + topPadding + bottomPadding)
    onClicked: if (model) model.tap()
    Accessible.name: text.length > 0 ? text : objectName
}
