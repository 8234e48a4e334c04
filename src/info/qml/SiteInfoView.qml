import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Info

// Lines with a qmllint disable reach the screen from a delegate or a loaded component: the engine
// resolves them, Qt 6.4's linter cannot follow them.

// The guide as an accordion: a header per main heading with its show-or-hide button, and under the
// open one its text.
Rectangle {
    id: root
    required property SiteInfoViewController controller
    objectName: "InfoViewController"
    color: "white"

    Rectangle {
        id: bar
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: 64
        color: Theme.leaf
        Button {
            objectName: "closeButtonTapped"
            anchors { left: parent.left; leftMargin: 4; verticalCenter: parent.verticalCenter }
            width: 48; height: 48
            flat: true
            text: "✕"
            font.pixelSize: 20
            Material.foreground: "white"
            Accessible.name: "Kapat"
            onClicked: root.controller.closeButtonTapped()
        }
        PLabel {
            model: root.controller.navBar
            anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; leftMargin: 56; rightMargin: 16 }
            horizontalAlignment: Text.AlignHCenter
            color: "white"
            font.pixelSize: 17
            font.bold: true
        }
    }

    ListView {
        id: list
        objectName: "tableView"
        anchors { left: parent.left; right: parent.right; top: bar.bottom; bottom: parent.bottom }
        clip: true
        model: root.controller.tableView.rows
        onWidthChanged: root.controller.tableView.size = Qt.size(width, height)

        delegate: Item {
            id: cell
            required property string reuseIdentifier
            required property var values
            required property size cellSize
            required property int section
            readonly property var content: values
            readonly property bool isHeader: reuseIdentifier === "HeaderCell1"
            objectName: reuseIdentifier
            width: ListView.view.width
            height: isHeader ? cellSize.height : body.implicitHeight + 24

            Rectangle {
                anchors.fill: parent
                visible: cell.isHeader
                color: Theme.page
                Text {
                    objectName: "titleLabel"
                    anchors { left: parent.left; right: toggle.left; verticalCenter: parent.verticalCenter; leftMargin: Theme.margin; rightMargin: 8 }
                    text: cell.content.titleLabel || ""
                    color: Theme.ink
                    font.pixelSize: Theme.bodySize
                    font.bold: true
                    wrapMode: Text.WordWrap
                    maximumLineCount: 2
                    elide: Text.ElideRight
                }
                Button {
                    id: toggle
                    objectName: "ButtonToShowHide"
                    anchors { right: parent.right; verticalCenter: parent.verticalCenter; rightMargin: 8 }
                    height: 48
                    flat: true
                    text: cell.content.ButtonToShowHide || ""
                    font.capitalization: Font.MixedCase
                    font.pixelSize: 15
                    Material.foreground: Theme.leaf
                    Accessible.name: text + ": " + (cell.content.titleLabel || "")
                    onClicked: root.controller.tapHeaderButton(cell.section) // qmllint disable unqualified
                }
                Rectangle { anchors { left: parent.left; right: parent.right; bottom: parent.bottom } height: 1; color: Theme.line }
            }
            Text {
                id: body
                objectName: "textLabel"
                visible: !cell.isHeader
                x: Theme.margin
                y: 12
                width: parent.width - 2 * Theme.margin
                text: cell.isHeader ? "" : (cell.content.textLabel || "")
                color: Theme.ink
                font.pixelSize: 15
                lineHeight: 1.15
                wrapMode: Text.WordWrap
            }
        }
    }
}
