import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Ekinora.Platform

// The phone-sized window: the root controller's view, the presented controllers above it, then the
// progress indicator and the wait overlay.
ApplicationWindow {
    id: window
    required property UIWindow appWindow
    width: 390
    height: 844
    visible: false
    title: "Ekinora"
    color: "#ffffff"

    property Item contentLayer: contentLayer
    property Item presentedLayer: presentedLayer
    property Item parkedLayer: parkedLayer

    // An indicator lies over the view it was added to: under the presented controllers for a screen of
    // the root, over them for a presented one. It blocks touches below it while a call runs.
    component HUD: Rectangle {
        objectName: "progressHUD"
        anchors.fill: parent
        color: "transparent"
        MouseArea { anchors.fill: parent; preventStealing: true }
        Rectangle {
            anchors.centerIn: parent
            width: 96; height: 96; radius: 12
            color: "#cc333333"
            BusyIndicator { anchors.centerIn: parent; running: parent.visible; Material.accent: "white" }
        }
        Accessible.name: "Yükleniyor"
    }

    // Views of screens taken off the screen: still in the window, never drawn.
    Item { id: parkedLayer; visible: false }
    Item { id: contentLayer; anchors.fill: parent }
    HUD { visible: window.appWindow.hudCount > window.appWindow.presentedHudCount }
    // What is presented lies above what a screen of the root lays over the whole window (the home's
    // splash, at 2000), as a presentation on the phone comes above the window's own views.
    Item { id: presentedLayer; anchors.fill: parent; z: 2001 }
    HUD { visible: window.appWindow.presentedHudCount > 0; z: 2002 }

    Rectangle {
        objectName: "waitOverlay"
        property string text: window.appWindow.waitText
        anchors.fill: parent
        visible: window.appWindow.waitVisible
        color: "#99000000"
        z: 2003
        MouseArea { anchors.fill: parent; preventStealing: true }
        Column {
            anchors.centerIn: parent
            spacing: 12
            BusyIndicator { anchors.horizontalCenter: parent.horizontalCenter; running: parent.visible }
            Text {
                text: window.appWindow.waitText
                color: "white"
                font.pixelSize: 16
                width: window.width - 64
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.WordWrap
            }
        }
        Accessible.name: text
    }
}
