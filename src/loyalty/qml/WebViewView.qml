import QtQuick
import Ekinora.Platform
import Ekinora.Loyalty

// The loyalty club's portal, filling the screen.
Rectangle {
    id: root
    required property WebViewViewController controller
    objectName: "WebViewViewController"
    color: "white"

    PWebView {
        model: root.controller.webview
        anchors.fill: parent
    }
}
