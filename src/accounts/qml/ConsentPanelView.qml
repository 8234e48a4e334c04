import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Accounts

// Lines with a qmllint disable reach the screen from a delegate or a loaded component: the engine
// resolves them, Qt 6.4's linter cannot follow them.

// The consent pages over the host's view: the conditions of use (registration only), the message
// permissions and the information notice; the page brought to the front last stands on top.
Item {
    id: root
    required property ConsentPanel controller

    // A permission's heading: a button that stays switched off.
    component Heading: PButton {
        id: heading
        implicitHeight: 30
        leftPadding: 0
        background: Item {}
        contentItem: Text { text: heading.text; color: "#8a8a8a"; font.pixelSize: 14; font.bold: true; verticalAlignment: Text.AlignBottom }
    }

    // The conditions of use.
    Loader {
        anchors.fill: parent
        active: root.controller.withTerms
        z: root.controller.frontPanel === "viewKVKK" ? 12 : 10
        // The page is made only with the terms.
        sourceComponent: PView {
            model: root.controller.termsView // qmllint disable unqualified
            color: "white"
            MouseArea { anchors.fill: parent }
            Title { id: termsTitle; text: "Kullanım Şartları"; x: 24; y: 24; width: parent.width - 48 }
            PWebView { model: root.controller.webKVKK; scrollsSideways: false; anchors { left: parent.left; right: parent.right; top: termsTitle.bottom; bottom: termsButton.top; margins: 16 } } // qmllint disable unqualified
            MainButton {
                id: termsButton
                act: "acceptKVKK"
                text: "Okudum, Onaylıyorum"
                anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: 24 }
                onClicked: root.controller.acceptKVKK() // qmllint disable unqualified
            }
        }
    }

    // The three permissions.
    PView {
        model: root.controller.permissionsView
        anchors.fill: parent
        color: "white"
        z: root.controller.frontPanel === root.controller.permissionsView.objectName ? 12 : 10
        MouseArea { anchors.fill: parent }
        Column {
            anchors { left: parent.left; right: parent.right; top: parent.top; margins: 24 }
            spacing: 12
            Title { text: "İletişim İzinleri"; width: parent.width }
            Text {
                width: parent.width
                color: "#666666"
                font.pixelSize: 15
                wrapMode: Text.WordWrap
                text: root.controller.permissionsHint
            }
            // The rows take the page's final width (the phone's width less the margins) from the
            // start: a radio button whose width changes after it is made feeds its width back into its
            // own size.
            Heading { model: root.controller.btn1Enb; width: 342; visible: root.controller.withTerms }
            RadioButton { model: root.controller.radioETK1; width: 342 }
            Heading { model: root.controller.btn2Enb; width: 342; visible: root.controller.withTerms }
            RadioButton { model: root.controller.radioETK2; width: 342 }
            Heading { model: root.controller.btn3Enb; width: 342; visible: root.controller.withTerms }
            RadioButton { model: root.controller.radioETK3; width: 342 }
            ActionButton {
                act: root.controller.openNoticeAction
                text: root.controller.noticeLink
                leftPadding: 0
                onClicked: root.controller.openNotice()
            }
        }
        MainButton {
            act: root.controller.permissionsAction
            text: root.controller.permissionsButton
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: 24 }
            onClicked: root.controller.confirmPermissions()
        }
    }

    // The information notice.
    PView {
        model: root.controller.noticeView
        anchors.fill: parent
        color: "white"
        z: root.controller.frontPanel === root.controller.noticeView.objectName ? 12 : 11
        MouseArea { anchors.fill: parent }
        Title {
            id: noticeTitle
            text: root.controller.noticeTitle
            visible: text.length > 0
            x: 24; y: 24; width: parent.width - 48
            height: visible ? implicitHeight : 0
        }
        PWebView {
            model: root.controller.webviewETK
            anchors { left: parent.left; right: parent.right; top: noticeTitle.bottom; bottom: noticeButton.top; margins: 16 }
        }
        MainButton {
            id: noticeButton
            act: root.controller.closeNoticeAction
            text: root.controller.noticeButton
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: 24 }
            onClicked: root.controller.closeNotice()
        }
    }
}
