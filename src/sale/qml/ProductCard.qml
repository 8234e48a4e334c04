import QtQuick
import Ekinora.Platform
import Ekinora.Widgets

// The product card over the camera: the package's picture, its name, and the card's own buttons
// below. A touch on the bare card stays on it (it neither closes it nor reaches the screen).
PView {
    id: card
    property UIImageView image: null
    property UILabel name: null
    // Shown under the picture until the product's own has come.
    property string placeholder: ""
    default property alias buttons: buttonColumn.data
    signal touchedCard()

    color: Theme.card
    radius: 12
    height: content.implicitHeight + 32

    MouseArea { anchors.fill: parent; onPressed: card.touchedCard() }

    Column {
        id: content
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 16 }
        spacing: 12
        Item {
            width: parent.width
            height: 160
            Image {
                anchors.fill: parent
                fillMode: Image.PreserveAspectFit
                visible: card.placeholder.length > 0 && picture.status !== Image.Ready
                source: card.placeholder.length > 0 ? "qrc:/ekinora/images/" + card.placeholder + ".png" : ""
            }
            PImageView {
                id: picture
                anchors.fill: parent
                model: card.image
            }
        }
        PLabel {
            width: parent.width
            model: card.name
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
            maximumLineCount: 3
            font.pixelSize: Theme.headingSize
            font.bold: true
            color: Theme.ink
        }
        Column {
            id: buttonColumn
            width: parent.width
            spacing: 8
        }
    }
}
