import QtQuick

// A line of explanation under a title, the width of its column.
Text {
    width: parent ? parent.width : implicitWidth
    color: "#666666"
    font.pixelSize: 15
    wrapMode: Text.WordWrap
}
