import QtQuick
import Ekinora.Platform
import Ekinora.Widgets

// The count badge of a bar button item, drawn over its button (the bar loads it for an item that names
// it): the model's label at its frame, bouncing when the value changes and shrinking away when removed.
Item {
    id: root
    property BadgeBarButtonItem model: null
    readonly property BadgeLabel label: model ? model.badge : null

    // The item's view is this button; the badge's default place is worked out from its width.
    function reportWidth() { if (model) model.viewWidth = width }
    onWidthChanged: reportWidth()
    onModelChanged: reportWidth()
    Component.onCompleted: reportWidth()

    Rectangle {
        id: badge
        objectName: "badge"
        visible: root.label !== null && !root.label.hidden
        x: root.label ? root.label.frame.x : 0
        y: root.label ? root.label.frame.y : 0
        width: root.label ? root.label.frame.width : 0
        height: root.label ? root.label.frame.height : 0
        radius: root.label ? root.label.cornerRadius : 0
        color: root.label ? root.label.backgroundColor : "transparent"
        clip: root.label ? root.label.clipsToBounds : false
        scale: root.label ? root.label.scale : 1
        Behavior on x { NumberAnimation { duration: 200 } }
        Behavior on width { NumberAnimation { duration: 200 } }
        Behavior on height { NumberAnimation { duration: 200 } }
        Behavior on scale { NumberAnimation { duration: 200 } }
        transform: Scale { id: bounce; origin.x: badge.width / 2; origin.y: badge.height / 2 }
        Accessible.name: root.label ? root.label.text : ""

        Text {
            anchors.centerIn: parent
            text: root.label ? root.label.text : ""
            color: root.label ? root.label.textColor : "white"
            font: root.label ? root.label.font : Qt.font({ pixelSize: 12 })
            horizontalAlignment: Text.AlignHCenter
        }
    }

    // "transform.scale" from 1.5 to 1.0 in 0.2 s, eased by the control points (0.4, 1.3) and (1.0, 1.0).
    ParallelAnimation {
        id: bounceAnimation
        NumberAnimation { target: bounce; property: "xScale"; from: 1.5; to: 1.0; duration: 200; easing.type: Easing.Bezier; easing.bezierCurve: [0.4, 1.3, 1.0, 1.0, 1.0, 1.0] }
        NumberAnimation { target: bounce; property: "yScale"; from: 1.5; to: 1.0; duration: 200; easing.type: Easing.Bezier; easing.bezierCurve: [0.4, 1.3, 1.0, 1.0, 1.0, 1.0] }
    }
    Connections {
        target: root.model
        function onBounceAnimationAdded() { bounceAnimation.restart() }
    }
}
