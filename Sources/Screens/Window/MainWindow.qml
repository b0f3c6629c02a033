import QtQuick
import QtQuick.Layouts
import QtQuick.Window
import Velloran

Window {
    id: window

    required property ReviewModel review
    required property string captureText
    required property bool isRecording

    width: 1280
    height: 820
    minimumWidth: 900
    minimumHeight: 600
    visible: true
    title: Qt.application.displayName
    color: Theme.window

    Shortcut { sequences: [StandardKey.Undo]; onActivated: window.review.undo() }
    Shortcut { sequences: [StandardKey.Redo]; onActivated: window.review.redo() }
    Shortcut { sequence: "Alt+Left"; onActivated: window.review.move(-1) }
    Shortcut { sequence: "Alt+Right"; onActivated: window.review.move(1) }

    RowLayout {
        anchors.fill: parent
        spacing: 0
        Sidebar {
            Layout.fillHeight: true
            captureText: window.captureText
            isRecording: window.isRecording
        }
        ReviewScreen {
            Layout.fillWidth: true
            Layout.fillHeight: true
            review: window.review
            focus: true
        }
    }
}
