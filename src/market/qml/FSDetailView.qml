import QtQuick
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Market

// One crop's prices by variety and city.
Rectangle {
    id: root
    required property FSDetailViewController controller
    objectName: "FSDetailViewController"
    color: Theme.page

    ListView {
        id: stocks
        objectName: "tblStocks"
        anchors.fill: parent
        clip: true
        topMargin: 6
        bottomMargin: 8
        boundsBehavior: Flickable.StopAtBounds
        model: root.controller.tblStocks.rows
        onWidthChanged: root.controller.tblStocks.size = Qt.size(width, height)
        delegate: StockRow {}
        Connections {
            target: root.controller
            function onScrollToTop() { stocks.positionViewAtBeginning() }
        }
    }
}
