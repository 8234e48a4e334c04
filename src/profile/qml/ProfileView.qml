import QtQuick
import QtQuick.Controls
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Profile

// The farmer's name, e-mail, phone (shown only) and place, and the button that saves them.
Rectangle {
    id: root
    required property ProfileViewController controller
    objectName: "ProfileViewController"
    color: Theme.page

    // A place field: the text shows the pick, the transparent button over it opens the list.
    component PlaceField: Item {
        id: place
        property UITextField field: null
        property UIButton button: null
        readonly property Item buttonItem: opener
        width: parent.width
        height: Theme.touch
        PTextField { model: place.field; anchors.fill: parent; readOnly: true; rightPadding: 36 }
        Text {
            text: "▾"
            color: Theme.leaf
            font.pixelSize: 18
            anchors { right: parent.right; rightMargin: 12; verticalCenter: parent.verticalCenter }
        }
        PButton {
            id: opener
            model: place.button
            anchors.fill: parent
            background: Item {}
            contentItem: Item {}
            Accessible.name: place.field ? place.field.placeholder : ""
        }
    }

    Flickable {
        anchors.fill: parent
        contentHeight: form.height + 2 * Theme.margin
        boundsBehavior: Flickable.StopAtBounds
        Column {
            id: form
            x: Theme.margin
            y: Theme.margin
            width: parent.width - 2 * Theme.margin
            spacing: 6
            Caption { text: "Ad Soyad" }
            PTextField { model: root.controller.txtName; width: parent.width }
            Caption { text: "E-posta" }
            PTextField { model: root.controller.txtMail; width: parent.width; inputMethodHints: Qt.ImhEmailCharactersOnly }
            Caption { text: "Cep Telefonu" }
            PTextField { model: root.controller.txtPhone; width: parent.width; readOnly: true }
            Caption { text: "İl" }
            PlaceField { id: cityPlace; field: root.controller.txtCity; button: root.controller.btnCity }
            Caption { text: "İlçe" }
            PlaceField { id: countyPlace; field: root.controller.txtCounty; button: root.controller.btnCounty }
            Item { width: 1; height: 12 }
            FilledButton { model: root.controller.updateButton; width: parent.width }
        }
    }

    // The open city or county list, over the form.
    DropDownListView {
        anchors.fill: parent
        model: root.controller.dropDownCityCounty
        senders: [cityPlace.buttonItem, countyPlace.buttonItem]
    }
}
