pragma ComponentBehavior: Bound

import QtQuick
import Ekinora.Platform
import Ekinora.Catalogue

// A plant-protection document filling the screen under the bar with its title.
Rectangle {
    id: root
    required property DocumentViewerViewController controller
    objectName: "DocumentViewerViewController"
    color: "white"
    PWebView { model: root.controller.webView; anchors.fill: parent }
}
