import QtQuick
import Ekinora.Widgets

// The local pictures of the weather values and the favourite mark, drawn as glyphs of the bundled font.
Text {
    property string name: ""
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
    font.pixelSize: 20
    color: name === "favFilled" ? Theme.squash : name === "favEmpty" ? Theme.border : Theme.cerulean
    text: ({ "temperature": "℃", "precipitation": "☂", "windspeed": "≋", "winddirection": "➚",
             "favEmpty": "☆", "favFilled": "★" })[name] || ""
}
