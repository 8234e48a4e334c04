import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Accounts

// Sign-in, with the registration wizard, the crop editor and the consent pages in slots over it.
Rectangle {
    id: root
    required property LoginViewController controller
    objectName: "LoginViewController"
    color: "white"

    readonly property bool registering: !root.controller.viewRegister.hidden
    property Item registrationSlot: registrationHolder
    property Item cropEditorSlot: cropHolder
    property Item consentSlot: consentHolder

    // Header with the name of the application; lower while registering.
    Rectangle {
        id: header
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: root.registering ? 88 : 200
        color: Theme.leaf
        Column {
            anchors.centerIn: parent
            spacing: 6
            Text { text: "Ekinora"; color: "white"; font.pixelSize: root.registering ? 30 : 40; font.bold: true; anchors.horizontalCenter: parent.horizontalCenter }
            Text { text: "Tarlanız cebinizde"; color: "white"; font.pixelSize: 17; visible: !root.registering; anchors.horizontalCenter: parent.horizontalCenter }
        }
    }

    PView {
        model: root.controller.viewLogin
        anchors { left: parent.left; right: parent.right; top: header.bottom; bottom: parent.bottom }

        PView {
            model: root.controller.viewLoginPhone
            anchors { fill: parent; margins: 24 }
            Column {
                width: parent.width
                spacing: 16
                Title { text: "Giriş Yap" }
                Hint { text: "Cep telefonu numaranızı girin, size bir doğrulama kodu gönderelim." }
                PTextField { model: root.controller.txtLoginPhone; width: parent.width; placeholderText: "05XX XXX XX XX"; Accessible.name: "Cep telefonu numarası" }
                MainButton { act: "getSmsCodeForLogin"; onClicked: root.controller.getSmsCodeForLogin(); text: "Kod Gönder" }
                Hint { text: "Hesabınız yoksa aynı adımlarla kaydınızı oluşturabilirsiniz."; font.pixelSize: 13 }
            }
        }

        PView {
            model: root.controller.viewLoginCode
            anchors { fill: parent; margins: 24 }
            Column {
                width: parent.width
                spacing: 16
                Title { text: "Doğrulama Kodu" }
                Hint { text: "Telefonunuza gönderilen kodu girin." }
                PTextField { model: root.controller.txtLoginPhoneCode; width: parent.width; Accessible.name: "Cep telefonu numarası" }
                PTextField { model: root.controller.txtLoginCode; width: parent.width; placeholderText: "SMS kodu"; Accessible.name: "SMS kodu" }
                MainButton { act: "validateSmsCodeForLogin"; onClicked: root.controller.validateSmsCodeForLogin(); text: "Giriş Yap" }
            }
        }
    }

    // The registration wizard; its steps are shown one at a time.
    PView {
        model: root.controller.viewRegister
        anchors { left: parent.left; right: parent.right; top: header.bottom; bottom: parent.bottom }
        color: "white"

        PView {
            model: root.controller.viewRegisterPhone
            anchors { fill: parent; margins: 24 }
            color: "white"
            Column {
                width: parent.width
                spacing: 16
                Title { text: "Kayıt Ol" }
                PTextField { model: root.controller.txtRegisterPhone; width: parent.width; placeholderText: "05XX XXX XX XX"; Accessible.name: "Cep telefonu numarası" }
                MainButton { act: "getSmsCode"; onClicked: root.controller.getSmsCode(); text: "Kod Gönder" }
            }
        }
        PView {
            model: root.controller.viewRegisterCode
            anchors { fill: parent; margins: 24 }
            color: "white"
            Column {
                width: parent.width
                spacing: 16
                Title { text: "Doğrulama Kodu" }
                PTextField { model: root.controller.txtRegisterPhoneCode; width: parent.width; Accessible.name: "Cep telefonu numarası" }
                PTextField { model: root.controller.txtRegisterCode; width: parent.width; placeholderText: "SMS kodu"; Accessible.name: "SMS kodu" }
                MainButton { act: "validateSmsCode"; onClicked: root.controller.validateSmsCode(); text: "Doğrula" }
            }
        }
        // The wizard's steps, over the number and the code.
        Item { id: registrationHolder; anchors.fill: parent }
    }

    // The crop editor over the wizard.
    Item { id: cropHolder; anchors.fill: parent }

    // The farewell after a logout.
    PView {
        model: root.controller.viewLogout
        anchors.fill: parent
        color: "white"
        Column {
            anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; margins: 32 }
            spacing: 20
            Title { text: "Güle güle!"; horizontalAlignment: Text.AlignHCenter }
            Hint { text: "Oturumunuz kapatıldı. Yeniden görüşmek üzere."; horizontalAlignment: Text.AlignHCenter }
            MainButton { act: "loginBack"; onClicked: root.controller.loginBack(); text: "Giriş Ekranına Dön" }
        }
    }

    // The consent pages over everything.
    Item { id: consentHolder; anchors.fill: parent; z: 10 }
}
