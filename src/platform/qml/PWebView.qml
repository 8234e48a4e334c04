import QtQuick
import Ekinora.Platform

// qmllint disable type
// Qt 6.4's type registrar drops a base class named without its namespace (Label : View), so the linter
// cannot see the inherited properties of the runtime's controls (objectName, hidden, alpha, title...).

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
