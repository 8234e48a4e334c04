import QtQuick
import Ekinora.Platform
import QtQuick.Controls

// A navigation stack: the bar with the back button, the title and the top screen's right item, and the
// top screen below it.
Item {
    id: root
    required property UINavigationController controller
    property Item contentSlot: slot

    Rectangle {
        id: bar
        visible: !root.controller.navigationBarHidden
        enabled: root.controller.navigationBar.userInteractionEnabled
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: visible ? 56 : 0
        color: "#ffffff"
        Rectangle {
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
            height: 1
            color: "#e6e6e6"
            visible: !root.controller.appearance.plainBackground
        }

        ToolButton {
            objectName: "backButton"
            visible: root.controller.depth > 1
            anchors { left: parent.left; verticalCenter: parent.verticalCenter }
            width: 48; height: 48
            text: "‹"
            font.pixelSize: 30
            palette.buttonText: root.controller.appearance.tintColor
            onClicked: root.controller.goBack()
            Accessible.name: "Geri"
        }
        // The root screen of a side menu's content opens the menu; the menu opens by this button only.
        ToolButton {
            id: menuButton
            readonly property UIButton lent: root.controller.topMenuButton
            objectName: "presentLeftMenuViewController"
            visible: root.controller.depth === 1 && root.controller.inSideMenu && !(lent && lent.hidden)
            anchors { left: parent.left; verticalCenter: parent.verticalCenter; leftMargin: 4 }
            width: 48; height: 48
            text: "☰"
            font.pixelSize: 22
            palette.buttonText: root.controller.appearance.tintColor
            onClicked: lent ? lent.tap() : root.controller.openSideMenu()
            Accessible.name: "Menü"
            // The screen's own menu button, by its name, over the bar's: a tap on it is the bar's tap.
            Item {
                objectName: menuButton.lent ? menuButton.lent.objectName : ""
                anchors.fill: parent
                visible: menuButton.lent !== null
            }
        }
        Label {
            anchors.centerIn: parent
            width: parent.width - 120
            horizontalAlignment: Text.AlignHCenter
            elide: Text.ElideRight
            text: root.controller.topTitle
            color: root.controller.appearance.titleColor
            font.pixelSize: root.controller.appearance.titleFontSize
            font.weight: Font.Medium
        }
        BarButton {
            anchors { right: parent.right; verticalCenter: parent.verticalCenter; rightMargin: 4 }
            model: root.controller.topRightItem
        }
    }

    Item {
        id: slot
        anchors { left: parent.left; right: parent.right; top: bar.bottom; bottom: parent.bottom }
        clip: true
    }
}
