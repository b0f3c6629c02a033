import QtQuick
import QtQuick.Layouts
import Velloran

SettingsPane {
    id: pane

    required property AboutSettings about
    required property SoftwareUpdates updates

    title: qsTr("About")

    SettingsSection {
        SettingRow {
            label: Application.displayName
            help: qsTr("Version %1").arg(pane.about.version)
            ActionButton {
                enabled: !pane.updates.isBusy
                text: qsTr("Check for Updates…")
                onClicked: pane.updates.check()
            }
        }
        RowLayout {
            Layout.fillWidth: true
            visible: pane.updates.sentence.length > 0
            spacing: Theme.padding
            Words {
                Layout.fillWidth: true
                text: pane.updates.sentence
                wrapMode: Text.WordWrap
                Accessible.role: Accessible.AlertMessage
                Accessible.name: text
            }
            ActionButton {
                visible: pane.updates.isAvailable
                isPrimary: true
                text: qsTr("Install")
                onClicked: pane.updates.install()
            }
        }
        ProgressLine {
            Layout.fillWidth: true
            visible: pane.updates.isInstalling
            value: pane.updates.progress
            Accessible.name: qsTr("Installing")
        }
    }
    SettingsSection {
        title: qsTr("Built on")
        ColumnLayout {
            Layout.fillWidth: true
            spacing: Theme.unit
            Accessible.role: Accessible.List
            Accessible.name: qsTr("Built on")
            Repeater {
                model: pane.about.licences
                RowLayout {
                    id: library
                    required property var modelData
                    Layout.fillWidth: true
                    Accessible.role: Accessible.ListItem
                    Accessible.name: qsTr("%1, %2").arg(modelData.name).arg(modelData.licence)
                    Words {
                        Layout.fillWidth: true
                        text: library.modelData.name
                        Accessible.ignored: true
                    }
                    Words {
                        text: library.modelData.licence
                        font.pixelSize: Theme.small
                        color: Theme.secondaryInk
                        Accessible.ignored: true
                    }
                }
            }
        }
    }
}
