import QtQuick

// A main screen still to come: its title stands in the navigation bar.
Rectangle {
    objectName: "PendingViewController"
    color: "white"
}
