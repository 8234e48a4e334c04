import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Accounts

// The registration wizard's panels inside the sign-in screen's registration panel, one step at a time:
// who registers, the person and the place, a farmer's crops or a dealer's shop, the final panel.
Item {
    id: root
    required property RegistrationWizard controller

    // A button model of the wizard in the look of the main buttons.
    component LeafButton: PButton {
        id: leafButton
        width: parent.width
        implicitHeight: 50
        font.pixelSize: 17
        font.bold: true
        background: ButtonFill { button: leafButton }
        contentItem: ButtonFillText { button: leafButton }
    }
    // A place field: the text shows the pick, the button over it opens the list.
    component PlaceField: Item {
        id: place
        property UITextField field: null
        property UIButton button: null
        property string purpose: ""
        property DropDownList openList: null
        readonly property Item buttonItem: opener
        width: parent.width
        height: 48
        PTextField { model: place.field; anchors.fill: parent; readOnly: true; rightPadding: 36 }
        Text {
            text: "▾"
            color: Theme.leaf
            font.pixelSize: 18
            anchors { right: parent.right; rightMargin: 12; verticalCenter: parent.verticalCenter }
            rotation: place.openList && place.openList.btnSender === place.button && place.openList.senderImageFlipped ? 180 : 0
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
                PlaceField { id: cityPlace; field: root.controller.txtCity; button: root.controller.btnCity; purpose: "İl seçimi"; openList: root.controller.dropDownCityCounty }
                PlaceField { id: countyPlace; field: root.controller.txtCounty; button: root.controller.btnCounty; purpose: "İlçe seçimi"; openList: root.controller.dropDownCityCounty }
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
                readonly property UITableView table: root.controller.collFarms
                objectName: "collFarms"
                visible: !table.hidden
                anchors { left: parent.left; right: parent.right; top: cropsHead.bottom; bottom: parent.bottom; topMargin: 8 }
                clip: true
                boundsBehavior: Flickable.StopAtBounds
                spacing: root.controller.minimumLineSpacing(table)
                topMargin: root.controller.sectionInset(table)
                bottomMargin: root.controller.sectionInset(table)
                leftMargin: root.controller.sectionInset(table)
                rightMargin: root.controller.sectionInset(table)
                onWidthChanged: table.size = Qt.size(width, height)
                model: table.rows
                delegate: Item {
                    id: farmCell
                    required property string reuseIdentifier
                    required property var values
                    required property size cellSize
                    required property int row
                    required property UITableView view
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
                        border.color: Theme.leaf
                        Column {
                            anchors { fill: parent; margins: 16 }
                            spacing: 6
                            Text { objectName: farmCell.isCrop ? "lblFarm" : ""; text: farmCell.content.lblFarm || ""; font.pixelSize: 22; font.bold: true; color: Theme.ink; width: parent.width; elide: Text.ElideRight }
                            Text { objectName: farmCell.isCrop ? "lblFarmSize" : ""; text: farmCell.content.lblFarmSize || ""; font.pixelSize: 16; color: Theme.leaf; font.bold: true }
                            Rectangle { width: parent.width; height: 1; color: "#d5d5d5" }
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
                        border.color: Theme.leaf
                        border.width: 1.5
                        Text { anchors.centerIn: parent; text: "+  Tarla Ekle"; color: Theme.leaf; font.pixelSize: 18; font.bold: true }
                    }
                    MouseArea { id: tapFarm; anchors.fill: parent; onClicked: farmCell.view.selectRow(farmCell.row) }
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
            MainButton { act: "continueToFinish"; text: "Devam"; onClicked: root.controller.continueToFinish() }
            ActionButton {
                act: "continueToInfo"
                text: "Kişisel Bilgilere Dön"
                anchors.horizontalCenter: parent.horizontalCenter
                onClicked: root.controller.continueToInfo()
            }
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
            Text { text: "✓"; color: Theme.leaf; font.pixelSize: 64; anchors.horizontalCenter: parent.horizontalCenter }
            PLabel {
                model: root.controller.activationLabel
                width: parent.width
                font.pixelSize: 18
                horizontalAlignment: Text.AlignHCenter
            }
            LeafButton { model: root.controller.completeRegistrationButton }
        }
    }

    // The open city or county list, over the form.
    DropDownListView {
        anchors.fill: parent
        model: root.controller.dropDownCityCounty
        senders: [cityPlace.buttonItem, countyPlace.buttonItem]
    }
}
