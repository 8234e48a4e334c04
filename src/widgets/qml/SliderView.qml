import QtQuick
import QtQuick.Controls
import Ekinora.Platform
import Ekinora.Widgets

// A picture slider: the pages side by side, dragged by the user or moved by the model every five
// seconds, with the page dots over them. A page shows the placeholder until its picture has come.
Item {
    id: root
    property Slider model: null
    readonly property ScrollView scroll: model ? model.slider : null

    objectName: model ? model.objectName : ""
    visible: model ? !model.hidden : true
    opacity: model ? model.alpha : 1
    clip: true

    function syncSize() { if (model) model.size = Qt.size(width, height) }
    onWidthChanged: syncSize()
    onHeightChanged: syncSize()
    onModelChanged: syncSize()
    Component.onCompleted: syncSize()

    Flickable {
        id: flick
        objectName: root.scroll ? root.scroll.objectName : ""
        anchors.fill: parent
        contentWidth: root.scroll ? root.scroll.contentSize.width : 0
        contentHeight: height
        flickableDirection: Flickable.HorizontalFlick
        boundsBehavior: Flickable.StopAtBounds
        Accessible.name: "Resimler"

        Repeater {
            model: root.scroll ? root.scroll.imageViews : []
            delegate: Item {
                id: page
                required property SlideImageView modelData
                x: page.modelData.frame.x
                y: page.modelData.frame.y
                width: page.modelData.frame.width
                height: page.modelData.frame.height
                Image {
                    anchors.fill: parent
                    visible: remote.status !== Image.Ready
                    source: page.modelData.image.length > 0 ? "qrc:/ekinora/images/" + page.modelData.image + ".png" : ""
                    fillMode: Image.Stretch
                }
                Image {
                    id: remote
                    anchors.fill: parent
                    asynchronous: true
                    source: page.modelData.imageUrl
                    fillMode: Image.Stretch
                }
            }
        }

        // What the user drags goes to the model; paging ends a drag on the nearest page.
        onContentXChanged: if (root.scroll && (dragging || flicking)) root.scroll.userScroll(contentX, contentY)
        onMovementEnded: {
            if (!root.scroll || width <= 0 || !root.scroll.pagingEnabled) return
            var page = Math.round(contentX / width)
            var last = Math.max(0, Math.ceil(contentWidth / width) - 1)
            snap.to = Math.max(0, Math.min(page, last)) * width
            snap.restart()
        }
    }

    NumberAnimation {
        id: snap
        target: flick; property: "contentX"; duration: 200; easing.type: Easing.OutCubic
        onFinished: if (root.scroll) root.scroll.userScroll(flick.contentX, flick.contentY)
    }
    NumberAnimation { id: slide; target: flick; property: "contentX"; easing.type: Easing.InOutQuad }

    Connections {
        target: root.scroll
        function onOffsetAnimated(duration) {
            snap.stop()
            slide.stop()
            slide.to = root.scroll.contentOffset.x
            slide.duration = duration * 1000
            slide.start()
        }
    }

    PageIndicator {
        objectName: root.model ? root.model.pagger.objectName : ""
        visible: root.model ? !root.model.pagger.hidden : false
        count: root.model ? root.model.pagger.numberOfPages : 0
        currentIndex: root.model ? root.model.pagger.currentPage : 0
        anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom; bottomMargin: 4 }
        Accessible.name: "Sayfa " + (currentIndex + 1) + " / " + count
    }
}
