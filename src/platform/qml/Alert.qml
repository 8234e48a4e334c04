import QtQuick
import Ekinora.Platform
import QtQuick.Controls

// Lines with a qmllint disable reach the screen from a delegate or a loaded component: the engine
// resolves them, Qt 6.4's linter cannot follow them.

// A centred alert, or an action sheet at the bottom: title, message and its buttons in order.
Item {
    id: root
    required property UIAlertController controller
    property string title: root.controller.title
    property string message: root.controller.message

    Rectangle { anchors.fill: parent; color: "#66000000" }
    MouseArea { anchors.fill: parent }

    Rectangle {
        id: card
        objectName: "alert"
        property string title: root.title
        property string message: root.message
        width: Math.min(root.width - 80, 300)
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.verticalCenter: root.controller.actionSheet ? undefined : parent.verticalCenter
        anchors.bottom: root.controller.actionSheet ? parent.bottom : undefined
        anchors.bottomMargin: 24
        radius: 14
        color: "#f7f7f7"
        height: column.height

        Column {
            id: column
            width: parent.width
            Item { width: 1; height: 18 }
            Text {
                width: parent.width - 32
                anchors.horizontalCenter: parent.horizontalCenter
                visible: text.length > 0
                text: root.title
                font.pixelSize: 17
                font.bold: true
                color: "#000000"
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.WordWrap
            }
            Item { width: 1; height: 4 }
            Text {
                width: parent.width - 32
                anchors.horizontalCenter: parent.horizontalCenter
                visible: text.length > 0
                text: root.message
                font.pixelSize: 14
                color: "#333333"
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.WordWrap
            }
            Item { width: 1; height: 18 }
            Repeater {
                model: root.controller.buttonTitles
                delegate: Column {
                    id: choice
                    required property string modelData
                    required property int index
                    readonly property int style: root.controller.buttonStyles[index] // qmllint disable unqualified
                    width: parent ? parent.width : 0
                    Rectangle { width: parent.width; height: 1; color: "#dcdcdc" }
                    AbstractButton {
                        objectName: "alertButton"
                        width: parent.width
                        height: 48
                        text: choice.modelData
                        Accessible.name: choice.modelData
                        contentItem: Text {
                            text: choice.modelData
                            font.pixelSize: 17
                            font.bold: choice.style === 1
                            color: choice.style === 2 ? "#e0302a" : "#0a7aff"
                            horizontalAlignment: Text.AlignHCenter
                            verticalAlignment: Text.AlignVCenter
                        }
                        onClicked: root.controller.tapButton(choice.index) // qmllint disable unqualified
                    }
                }
            }
        }
    }
}
