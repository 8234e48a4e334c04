import QtQuick
import Ekinora.Platform

// A web view bound to its model. The web engine is loaded only once the view is first shown.
Item {
    id: root
    property WKWebView model: null
    // False: the view keeps the page at its left edge, without touching the page.
    property bool scrollsSideways: true
    objectName: model ? model.objectName : ""
    visible: model ? !model.hidden : true
    opacity: model ? model.alpha : 1
    clip: true

    // Shown: visible in a window, and still so once the call that changed it is over. While a screen's
    // view is made and placed its panels can pass through a visible state before the screen hides them
    // (and, before it is placed, an item counts as visible even under a hidden panel): the engine would
    // start for nothing.
    readonly property bool shown: visible && Window.window !== null && model !== null
    function settle() { engine.active = root.shown }
    onShownChanged: settling.restart()
    Component.onCompleted: settling.restart()
    // Once the change that moved it has settled.
    Timer { id: settling; interval: 0; onTriggered: root.settle() }

    Loader {
        id: engine
        anchors.fill: parent
        active: false
        source: "PWebEngineView.qml"
        onLoaded: {
            item.model = root.model
            item.scrollsSideways = Qt.binding(() => root.scrollsSideways)
        }
    }
}
