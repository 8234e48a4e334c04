import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import "qrc:/ekinora/platform/qml"

// Sign-in, the registration wizard and the consent pages as panels over one another.
Rectangle {
    id: root
    objectName: "LoginViewController"
    color: "white"

    readonly property color leaf: "#78b930"
    readonly property color ink: "#333333"

    component Title: Text {
        width: parent.width
        color: "#333333"
        font.pixelSize: 22
        font.bold: true
        wrapMode: Text.WordWrap
    }
    component Hint: Text {
        width: parent.width
        color: "#666666"
        font.pixelSize: 15
        wrapMode: Text.WordWrap
    }
    component MainButton: Button {
        id: b
        property string act: ""
        objectName: act
        width: parent.width
        implicitHeight: 50
        font.pixelSize: 17
        font.bold: true
        font.capitalization: Font.MixedCase
        background: Rectangle { radius: 6; color: b.down ? "#5f9a22" : "#78b930" }
        contentItem: Text {
            text: b.text
            font: b.font
            color: "white"
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
        }
        Accessible.name: text
        onClicked: controller[act]()
    }

    // Header with the name of the application.
    Rectangle {
        id: header
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: 200
        color: root.leaf
        Column {
            anchors.centerIn: parent
            spacing: 6
            Text { text: "Ekinora"; color: "white"; font.pixelSize: 40; font.bold: true; anchors.horizontalCenter: parent.horizontalCenter }
            Text { text: "Tarlanız cebinizde"; color: "white"; font.pixelSize: 17; anchors.horizontalCenter: parent.horizontalCenter }
        }
    }

    PView {
        model: viewLogin
        anchors { left: parent.left; right: parent.right; top: header.bottom; bottom: parent.bottom }

        PView {
            model: viewLoginPhone
            anchors { fill: parent; margins: 24 }
            Column {
                width: parent.width
                spacing: 16
                Title { text: "Giriş Yap" }
                Hint { text: "Cep telefonu numaranızı girin, size bir doğrulama kodu gönderelim." }
                PTextField { model: txtLoginPhone; width: parent.width; placeholderText: "05XX XXX XX XX"; Accessible.name: "Cep telefonu numarası" }
                MainButton { act: "getSmsCodeForLogin"; text: "Kod Gönder" }
                Hint { text: "Hesabınız yoksa aynı adımlarla kaydınızı oluşturabilirsiniz."; font.pixelSize: 13 }
            }
        }

        PView {
            model: viewLoginCode
            anchors { fill: parent; margins: 24 }
            Column {
                width: parent.width
                spacing: 16
                Title { text: "Doğrulama Kodu" }
                Hint { text: "Telefonunuza gönderilen kodu girin." }
                PTextField { model: txtLoginPhoneCode; width: parent.width; Accessible.name: "Cep telefonu numarası" }
                PTextField { model: txtLoginCode; width: parent.width; placeholderText: "SMS kodu"; Accessible.name: "SMS kodu" }
                MainButton { act: "validateSmsCodeForLogin"; text: "Giriş Yap" }
            }
        }
    }

    // The registration wizard; its steps are shown one at a time.
    PView {
        model: viewRegister
        anchors { left: parent.left; right: parent.right; top: header.bottom; bottom: parent.bottom }
        color: "white"

        PView {
            model: viewRegisterPhone
            anchors { fill: parent; margins: 24 }
            color: "white"
            Column {
                width: parent.width
                spacing: 16
                Title { text: "Kayıt Ol" }
                PTextField { model: txtRegisterPhone; width: parent.width; placeholderText: "05XX XXX XX XX"; Accessible.name: "Cep telefonu numarası" }
                MainButton { act: "getSmsCode"; text: "Kod Gönder" }
            }
        }
        PView {
            model: viewRegisterCode
            anchors { fill: parent; margins: 24 }
            color: "white"
            Column {
                width: parent.width
                spacing: 16
                Title { text: "Doğrulama Kodu" }
                PTextField { model: txtRegisterPhoneCode; width: parent.width; Accessible.name: "Cep telefonu numarası" }
                PTextField { model: txtRegisterCode; width: parent.width; placeholderText: "SMS kodu"; Accessible.name: "SMS kodu" }
                MainButton { act: "validateSmsCode"; text: "Doğrula" }
            }
        }
        PView { model: viewRegisterActivation; anchors.fill: parent; color: "white" }
        PView {
            model: viewRegisterInfo
            anchors { fill: parent; margins: 24 }
            color: "white"
            PView {
                model: memberShipView
                anchors.fill: parent
                color: "white"
                Column {
                    width: parent.width
                    spacing: 16
                    Title { text: "Üyelik Türü" }
                    Hint { text: "Ekinora'ya kim olarak katılıyorsunuz?" }
                    PButton { model: farmerButton; width: parent.width; text: "Çiftçiyim" }
                    PButton { model: dealerButton; width: parent.width; text: "Bayiyim" }
                }
            }
            PView {
                model: nameView
                anchors.fill: parent
                color: "white"
                Title { text: "Kişisel Bilgiler" }
            }
            PButton { model: devamButton; width: parent.width; anchors.bottom: parent.bottom; text: "Devam" }
        }
        PView {
            model: viewRegisterFarm
            anchors { fill: parent; margins: 24 }
            color: "white"
            PView { model: ciftciTarlaView; anchors.fill: parent; Title { text: "Tarlalarım" } }
            PView { model: bayiBilgileriView; anchors.fill: parent; Title { text: "Bayi Bilgileri" } }
        }
        PView {
            model: viewRegisterFinal
            anchors { fill: parent; margins: 24 }
            color: "white"
            Column {
                width: parent.width
                spacing: 24
                PLabel {
                    model: activationLabel
                    width: parent.width
                    font.pixelSize: 17
                    horizontalAlignment: Text.AlignHCenter
                }
                PButton { model: completeRegistrationButton; width: parent.width }
            }
        }
    }

    // The farewell after a logout.
    PView {
        model: viewLogout
        anchors.fill: parent
        color: "white"
        Column {
            anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; margins: 32 }
            spacing: 20
            Title { text: "Güle güle!"; horizontalAlignment: Text.AlignHCenter }
            Hint { text: "Oturumunuz kapatıldı. Yeniden görüşmek üzere."; horizontalAlignment: Text.AlignHCenter }
            MainButton { act: "loginBack"; text: "Giriş Ekranına Dön" }
        }
    }

    // Consent pages over everything.
    PView {
        model: viewKVKK
        anchors.fill: parent
        color: "white"
        PWebView { model: webKVKK; anchors { fill: parent; topMargin: 24 } }
    }
    PView {
        model: viewETK
        anchors.fill: parent
        color: "white"
        Column {
            anchors { fill: parent; margins: 24 }
            spacing: 12
            PButton { model: btn1Enb; width: parent.width; text: "SMS" }
            PButton { model: btn2Enb; width: parent.width; text: "E-posta" }
            PButton { model: btn3Enb; width: parent.width; text: "Reklam" }
        }
    }
    PView {
        model: viewETKWeb
        anchors.fill: parent
        color: "white"
        PWebView { model: webviewETK; anchors { fill: parent; topMargin: 24 } }
    }
    PView { model: viewNewProduce; anchors.fill: parent; color: "white" }
    PView { model: viewPlant; anchors.fill: parent; color: "white" }
    PView { model: viewProduct; anchors.fill: parent; color: "white" }
}
