pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtMultimedia
import Ekinora.Catalogue

// A film of the media strip, full screen on black, with a close button.
Rectangle {
    id: root
    required property PlayerViewController controller
    objectName: "PlayerViewController"
    color: "black"
    MediaPlayer {
        id: player
        source: root.controller.playerUrl
        videoOutput: output
        onSourceChanged: if (root.controller.playing) play()
    }
    readonly property bool playing: controller.playing
    onPlayingChanged: if (playing) player.play()
    VideoOutput { id: output; anchors.fill: parent }
    MouseArea { anchors.fill: parent; onClicked: player.playbackState === MediaPlayer.PlayingState ? player.pause() : player.play() }
    Button {
        objectName: "close"
        anchors { right: parent.right; top: parent.top; margins: 8 }
        width: 48; height: 48
        flat: true
        text: "✕"
        font.pixelSize: 22
        palette.buttonText: "white"
        Accessible.name: "Kapat"
        onClicked: root.controller.close()
    }
}
