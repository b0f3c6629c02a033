import QtQuick
import Velloran

/// A field that shows what is stored, and keeps what is being typed over it. What was typed is handed out once it is
/// finished; while it is refused it stays.
InputField {
    id: control

    property string stored
    /// Whose value it is: another's takes the place of whatever was typed.
    property string subject
    property bool isTouched: false
    readonly property bool isEdited: isTouched || text !== stored
    signal edited(string text)
    /// What was typed is given up, so that nothing is left to complain of.
    signal restored()

    function showStored() {
        isTouched = false;
        text = stored;
    }
    function finish() {
        if (!isTouched)
            return;
        isTouched = false;
        if (text !== stored)
            edited(text);
        else
            restored();
    }
    text: ""
    Component.onCompleted: showStored()
    onStoredChanged: if (!isTouched) showStored()
    onSubjectChanged: showStored()
    onTextEdited: isTouched = true
    onEditingFinished: finish()
    // Before any shortcut of the window.
    Keys.onShortcutOverride: (event) => event.accepted = event.key === Qt.Key_Escape && isEdited
    Keys.onEscapePressed: (event) => {
        event.accepted = isEdited;
        showStored();
        if (event.accepted)
            restored();
    }
}
