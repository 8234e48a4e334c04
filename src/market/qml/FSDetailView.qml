import QtQuick
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Market

// Lines marked with a qmllint disable are right at run time: Qt 6.4's linter flags ids reached from inside
// a delegate, an inline or a loaded component (the pragma that allows them comes with 6.5), and cannot see properties
// inherited across the runtime's controls (its type registrar drops base classes named without their namespace).

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
            target: root.controller // qmllint disable type
            function onScrollToTop() { stocks.positionViewAtBeginning() }
        }
    }
}
