import QtQuick
import Ekinora.Platform
import Ekinora.Widgets
import QtQuick.Controls

// A grouped radio button: the icon the model draws (or the layout's pictures) beside the title, in the
// title colour of the state. A tap goes to the model, which applies the group's rules.
AbstractButton {
    id: button
    property GroupedRadioButton model: null
    readonly property bool iconAtEnd: model ? model.iconOnRight : false
    readonly property real iconSide: model ? model.iconSize : 15

    objectName: model ? model.objectName : ""
    visible: model ? !model.hidden : true
    opacity: model ? model.alpha : 1
    enabled: model ? model.enabled && model.userInteractionEnabled : true
    checked: model ? model.selected : false
    text: model ? model.title : ""
    implicitWidth: iconSide + (model ? model.marginWidth : 5) + title.implicitWidth
    implicitHeight: Math.max(44, title.implicitHeight)
    LayoutMirroring.enabled: model ? model.rightToLeft : false
    LayoutMirroring.childrenInherit: true
    onWidthChanged: if (model) model.frameWidth = width
    onClicked: if (model) model.tap()

    Accessible.role: model && model.multipleSelectionEnabled ? Accessible.CheckBox : Accessible.RadioButton
    Accessible.name: text.length > 0 ? text : objectName
    Accessible.checkable: true
    Accessible.checked: checked

    // The icon and the title, declared with the button: its size and the fade below reach them by name.
    contentItem: content
    Item {
        id: content
        Item {
            id: icon
            width: button.iconSide; height: button.iconSide
            anchors.verticalCenter: parent.verticalCenter
            // Beside the title, or at the far edge with the title before it.
            x: button.iconAtEnd ? parent.width - width
               : button.model && button.model.contentHorizontalAlignment === 0
                 ? Math.max(0, (parent.width - width - (button.model ? button.model.marginWidth : 5) - title.implicitWidth) / 2)
               : button.model && button.model.contentHorizontalAlignment === 2
                 ? Math.max(0, parent.width - width - (button.model ? button.model.marginWidth : 5) - title.implicitWidth)
               : 0
            Image {
                anchors.fill: parent
                source: !button.model ? "" : button.model.selected ? button.model.iconSelectedSource : button.model.iconSource
            }
            // The picture of the state left behind, fading out.
            Image {
                id: fading
                anchors.fill: parent
                opacity: 0
                NumberAnimation { id: fade; target: fading; property: "opacity"; from: 1; to: 0 }
            }
        }
        Text {
            id: title
            text: button.text
            color: button.model ? button.model.currentTitleColor : "black"
            font.pixelSize: 15
            wrapMode: Text.WordWrap
            anchors.verticalCenter: parent.verticalCenter
            x: button.iconAtEnd ? 0 : icon.x + icon.width + (button.model ? button.model.marginWidth : 5)
            width: Math.min(implicitWidth, parent.width - icon.width - (button.model ? button.model.marginWidth : 5))
        }
    }

    Connections {
        target: button.model
        function onIconAnimationAdded(fromSelected, duration) {
            fading.source = fromSelected ? button.model.iconSelectedSource : button.model.iconSource
            fade.duration = duration * 1000
            fade.restart()
        }
    }
}
