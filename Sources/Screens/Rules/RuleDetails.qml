import QtQuick
import QtQuick.Layouts
import Velloran

/// More of the selected rule: why it attributes nothing, which rules it is in conflict with, and what can be done.
ColumnLayout {
    id: details

    required property RulesModel rules
    required property string ruleID
    property string explanation
    property string remark
    signal removalWanted()

    spacing: Theme.gap
    Repeater {
        model: [details.explanation, details.remark]
        Words {
            required property string modelData
            Layout.fillWidth: true
            visible: modelData.length > 0
            text: modelData
            wrapMode: Text.WordWrap
            font.pixelSize: Theme.small
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
    Repeater {
        model: details.rules.conflicts
        Rectangle {
            id: conflict

            required property string otherID
            required property string conditions
            required property string explanation
            required property string action

            Layout.fillWidth: true
            implicitHeight: texts.implicitHeight + 2 * Theme.gap
            radius: Theme.radius
            color: Theme.panel
            border.color: Theme.border
            RowLayout {
                id: texts
                anchors.fill: parent
                anchors.margins: Theme.gap
                anchors.leftMargin: 12
                spacing: Theme.gap
                ColumnLayout {
                    Layout.fillWidth: true
                    spacing: 2
                    Words {
                        Layout.fillWidth: true
                        text: conflict.conditions
                        font.pixelSize: Theme.small
                        font.weight: Font.Medium
                    }
                    Words {
                        Layout.fillWidth: true
                        text: conflict.explanation
                        font.pixelSize: Theme.small
                        wrapMode: Text.WordWrap
                        color: Theme.secondaryInk
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                    }
                }
                ActionButton {
                    text: conflict.action
                    onClicked: details.rules.selected = conflict.otherID
                }
            }
        }
    }
    Flow {
        Layout.fillWidth: true
        spacing: Theme.gap
        ActionButton {
            text: qsTr("Edit…")
            onClicked: details.rules.editRule(details.ruleID)
        }
        ActionButton {
            text: qsTr("Duplicate")
            Accessible.description: qsTr("Copy the selected rule, directly below it")
            onClicked: details.rules.duplicate(details.ruleID)
        }
        ActionButton {
            text: qsTr("Delete…")
            isDestructive: true
            onClicked: details.removalWanted()
        }
    }
}
