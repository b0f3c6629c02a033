import QtQuick
import QtQuick.Layouts
import Velloran

/// Whether work is recorded, and the button that pauses or resumes it.
RowLayout {
    id: state

    required property ShellModel shell

    spacing: Theme.gap
    Rectangle {
        implicitWidth: 8
        implicitHeight: 8
        radius: 4
        color: state.shell.isRecording && !state.shell.isContextLimited ? Theme.good : Theme.warning
    }
    Words {
        Layout.fillWidth: true
        text: state.shell.captureText
        color: Theme.secondaryInk
        wrapMode: Text.WordWrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    IconButton {
        id: button
        visible: state.shell.isRecording || state.shell.isPaused
        glyph: state.shell.isPaused ? "play" : "pause"
        text: state.shell.isPaused ? state.shell.resumeTitle : state.shell.pauseTitle
        onClicked: {
            if (state.shell.isPaused)
                state.shell.resume();
            else
                lengths.popup(button, 0, -lengths.implicitHeight - Theme.unit);
        }
        ActionMenu {
            id: lengths
            Repeater {
                model: state.shell.pauseLengths
                ActionMenuItem {
                    required property var modelData
                    text: modelData.name
                    onTriggered: state.shell.pause(modelData.key)
                }
            }
        }
    }
}
