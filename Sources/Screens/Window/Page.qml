import QtQuick
import Velloran

/// One of the screens: made when it is first shown, and kept as it was left.
Loader {
    required property ShellModel shell
    required property string key
    readonly property bool isShown: shell.page === key

    anchors.top: parent.top
    anchors.bottom: parent.bottom
    anchors.horizontalCenter: parent.horizontalCenter
    width: Math.min(parent.width, Theme.widestPage)
    active: false
    visible: isShown
    focus: isShown
    onIsShownChanged: if (isShown) active = true
    Component.onCompleted: if (isShown) active = true
}
