import QtQuick
import QtQuick.Layouts
import Velloran

/// The supported browsers that are installed, and whether their domains are recorded.
ColumnLayout {
    id: list

    required property CaptureSettings capture

    spacing: Theme.gap
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Browsers")

    Repeater {
        id: browsers
        model: list.capture.browsers
        RowLayout {
            id: browser
            required property string name
            required property string state
            required property bool isActive

            Layout.fillWidth: true
            spacing: Theme.gap
            Accessible.role: Accessible.ListItem
            Accessible.name: qsTr("%1, %2").arg(browser.name).arg(browser.state)
            Words {
                Layout.fillWidth: true
                text: browser.name
                Accessible.ignored: true
            }
            Words {
                text: browser.state
                font.pixelSize: Theme.small
                color: browser.isActive ? Theme.good : Theme.secondaryInk
                Accessible.ignored: true
            }
        }
    }
    Words {
        Layout.fillWidth: true
        visible: list.capture.knowsBrowsers && browsers.count === 0
        text: qsTr("No supported browser is installed here. Firefox, Chromium, Google Chrome, Brave, Microsoft Edge, Vivaldi, Opera and LibreWolf are supported.")
        font.pixelSize: Theme.small
        color: Theme.secondaryInk
        wrapMode: Text.WordWrap
    }
}
