import QtQuick
import Ekinora.Platform

// A plain view bound to its model: hidden, alpha, background, border.
Rectangle {
    property UIView model: null
    objectName: model ? model.objectName : ""
    visible: model ? !model.hidden : true
    opacity: model ? model.alpha : 1
    enabled: model ? model.userInteractionEnabled : true
    color: model ? model.backgroundColor : "transparent"
    border.width: model ? model.borderWidth : 0
    border.color: model ? model.borderColor : "transparent"
    radius: model ? model.cornerRadius : 0
    clip: model ? model.clipsToBounds : false
}
