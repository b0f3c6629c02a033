import QtQuick
import QtQuick.Layouts
import Velloran

/// Whether work is recorded, and the button that pauses or resumes it.
RowLayout {
    id: captureState

    required property ShellModel shell

    spacing: Theme.gap
    Rectangle {
        implicitWidth: 8
        implicitHeight: 8
        radius: 4
        visible: !Theme.isNarrow || !button.visible
        color: captureState.shell.isRecording && !captureState.shell.isContextLimited ? Theme.good : Theme.warning
    }
    Words {
        Layout.fillWidth: true
        visible: !Theme.isNarrow
        text: captureState.shell.captureText
        color: Theme.secondaryInk
        wrapMode: Text.WordWrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    IconButton {
        id: button
        visible: captureState.shell.isRecording || captureState.shell.isPaused
        glyph: captureState.shell.isPaused ? "play" : "pause"
        text: captureState.shell.isPaused ? captureState.shell.resumeTitle : captureState.shell.pauseTitle
        onClicked: {
            if (captureState.shell.isPaused)
                captureState.shell.resume();
            else
                lengths.popup(button, 0, -lengths.implicitHeight - Theme.unit);
        }
        ActionMenu {
            id: lengths
            Repeater {
                model: captureState.shell.pauseLengths
                ActionMenuItem {
                    required property var modelData
                    text: modelData.name
                    onTriggered: captureState.shell.pause(modelData.key)
                }
            }
        }
    }
}
