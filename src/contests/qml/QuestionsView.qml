import QtQuick
import QtQuick.Controls
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Contests

// One question: its band with the counter, the way of answering it (choices, a written answer or a
// photograph) and the button that sends the answer; the result panel comes up over the next question.
Rectangle {
    id: root
    required property QuestionsViewController controller
    objectName: "QuestionsViewController"
    color: Theme.page

    // A tap outside a text field ends its editing.
    MouseArea { anchors.fill: parent; onClicked: root.forceActiveFocus() }

    PView {
        id: band
        model: root.controller.viewQuestion
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: Math.max(130, question.implicitHeight + 64)
        gradient: Gradient {
            orientation: Gradient.Horizontal
            GradientStop { position: 0.0; color: Theme.cerulean }
            GradientStop { position: 1.0; color: Theme.leaf }
        }
        PLabel {
            model: root.controller.lblQuestionNumber
            anchors { left: parent.left; top: parent.top; margins: Theme.margin }
            color: "white"
            font.pixelSize: 14
            font.bold: true
        }
        PLabel {
            model: root.controller.lblDuration
            anchors { right: parent.right; top: parent.top; margins: Theme.margin }
            color: "#e8ffffff"
            font.pixelSize: 13
        }
        PLabel {
            id: question
            model: root.controller.lblQuestion
            anchors { left: parent.left; right: parent.right; top: parent.top; topMargin: 44; leftMargin: Theme.margin; rightMargin: Theme.margin }
            color: "white"
            font.pixelSize: 18
            font.bold: true
            wrapMode: Text.WordWrap
        }
    }

    Item {
        id: answerArea
        anchors { left: parent.left; right: parent.right; top: band.bottom; bottom: submit.top; bottomMargin: 12 }

        ListView {
            id: answers
            objectName: "collAnswers"
            visible: !root.controller.collAnswers.hidden
            anchors.fill: parent
            clip: true
            spacing: 10
            topMargin: Theme.margin
            bottomMargin: Theme.margin
            boundsBehavior: Flickable.StopAtBounds
            model: root.controller.collAnswers.rows
            onWidthChanged: root.controller.collAnswers.size = Qt.size(width, height)
            delegate: Item {
                id: cell
                required property string reuseIdentifier
                required property var values
                required property size cellSize
                required property int row
                required property UITableView view
                objectName: reuseIdentifier
                width: ListView.view.width
                height: Math.max(cellSize.height, reuseIdentifier === "AnswerCell" ? Theme.touch : 0)
                Accessible.role: Accessible.CheckBox
                Accessible.name: cell.values.lblAnswer || "Cevabınız"
                Accessible.checked: cell.values.picked || false

                Rectangle {
                    objectName: "viewAnswerBack"
                    x: 16
                    width: cell.cellSize.width
                    height: parent.height
                    radius: cell.values.cornerRadius || 0
                    border.width: cell.values.borderWidth || 0
                    border.color: cell.values.borderColor || Theme.ink
                    color: Theme.card
                    clip: true

                    // A choice: its text, the line before the check box and the check.
                    Text {
                        objectName: "lblAnswer"
                        visible: cell.reuseIdentifier === "AnswerCell"
                        anchors { left: parent.left; leftMargin: 14; right: parent.right; rightMargin: 60; verticalCenter: parent.verticalCenter }
                        text: cell.values.lblAnswer || ""
                        color: Theme.ink
                        font.pixelSize: 14
                        wrapMode: Text.WordWrap
                    }
                    Rectangle {
                        objectName: "imgCheckRightBorder"
                        visible: cell.reuseIdentifier === "AnswerCell"
                        anchors { right: parent.right; rightMargin: 48; top: parent.top; bottom: parent.bottom }
                        width: 1
                        color: cell.values.imgCheckRightBorder || Theme.ink
                    }
                    Image {
                        objectName: "imgCheck"
                        visible: cell.reuseIdentifier === "AnswerCell" && (cell.values.imgCheck || "").length > 0
                        anchors { right: parent.right; rightMargin: 12; verticalCenter: parent.verticalCenter }
                        width: 24; height: 24
                        source: (cell.values.imgCheck || "").length > 0 ? "qrc:/ekinora/images/" + cell.values.imgCheck + ".png" : ""
                    }
                    // The text behind the last choice.
                    TextArea {
                        id: cellText
                        objectName: "textAnswer"
                        visible: cell.reuseIdentifier === "AnswerTextCell"
                        anchors { fill: parent; margins: 2 }
                        font.pixelSize: 14
                        wrapMode: TextEdit.Wrap
                        background: null
                        leftPadding: 8
                        color: text === "Cevabınızı yazınız.." ? Theme.muted : Theme.ink
                        text: cell.values.textAnswer || ""
                        Accessible.name: "Cevabınız"
                        onActiveFocusChanged: {
                            if (activeFocus && cell.values.placeholder && text === cell.values.textAnswer) text = ""
                            if (!activeFocus && visible) root.controller.textViewDidEndEditing(false, text)
                        }
                    }
                }
                MouseArea {
                    enabled: cell.reuseIdentifier === "AnswerCell"
                    anchors.fill: parent
                    onClicked: cell.view.selectRow(cell.row)
                }
            }
        }

        // A written answer.
        PView {
            model: root.controller.viewTextAnswer
            anchors { fill: parent; margins: Theme.margin }
            Rectangle {
                anchors { left: parent.left; right: parent.right; top: parent.top }
                height: Math.min(parent.height, 200)
                radius: root.controller.textAnswer.cornerRadius
                border.width: root.controller.textAnswer.borderWidth
                border.color: root.controller.textAnswer.borderColor
                color: Theme.card
                TextArea {
                    id: ownText
                    objectName: "textAnswer"
                    anchors.fill: parent
                    padding: 8
                    font.pixelSize: Theme.bodySize
                    wrapMode: TextEdit.Wrap
                    background: null
                    text: root.controller.textAnswer.text
                    color: text === "Cevabınızı yazınız.." ? Theme.muted : Theme.ink
                    Accessible.name: "Cevabınız"
                    onTextChanged: if (root.controller.textAnswer.text !== text) root.controller.textAnswer.text = text
                    onActiveFocusChanged: {
                        if (activeFocus) root.controller.textViewDidBeginEditing(true)
                        else root.controller.textViewDidEndEditing(true, text)
                    }
                }
            }
        }

        // A photograph.
        PView {
            model: root.controller.viewPhotoAnswer
            anchors { fill: parent; margins: Theme.margin }
            Rectangle {
                id: frame
                anchors { left: parent.left; right: parent.right; top: parent.top; bottom: rePhoto.top; bottomMargin: 8 }
                radius: Theme.radius
                color: root.controller.imagePhoto.backgroundColor.a > 0 ? root.controller.imagePhoto.backgroundColor : "#e9ece5"
                border.color: Theme.line
                PImageView {
                    model: root.controller.imagePhoto
                    anchors { fill: parent; margins: 4 }
                }
                Column {
                    visible: String(root.controller.imagePhoto.imageUrl).length === 0
                    anchors.centerIn: parent
                    spacing: 8
                    Text { anchors.horizontalCenter: parent.horizontalCenter; text: "+"; color: Theme.cerulean; font.pixelSize: 44 }
                    Text { anchors.horizontalCenter: parent.horizontalCenter; text: "Fotoğraf Ekle"; color: Theme.cerulean; font.pixelSize: Theme.bodySize; font.bold: true }
                }
                MouseArea {
                    objectName: "addImage"
                    enabled: String(root.controller.imagePhoto.imageUrl).length === 0
                    anchors.fill: parent
                    Accessible.role: Accessible.Button
                    Accessible.name: "Fotoğraf Ekle"
                    onClicked: root.controller.addImage()
                }
            }
            PButton {
                id: rePhoto
                model: root.controller.buttonRePhoto
                anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom }
                flat: true
                height: visible ? implicitHeight : 0
            }
        }
    }

    FilledButton {
        id: submit
        model: root.controller.buttonSubmit
        fill: root.controller.buttonSubmit.backgroundColor
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: Theme.margin }
    }

    // The result of the answer just sent, over the next question.
    PView {
        model: root.controller.viewResult
        anchors.fill: parent
        color: Theme.shade
        MouseArea { anchors.fill: parent }
        Rectangle {
            anchors.centerIn: parent
            width: parent.width - 48
            height: panel.height
            radius: 10
            color: Theme.card
            clip: true
            Column {
                id: panel
                width: parent.width
                PView {
                    model: root.controller.imgResultTop
                    width: parent.width
                    height: 64
                    gradient: Gradient {
                        orientation: Gradient.Horizontal
                        GradientStop { position: 0.0; color: Theme.cerulean }
                        GradientStop { position: 1.0; color: Theme.leaf }
                    }
                    Text {
                        anchors.centerIn: parent
                        text: "Cevabınız kaydedildi"
                        color: "white"
                        font.pixelSize: Theme.headingSize
                        font.bold: true
                    }
                }
                Item { width: 1; height: 16 }
                Row {
                    anchors.horizontalCenter: parent.horizontalCenter
                    spacing: 32
                    PLabel { model: root.controller.lblResultTrue; color: Theme.leaf; font.pixelSize: 22; font.bold: true }
                    PLabel { model: root.controller.lblResultFalse; color: Theme.danger; font.pixelSize: 22; font.bold: true }
                }
                Item { width: 1; height: 8 }
                PLabel {
                    model: root.controller.lblResultDuration
                    anchors.horizontalCenter: parent.horizontalCenter
                    color: Theme.muted
                    font.pixelSize: Theme.captionSize
                }
                Item { width: 1; height: 8 }
                Row {
                    anchors.horizontalCenter: parent.horizontalCenter
                    spacing: 8
                    ActionButton { act: "openResultSegue"; text: "Çekiliş Bilgisi"; onClicked: root.controller.openResultSegue() }
                    ActionButton { act: "closeResultView"; text: "Devam Et"; font.bold: true; onClicked: root.controller.closeResultView() }
                }
                Item { width: 1; height: 8 }
            }
        }
    }
}
