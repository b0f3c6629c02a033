import QtQuick
import QtQuick.Layouts
import Velloran

/// The applications that are kept out of review.
SettingsSection {
    id: section

    required property ExclusionSettings exclusions

    title: qsTr("Excluded applications")

    SettingRow {
        help: qsTr("Work in these applications is kept out of review.")
        ActionButton {
            text: qsTr("Add Application…")
            onClicked: picker.open()
        }
    }
    Notice {
        Layout.fillWidth: true
        visible: section.exclusions.problem.length > 0
        text: section.exclusions.problem
        onDismissed: section.exclusions.dismissProblem()
    }
    ColumnLayout {
        Layout.fillWidth: true
        visible: applications.count > 0
        spacing: 2
        Accessible.role: Accessible.List
        Accessible.name: section.title
        Repeater {
            id: applications
            model: section.exclusions.excluded
            RowLayout {
                id: application
                required property string choiceID
                required property string name

                Layout.fillWidth: true
                spacing: Theme.gap
                Accessible.role: Accessible.ListItem
                Accessible.name: application.name
                Words {
                    Layout.fillWidth: true
                    text: application.name
                    Accessible.ignored: true
                }
                ActionButton {
                    text: qsTr("Remove")
                    Accessible.name: qsTr("Remove %1").arg(application.name)
                    onClicked: section.exclusions.include(application.choiceID)
                }
            }
        }
    }
    Words {
        Layout.fillWidth: true
        visible: section.exclusions.isRead && applications.count === 0
        text: qsTr("No application is excluded.")
        color: Theme.secondaryInk
    }
    ApplicationPicker {
        id: picker
        exclusions: section.exclusions
    }
}
