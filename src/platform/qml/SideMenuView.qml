import QtQuick
import Ekinora.Platform

// Lines with a qmllint disable reach the screen from a delegate or a loaded component: the engine
// resolves them, Qt 6.4's linter cannot follow them.

// The side-menu container: the menu lies under the content, which slides aside when the menu opens.
Item {
    id: root
    required property RESideMenu controller
    property Item contentSlot: contentSlot
    property Item menuSlot: menuSlot

    Image {
        anchors.fill: parent
        source: root.controller.backgroundImage.length > 0 ? "qrc:/ekinora/images/" + root.controller.backgroundImage + ".png" : ""
        fillMode: Image.PreserveAspectCrop
        visible: source != ""
    }
    Item {
        id: menuSlot
        anchors { top: parent.top; bottom: parent.bottom; left: parent.left }
        width: parent.width * 0.75
        visible: root.controller.menuVisible
    }
    Item {
        id: contentFrame
        width: parent.width
        height: parent.height
        x: root.controller.menuVisible ? parent.width * 0.75 : 0
        Behavior on x { NumberAnimation { duration: 200; easing.type: Easing.OutCubic } }
        // The content's shadow: rings of the shadow colour around the frame, fading over the radius.
        Repeater {
            objectName: "contentViewShadow"
            model: root.controller.contentViewShadowEnabled ? Math.max(0, Math.round(root.controller.contentViewShadowRadius)) : 0
            Rectangle {
                required property int index
                readonly property real fade: 1 - (index + 0.5) / Math.max(1, root.controller.contentViewShadowRadius) // qmllint disable unqualified
                x: -(index + 1)
                y: -(index + 1)
                width: parent.width + 2 * (index + 1)
                height: parent.height + 2 * (index + 1)
                color: "transparent"
                border.width: 1
                border.color: root.controller.contentViewShadowColor // qmllint disable unqualified
                opacity: root.controller.contentViewShadowOpacity * fade * fade // qmllint disable unqualified
            }
        }
        Rectangle {
            anchors.fill: parent
            color: "white"
            border.width: 0
        }
        Item { id: contentSlot; anchors.fill: parent; clip: true }
        // While the menu is open a tap on the content closes it.
        MouseArea {
            anchors.fill: parent
            visible: root.controller.menuVisible
            onClicked: root.controller.hideMenuViewController()
            Accessible.name: "Menüyü kapat"
        }
    }
}
