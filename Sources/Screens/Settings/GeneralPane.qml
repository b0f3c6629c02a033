import QtQuick
import Velloran

SettingsPane {
    id: pane

    required property GeneralSettings general
    required property AppearanceModel appearance

    title: qsTr("General")

    SettingsSection {
        title: qsTr("Start")
        ToggleRow {
            label: qsTr("Open at login")
            help: qsTr("Velloran records from the moment you log in.")
            complaint: pane.general.loginProblem
            isOn: pane.general.startsAtLogin
            onTurned: (isOn) => pane.general.setStartsAtLogin(isOn)
        }
        SettingRow {
            label: qsTr("At login, open")
            help: qsTr("A start by hand always opens the window.")
            SegmentedChoice {
                name: qsTr("At login, open")
                choices: [{ "key": "item", "name": qsTr("Only the icon") }, { "key": "window", "name": qsTr("Window") }]
                chosen: pane.general.opensWindowAtLogin ? "window" : "item"
                onChose: (key) => pane.general.setOpensWindowAtLogin(key === "window")
            }
        }
    }
    SettingsSection {
        title: qsTr("Look")
        SettingRow {
            label: qsTr("Appearance")
            help: qsTr("System follows your desktop's light and dark mode.")
            SegmentedChoice {
                name: qsTr("Appearance")
                choices: [{ "key": "system", "name": qsTr("System") }, { "key": "light", "name": qsTr("Light") },
                          { "key": "dark", "name": qsTr("Dark") }]
                chosen: pane.appearance.choice
                onChose: (key) => pane.appearance.choice = key
            }
        }
    }
    SettingsSection {
        title: qsTr("End")
        SettingRow {
            label: qsTr("Closing the window")
            help: qsTr("Recording goes on. After you quit, nothing is recorded until you start Velloran again.")
            ActionButton {
                text: qsTr("Quit Velloran")
                onClicked: Qt.quit()
            }
        }
    }
}
