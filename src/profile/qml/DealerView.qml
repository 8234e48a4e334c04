import QtQuick
import Ekinora.Platform
import Ekinora.Widgets
import Ekinora.Profile

// The shop's name, tax number and identity number, and the button that saves them.
Rectangle {
    id: root
    required property DealerViewController controller
    objectName: "DealerViewController"
    color: Theme.page

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
            Caption { text: "Bayi Adı" }
            PTextField { model: root.controller.txtDealerName; width: parent.width }
            Caption { text: "Vergi Numarası" }
            PTextField { model: root.controller.txtDealerTaxNumber; width: parent.width }
            Caption { text: "T.C. Kimlik Numarası" }
            PTextField { model: root.controller.txtDealerIdNumber; width: parent.width }
            Item { width: 1; height: 12 }
            FilledButton { model: root.controller.updateButton; width: parent.width }
        }
    }
}
