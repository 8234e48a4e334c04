import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Accounts

// Sign-in, the registration wizard and the consent pages as panels over one another.
Rectangle {
    id: root
    required property LoginViewController controller
    objectName: "LoginViewController"
    color: "white"

    readonly property color leaf: "#78b930"
    readonly property color ink: "#333333"
    readonly property color line: "#d5d5d5"
    readonly property bool registering: !root.controller.viewRegister.hidden
    property Item cropEditorSlot: cropHolder
    property Item consentSlot: consentHolder

    component Title: Text {
        width: parent.width
        color: root.ink
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
    // The filled look of the main buttons, drawn here so that it needs no shader effect (the raised
    // style's shadow layer draws nothing where the scene graph renders in software).
    component Fill: Rectangle {
        property Item button: parent
        radius: 4
        color: !button.enabled ? "#c8c8c8" : button.down ? Qt.darker(root.leaf, 1.15) : root.leaf
    }
    component FillText: Text {
        property Item button: parent
        text: button.text
        font: button.font
        color: "white"
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
    // A button that only calls the screen's action of its name.
    component MainButton: Button {
        id: main
        font.capitalization: Font.MixedCase
        property string act: ""
        objectName: act
        width: parent.width
        implicitHeight: 50
        font.pixelSize: 17
        font.bold: true
        background: Fill { button: main }
        contentItem: FillText { button: main }
        Accessible.name: text
        onClicked: controller[act]()
    }
    component TextAction: Button {
        font.capitalization: Font.MixedCase
        property string act: ""
        objectName: act
        flat: true
        implicitHeight: 48
        font.pixelSize: 16
        Material.foreground: root.leaf
        Accessible.name: text
        onClicked: controller[act]()
    }
    // A control's button in the look of the main buttons.
    component LeafButton: PButton {
        id: leafButton
        width: parent.width
        implicitHeight: 50
        font.pixelSize: 17
        font.bold: true
        background: Fill { button: leafButton }
        contentItem: FillText { button: leafButton }
    }
    // A place field: the text shows the pick, the button over it opens the list.
    component PlaceField: Item {
        id: place
        property QtObject field: null
        property QtObject button: null
        property string purpose: ""
        readonly property Item buttonItem: opener
        width: parent.width
        height: 48
        PTextField { model: place.field; anchors.fill: parent; readOnly: true; rightPadding: 36 }
        Text {
            text: "▾"
            color: root.leaf
            font.pixelSize: 18
            anchors { right: parent.right; rightMargin: 12; verticalCenter: parent.verticalCenter }
            rotation: root.controller.dropDownCityCounty && root.controller.dropDownCityCounty.btnSender === place.button
                      && root.controller.dropDownCityCounty.senderImageFlipped ? 180 : 0
        }
        PButton {
            id: opener
            model: place.button
            anchors.fill: parent
            background: Item {}
            contentItem: Item {}
            Accessible.name: place.purpose
        }
    }

    // Header with the name of the application; lower while registering.
    Rectangle {
        id: header
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: root.registering ? 88 : 200
        color: root.leaf
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
                MainButton { act: "getSmsCodeForLogin"; text: "Kod Gönder" }
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
                MainButton { act: "validateSmsCodeForLogin"; text: "Giriş Yap" }
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
                MainButton { act: "getSmsCode"; text: "Kod Gönder" }
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
                MainButton { act: "validateSmsCode"; text: "Doğrula" }
            }
        }
        PView { model: root.controller.viewRegisterActivation; anchors.fill: parent; color: "white" }

        // Who registers, then the person and the place.
        PView {
            model: root.controller.viewRegisterInfo
            anchors.fill: parent
            color: "white"
            PView {
                model: root.controller.memberShipView
                anchors { fill: parent; margins: 24 }
                color: "white"
                Column {
                    width: parent.width
                    spacing: 16
                    Title { text: "Üyelik Türü" }
                    Hint { text: "Ekinora'ya kim olarak katılıyorsunuz?" }
                    LeafButton { model: root.controller.farmerButton }
                    LeafButton { model: root.controller.dealerButton }
                }
            }
            PView {
                model: root.controller.nameView
                anchors { fill: parent; margins: 24; bottomMargin: 96 }
                color: "white"
                Column {
                    width: parent.width
                    spacing: 14
                    Title { text: "Kişisel Bilgiler" }
                    Hint { text: "Adınızı, soyadınızı ve yaşadığınız yeri girin. E-posta isteğe bağlıdır." }
                    PTextField { model: root.controller.txtName; width: parent.width }
                    PTextField { model: root.controller.txtLastName; width: parent.width }
                    PTextField { model: root.controller.txtMail; width: parent.width; inputMethodHints: Qt.ImhEmailCharactersOnly }
                    PlaceField { id: cityPlace; field: root.controller.txtCity; button: root.controller.btnCity; purpose: "İl seçimi" }
                    PlaceField { id: countyPlace; field: root.controller.txtCounty; button: root.controller.btnCounty; purpose: "İlçe seçimi" }
                }
            }
            LeafButton {
                model: root.controller.devamButton
                anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: 24 }
                width: undefined
            }
        }

        // A farmer's crops, or a dealer's shop.
        PView {
            model: root.controller.viewRegisterFarm
            anchors.fill: parent
            color: "white"
            PView {
                model: root.controller.ciftciTarlaView
                anchors { fill: parent; bottomMargin: 136 }
                Column {
                    id: cropsHead
                    anchors { left: parent.left; right: parent.right; top: parent.top; margins: 24 }
                    spacing: 8
                    Title { text: "Tarlalarım" }
                    Hint { text: "En fazla 3 tarla ekleyebilirsiniz. Tarla eklemeden de devam edebilirsiniz." }
                }
                ListView {
                    id: farmsList
                    objectName: root.controller.collFarms.objectName
                    visible: !root.controller.collFarms.hidden
                    anchors { left: parent.left; right: parent.right; top: cropsHead.bottom; bottom: parent.bottom; topMargin: 8 }
                    clip: true
                    boundsBehavior: Flickable.StopAtBounds
                    spacing: root.controller.minimumLineSpacing(root.controller.collFarms)
                    topMargin: root.controller.sectionInset(root.controller.collFarms)
                    bottomMargin: root.controller.sectionInset(root.controller.collFarms)
                    leftMargin: root.controller.sectionInset(root.controller.collFarms)
                    rightMargin: root.controller.sectionInset(root.controller.collFarms)
                    onWidthChanged: root.controller.collFarms.size = Qt.size(width, height)
                    model: root.controller.collFarms.rows
                    delegate: Item {
                        id: farmCell
                        required property string reuseIdentifier
                        required property var values
                        required property size cellSize
                        required property int row
                        readonly property var content: values
                        readonly property bool isCrop: reuseIdentifier === "FarmCell"
                        objectName: reuseIdentifier
                        width: cellSize.width
                        height: cellSize.height
                        Accessible.role: Accessible.Button
                        Accessible.name: isCrop ? content.lblFarm + ", " + content.lblFarmSize : "Tarla Ekle"

                        Rectangle {
                            anchors.fill: parent
                            visible: farmCell.isCrop
                            radius: 3
                            clip: true
                            color: "#f4f9ee"
                            border.color: root.leaf
                            Column {
                                anchors { fill: parent; margins: 16 }
                                spacing: 6
                                Text { objectName: farmCell.isCrop ? "lblFarm" : ""; text: farmCell.content.lblFarm || ""; font.pixelSize: 22; font.bold: true; color: root.ink; width: parent.width; elide: Text.ElideRight }
                                Text { objectName: farmCell.isCrop ? "lblFarmSize" : ""; text: farmCell.content.lblFarmSize || ""; font.pixelSize: 16; color: root.leaf; font.bold: true }
                                Rectangle { width: parent.width; height: 1; color: root.line }
                                Text {
                                    objectName: farmCell.isCrop ? "lblProducts" : ""
                                    text: farmCell.content.lblProducts || ""
                                    font.pixelSize: 15; color: "#555555"; width: parent.width
                                    wrapMode: Text.WordWrap; maximumLineCount: 4; elide: Text.ElideRight
                                }
                            }
                        }
                        Rectangle {
                            anchors.fill: parent
                            visible: !farmCell.isCrop
                            radius: 3
                            color: tapFarm.pressed ? "#f1f7ea" : "white"
                            border.color: root.leaf
                            border.width: 1.5
                            Text { anchors.centerIn: parent; text: "+  Tarla Ekle"; color: root.leaf; font.pixelSize: 18; font.bold: true }
                        }
                        MouseArea { id: tapFarm; anchors.fill: parent; onClicked: root.controller.collFarms.selectRow(farmCell.row) }
                    }
                }
            }
            PView {
                model: root.controller.bayiBilgileriView
                anchors { fill: parent; margins: 24; bottomMargin: 136 }
                color: "white"
                Column {
                    width: parent.width
                    spacing: 14
                    Title { text: "Bayi Bilgileri" }
                    Hint { text: "Bayinizin adını, vergi numarasını ve T.C. Kimlik Numaranızı girin." }
                    PTextField { model: root.controller.bayiAdiText; width: parent.width }
                    PTextField { model: root.controller.vergiNoText; width: parent.width }
                    PTextField { model: root.controller.tcKimlikText; width: parent.width }
                }
            }
            Column {
                anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: 24 }
                spacing: 4
                MainButton { act: "continueToFinish"; text: "Devam" }
                TextAction { act: "continueToInfo"; text: "Kişisel Bilgilere Dön"; anchors.horizontalCenter: parent.horizontalCenter }
            }
        }

        PView {
            model: root.controller.viewRegisterFinal
            anchors { fill: parent; margins: 24 }
            color: "white"
            Column {
                width: parent.width
                anchors.verticalCenter: parent.verticalCenter
                spacing: 28
                Text { text: "✓"; color: root.leaf; font.pixelSize: 64; anchors.horizontalCenter: parent.horizontalCenter }
                PLabel {
                    model: root.controller.activationLabel
                    width: parent.width
                    font.pixelSize: 18
                    horizontalAlignment: Text.AlignHCenter
                }
                LeafButton { model: root.controller.completeRegistrationButton }
            }
        }
    }

    // The crop editor over the wizard.
    Item { id: cropHolder; anchors.fill: parent }

    // The open city or county list, over the form.
    DropDownListView {
        anchors.fill: parent
        model: root.controller.dropDownCityCounty
        senders: [cityPlace.buttonItem, countyPlace.buttonItem]
    }

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
            MainButton { act: "loginBack"; text: "Giriş Ekranına Dön" }
        }
    }

    // The consent pages over everything.
    Item { id: consentHolder; anchors.fill: parent; z: 10 }
}
