import QtQuick
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Shell

// A main screen still to come: its title stands in the navigation bar.
Rectangle {
    id: root
    required property PendingViewController controller
    objectName: "PendingViewController"
    color: "white"
}
