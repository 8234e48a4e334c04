import QtQuick
import Ekinora.Platform
import Ekinora.Widgets

// Lines with a qmllint disable reach the screen from a delegate or a loaded component: the engine
// resolves them, Qt 6.4's linter cannot follow them.

// A drop-down list hanging from its button, unrolling up or down over the screen and closing the same
// way. `model` is the screen's open list, or null once the screen forgets it; `senders` are the items
// of the buttons a list may hang from. A forgotten list stays shown until its closing has played out.
// Place it above the screen's controls, filling them.
Item {
    id: root
    property DropDownList model: null
    property var senders: []
    property DropDownList shown: null

    // The button is looked up again whenever the list changes: a screen may hand the list over before
    // showing it.
    property Item senderItem: null

    onModelChanged: if (model) shown = model
    onShownChanged: refresh()
    onSendersChanged: refresh()
    onWidthChanged: refresh()
    onHeightChanged: refresh()
    Component.onCompleted: refresh()
    Connections {
        target: root.shown
        function onChanged() { root.refresh() }
    }

    function refresh() {
        var found = null
        if (shown)
            for (var i = 0; i < senders.length; ++i)
                if (senders[i] && senders[i].model === shown.btnSender) found = senders[i]
        if (senderItem !== found) senderItem = found
        syncSenderFrame()
    }

    readonly property bool up: shown !== null && shown.animationDirection === "up"
    readonly property bool down: shown !== null && shown.animationDirection === "down"

    // The model places the list by the button's frame, in this item's coordinates.
    function syncSenderFrame() {
        if (!shown || !senderItem) return
        var p = senderItem.mapToItem(root, 0, 0)
        shown.senderFrame = Qt.rect(p.x, p.y, senderItem.width, senderItem.height)
    }

    function pictureSource(name) {
        if (!name || name.length === 0) return ""
        return name.indexOf(":/") >= 0 ? name : "qrc:/ekinora/images/" + name + ".png"
    }

    Item {
        id: box
        objectName: root.shown ? root.shown.objectName : ""
        visible: (root.up || root.down) && !root.shown.hidden && height > 0
        x: root.shown ? root.shown.senderFrame.x : 0
        width: root.shown ? root.shown.senderFrame.width : 0
        // The list grows away from the button's edge: upwards from its top, downwards from its bottom.
        height: root.shown && root.shown.open ? root.shown.listHeight : 0
        y: !root.shown ? 0 : root.up ? root.shown.senderFrame.y - height
                                     : root.shown.senderFrame.y + root.shown.senderFrame.height
        Behavior on height { NumberAnimation { duration: root.shown ? root.shown.animationDuration * 1000 : 0 } }

        Rectangle {
            x: root.shown ? root.shown.shadowOffset.x : 0
            y: root.shown ? root.shown.shadowOffset.y : 0
            width: parent.width; height: parent.height
            color: "black"
            opacity: root.shown ? root.shown.shadowOpacity : 0
        }

        Rectangle {
            objectName: root.shown ? root.shown.table.objectName : ""
            anchors.fill: parent
            color: root.shown ? root.shown.tableBackgroundColor : "transparent"
            border.color: root.shown ? root.shown.tableBorderColor : "transparent"
            border.width: root.shown ? root.shown.tableBorderWidth : 0
            clip: true

            ListView {
                id: rows
                anchors.fill: parent
                anchors.margins: parent.border.width
                boundsBehavior: Flickable.StopAtBounds
                model: root.shown ? root.shown.table.rows : null
                delegate: Rectangle {
                    id: cell
                    required property string reuseIdentifier
                    required property var values
                    required property size cellSize
                    required property int row
                    required property UITableView view
                    objectName: reuseIdentifier
                    readonly property string title: values.title
                    width: ListView.view.width
                    height: cellSize.height
                    color: tap.pressed ? "#d9d9d9" : "white"
                    Accessible.role: Accessible.Button
                    Accessible.name: title

                    Row {
                        anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; leftMargin: 15; rightMargin: 15 }
                        spacing: 12
                        Image {
                            id: picture
                            source: root.pictureSource(cell.values.image) // qmllint disable unqualified
                            visible: String(source).length > 0
                            height: Math.min(cell.height - 8, 32); width: height
                            fillMode: Image.PreserveAspectFit
                            anchors.verticalCenter: parent.verticalCenter
                        }
                        Text {
                            text: cell.title
                            width: parent.width - (picture.visible ? picture.width + parent.spacing : 0)
                            anchors.verticalCenter: parent.verticalCenter
                            color: "black"
                            font.pixelSize: root.shown ? root.shown.cellFontSize : 16 // qmllint disable unqualified
                            font.weight: Font.Medium
                            horizontalAlignment: Text.AlignLeft
                            elide: Text.ElideRight
                        }
                    }
                    // Separators run the full width: the cells keep no margins.
                    Rectangle {
                        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
                        height: 1
                        color: root.shown ? root.shown.separatorColor : "transparent" // qmllint disable unqualified
                    }
                    MouseArea {
                        id: tap
                        anchors.fill: parent
                        onClicked: cell.view.selectRow(cell.row)
                    }
                }
            }
        }
    }
}
