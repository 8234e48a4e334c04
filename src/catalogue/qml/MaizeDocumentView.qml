pragma ComponentBehavior: Bound

import QtQuick
import Ekinora.Platform
import Ekinora.Catalogue

// A seed document filling the screen under the bar with its title.
Rectangle {
    id: root
    required property MaizeDocumentViewController controller
    objectName: "MaizeDocumentViewController"
    color: "white"
    PWebView { model: root.controller.webView; anchors.fill: parent }
}
