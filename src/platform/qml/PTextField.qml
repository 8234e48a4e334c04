import QtQuick
import Ekinora.Platform
import QtQuick.Controls

// A text field whose every change goes through the model, so that the screen's delegate may refuse it.
TextField {
    id: field
    property UITextField model: null
    objectName: model ? model.objectName : ""
    visible: model ? !model.hidden : true
    opacity: model ? model.alpha : 1
    enabled: model ? model.enabled : true
    placeholderText: model ? model.placeholder : ""
    echoMode: model && model.secureTextEntry ? TextInput.Password : TextInput.Normal
    inputMethodHints: model && model.keyboardType === 4 ? Qt.ImhDigitsOnly : Qt.ImhNone
    implicitHeight: 48
    text: model ? model.text : ""
    Accessible.name: placeholderText.length > 0 ? placeholderText : objectName
    onTextEdited: {
        if (!model) return
        // Express the edit as one replacement and let the model decide.
        var old = model.text, now = text
        var start = 0
        while (start < old.length && start < now.length && old[start] === now[start]) start++
        var endOld = old.length, endNew = now.length
        while (endOld > start && endNew > start && old[endOld - 1] === now[endNew - 1]) { endOld--; endNew-- }
        model.userEdit(start, endOld - start, now.substring(start, endNew))
        if (text !== model.text) text = model.text
    }
    onActiveFocusChanged: if (model && activeFocus) model.becomeFirstResponder()
    onAccepted: if (model) model.userReturn()
    Connections {
        target: field.model
        function onChanged() {
            if (field.model.firstResponder && !field.activeFocus) field.forceActiveFocus()
            if (!field.model.firstResponder && field.activeFocus) field.focus = false
        }
    }
}
