import QtQuick
import Ekinora.Platform
import QtQuick.Controls

// A bar button item with its badge: the plain one, or the item's own overlay when it names one.
ToolButton {
    font.capitalization: Font.MixedCase
    id: button
    property UIBarButtonItem model: null
    readonly property url overlay: model ? model.overlaySource : ""
    objectName: model ? model.objectName : ""
    visible: model !== null && !model.hidden
    width: 48; height: 48
    text: model ? model.title : ""
    // An item with a picture shows only the picture; its title stays its accessible name.
    display: model && model.image.length > 0 ? AbstractButton.IconOnly : AbstractButton.TextBesideIcon
    icon.source: model && model.image.length > 0 ? "qrc:/ekinora/images/" + model.image + ".png" : ""
    onClicked: if (model) model.tap()
    Accessible.name: model ? (model.title.length > 0 ? model.title : model.objectName) : ""
    Rectangle {
        visible: String(button.overlay).length === 0 && button.model !== null
                 && button.model.badgeValue.length > 0 && button.model.badgeValue !== "0"
        anchors { right: parent.right; top: parent.top; margins: 4 }
        width: Math.max(18, badgeText.implicitWidth + 8); height: 18; radius: 9
        color: "#e0302a"
        Text { id: badgeText; anchors.centerIn: parent; text: button.model ? button.model.badgeValue : ""; color: "white"; font.pixelSize: 11 }
    }
    Loader {
        anchors.fill: parent
        active: String(button.overlay).length > 0
        source: button.overlay
        onLoaded: item.model = Qt.binding(function() { return button.model })
    }
}
