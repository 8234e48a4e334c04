pragma Singleton
import QtQuick

// The one theme of the screens: colours (the first six are the screens' colour set, as in Colors.h),
// type sizes and the smallest touch target.
QtObject {
    readonly property color leaf: "#78b930"
    readonly property color cerulean: "#0090c5"
    readonly property color squash: "#e59f0e"
    readonly property color buttonDefault: "#e6e6e6"
    readonly property color ink: "#333333"
    readonly property color border: "#9b9b9b"

    readonly property color muted: "#7a7a7a"
    readonly property color page: "#f2f4ef"
    readonly property color card: "#ffffff"
    readonly property color line: "#d6d9d2"
    readonly property color divider: "#ececec"
    readonly property color danger: "#d0342c"
    readonly property color shade: "#99000000"
    readonly property color notice: "#8a6d1c"

    readonly property int touch: 48
    readonly property int titleSize: 20
    readonly property int headingSize: 18
    readonly property int bodySize: 16
    readonly property int captionSize: 13
    readonly property int margin: 16
    readonly property int radius: 6
}
