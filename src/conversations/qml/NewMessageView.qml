import QtQuick
import QtQuick.Controls
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Conversations

// A new question: its bar attached to the top, the title, the description, the attachments, and
// "Gönder" in a leaf-coloured bar below the fields, where the keyboard would be.
Rectangle {
    id: root
    required property NewMessageViewController controller
    objectName: "NewMessageViewController"
    color: Theme.page

    Rectangle {
        id: bar
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: 56
        color: Theme.card
        Text {
            anchors.centerIn: parent
            text: "Yeni Soru"
            color: Theme.ink
            font.pixelSize: Theme.headingSize
            font.bold: true
        }
        ActionButton {
            act: "closeView"
            text: "Kapat"
            anchors { right: parent.right; rightMargin: 4; verticalCenter: parent.verticalCenter }
            onClicked: root.controller.closeView()
        }
        Rectangle { anchors { left: parent.left; right: parent.right; bottom: parent.bottom } height: 1; color: Theme.line }
    }

    Column {
        id: fields
        anchors { left: parent.left; right: parent.right; top: bar.bottom; margins: Theme.margin }
        spacing: 12
        Caption { text: "Başlık" }
        PTextField {
            model: root.controller.txtQuestion
            width: parent.width
            font.pixelSize: Theme.bodySize
        }
        Caption { text: "Açıklama" }
        TextArea {
            id: description
            objectName: "txtDescription"
            width: parent.width
            height: 180
            wrapMode: TextEdit.Wrap
            font.pixelSize: Theme.bodySize
            text: root.controller.txtDescription.text
            color: text === "Mesajınızı giriniz..." ? Theme.muted : Theme.ink
            background: Rectangle { color: Theme.card; radius: Theme.radius; border.color: Theme.line }
            onActiveFocusChanged: if (activeFocus) root.controller.textViewShouldBeginEditing()
            onTextChanged: if (text !== root.controller.txtDescription.text) root.controller.txtDescription.text = text
        }
        Row {
            spacing: 12
            PButton { model: root.controller.btnImage; font.pixelSize: 15; flat: true }
            PButton { model: root.controller.btnVideo; font.pixelSize: 15; flat: true }
        }
        Rectangle {
            width: parent.width
            height: 50
            color: Theme.leaf
            radius: Theme.radius
            Button {
                objectName: "doneButtonPressed"
                anchors.fill: parent
                flat: true
                text: "Gönder"
                font.capitalization: Font.MixedCase
                font.pixelSize: 18
                font.weight: Font.Medium
                contentItem: Text {
                    text: "Gönder"
                    color: "white"
                    font.pixelSize: 18
                    font.weight: Font.Medium
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                }
                onClicked: root.controller.doneButtonPressed()
            }
        }
    }
}
