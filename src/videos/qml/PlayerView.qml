import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtMultimedia
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Videos

// The full-screen player. While the interface stands in landscape the picture and its controls turn
// a quarter to fill the phone's long side; in portrait they lie across it.
Rectangle {
    id: root
    required property AVPlayerViewController controller
    objectName: "PlayerViewController"
    color: "black"

    Item {
        id: stage
        objectName: "playerStage"
        readonly property bool landscape: root.controller.landscape
        anchors.centerIn: parent
        width: landscape ? root.height : root.width
        height: landscape ? root.width : root.height
        rotation: landscape ? 90 : 0

        // The picture needs a graphics device: Qt Multimedia 6.4's video output corrupts memory under the
        // software scene graph (the offscreen platform), where the video plays without one.
        Loader {
            id: output
            objectName: "videoOutput"
            anchors.fill: parent
            active: GraphicsInfo.api !== GraphicsInfo.Software
            sourceComponent: VideoOutput {}
        }
        MediaPlayer {
            id: media
            videoOutput: output.item
            source: root.controller.player ? root.controller.player.url : ""
            onMediaStatusChanged: if (mediaStatus === MediaPlayer.EndOfMedia && root.controller.player) root.controller.player.reachedEnd()
        }
        Connections {
            target: root.controller.player
            function onPlayingChanged() { if (root.controller.player.playing) media.play() }
        }
        Connections {
            target: root.controller
            function onPlayerChanged() { if (root.controller.player && root.controller.player.playing) media.play() }
        }
        BusyIndicator {
            anchors.centerIn: parent
            running: !root.controller.player
            visible: running
        }
        Button {
            objectName: "close"
            anchors { left: parent.left; top: parent.top; margins: 12 }
            width: 72; height: 48
            flat: true
            text: "Bitti"
            font.capitalization: Font.MixedCase
            font.pixelSize: Theme.bodySize
            Material.foreground: "white"
            Accessible.name: "Videoyu kapat"
            onClicked: root.controller.close()
        }
        Text {
            objectName: "playbackState"
            anchors { right: parent.right; top: parent.top; margins: 20 }
            color: "#ccffffff"
            font.pixelSize: Theme.captionSize
            text: media.playbackState === MediaPlayer.PlayingState ? "Oynatılıyor" : media.mediaStatus === MediaPlayer.EndOfMedia ? "Sona erdi" : ""
        }
    }
}
