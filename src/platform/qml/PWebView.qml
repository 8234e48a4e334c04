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

    Loader {
        id: engine
        anchors.fill: parent
        active: root.visible && root.model !== null
        source: "PWebEngineView.qml"
        onLoaded: {
            item.model = root.model
            item.scrollsSideways = Qt.binding(() => root.scrollsSideways)
        }
    }
}
