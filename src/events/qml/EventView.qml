import QtQuick
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Events

// Lines with a qmllint disable reach the screen from a delegate or a loaded component: the engine
// resolves them, Qt 6.4's linter cannot follow them.

// The pictures of the nearest events slide on top; under them the events in their sections, each
// under its header. With no events, a picture and a line say so.
Rectangle {
    id: root
    required property EventViewController controller
    objectName: "EventViewController"
    color: "white"

    component SectionHeader: Rectangle {
        property var header: ({})
        objectName: "sectionHeader"
        width: ListView.view ? ListView.view.width : 0
        height: 40
        color: header.tint || "white"
        Text {
            objectName: "headerTitle"
            anchors { left: parent.left; leftMargin: Theme.margin; verticalCenter: parent.verticalCenter }
            text: parent.header.title || ""
            color: parent.header.textColor || Theme.ink
            font.pixelSize: 16
            font.weight: Font.Medium
        }
    }

    ListView {
        id: list
        objectName: "tblEvent"
        anchors.fill: parent
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        model: root.controller.tblEvent.rows
        onWidthChanged: root.controller.tblEvent.size = Qt.size(width, height)

        header: Column {
            width: list.width // qmllint disable unqualified
            SliderView {
                model: root.controller.slider // qmllint disable unqualified
                width: parent.width
                height: Math.round(parent.width * 0.52)
            }
            // A section without rows still shows its header.
            SectionHeader {
                visible: list.count === 0 && root.controller.sectionHeaders.length > 0 // qmllint disable unqualified
                header: root.controller.sectionHeaders.length > 0 ? root.controller.sectionHeaders[0] : ({}) // qmllint disable unqualified
                width: parent.width
            }
        }
        section.property: "section"
        section.delegate: SectionHeader {
            required property string section
            header: root.controller.sectionHeaders[Number(section)] || ({}) // qmllint disable unqualified
        }

        delegate: Rectangle {
            id: cell
            required property string reuseIdentifier
            required property var values
            required property size cellSize
            required property int row
            required property int section
            required property UITableView view
            readonly property var content: values
            objectName: reuseIdentifier
            width: ListView.view.width
            height: cellSize.height
            color: content.background || "white"
            Accessible.role: Accessible.Button
            Accessible.name: (content.lblTitle || "") + ", " + (content.lblDay || "") + " " + (content.lblMonth || "")

            Rectangle {
                objectName: "viewFrame"
                anchors { fill: parent; leftMargin: 12; rightMargin: 12; topMargin: 6; bottomMargin: 6 }
                opacity: cell.content.viewFrameAlpha || 1
                color: "white"
                border.width: 1
                border.color: Qt.rgba(0.2, 0.2, 0.2, 1)
                Rectangle {
                    id: date
                    objectName: "viewDateFrame"
                    anchors { left: parent.left; top: parent.top; bottom: parent.bottom; margins: 1 }
                    width: 72
                    color: cell.content.viewDateFrame || Theme.cerulean
                    Column {
                        anchors.centerIn: parent
                        Text {
                            objectName: "lblDay"
                            anchors.horizontalCenter: parent.horizontalCenter
                            text: cell.content.lblDay || ""
                            color: "white"
                            font.pixelSize: 28
                            font.bold: true
                        }
                        Text {
                            objectName: "lblMonth"
                            anchors.horizontalCenter: parent.horizontalCenter
                            text: cell.content.lblMonth || ""
                            color: "white"
                            font.pixelSize: Theme.captionSize
                        }
                    }
                }
                Column {
                    anchors { left: date.right; right: parent.right; verticalCenter: parent.verticalCenter; leftMargin: 12; rightMargin: 12 }
                    spacing: 4
                    Text {
                        objectName: "lblTitle"
                        width: parent.width
                        text: cell.content.lblTitle || ""
                        color: Theme.ink
                        font.pixelSize: Theme.bodySize
                        font.bold: true
                        wrapMode: Text.WordWrap
                        maximumLineCount: 2
                        elide: Text.ElideRight
                    }
                    Text {
                        objectName: "lblInfo"
                        width: parent.width
                        text: cell.content.lblInfo || ""
                        color: Theme.muted
                        font.pixelSize: Theme.captionSize
                        wrapMode: Text.WordWrap
                        maximumLineCount: 2
                        elide: Text.ElideRight
                    }
                }
            }
            MouseArea { anchors.fill: parent; onClicked: cell.view.selectRow(cell.row, cell.section) }
        }
    }

    Column {
        anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; margins: 32 }
        spacing: 16
        PImageView {
            model: root.controller.imgInfoBack
            anchors.horizontalCenter: parent.horizontalCenter
            width: 120; height: 120
        }
        PLabel {
            model: root.controller.lblInfoBack
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            color: Theme.muted
            font.pixelSize: Theme.bodySize
        }
    }
}
