import QtQuick
import QtQuick.Layouts
import Velloran

/// The rules in their order, and the exclusions beside them; in a narrow window one of the two.
FocusScope {
    id: screen

    required property RulesModel rules
    readonly property bool isWide: width >= 900
    property string part: "rules"

    focus: true
    Binding {
        target: screen.rules
        property: "isShown"
        value: screen.visible
    }
    Shortcut {
        enabled: screen.visible && adder.enabled
        sequences: [StandardKey.New]
        onActivated: screen.rules.addRule()
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: Theme.margin
        spacing: Theme.padding

        RowLayout {
            Layout.fillWidth: true
            spacing: Theme.gap
            ColumnLayout {
                Layout.fillWidth: true
                spacing: Theme.unit
                Words {
                    Layout.fillWidth: true
                    text: qsTr("Rules")
                    font.pixelSize: Theme.display
                    font.weight: Font.DemiBold
                    Accessible.role: Accessible.Heading
                    Accessible.name: text
                }
                Words {
                    Layout.fillWidth: true
                    text: screen.rules.summary
                    color: Theme.secondaryInk
                }
            }
            SegmentedChoice {
                visible: !screen.isWide
                name: qsTr("Kind of rules")
                chosen: screen.part
                choices: [
                    { "key": "rules", "name": qsTr("Rules") },
                    { "key": "exclusions", "name": qsTr("Exclusions") }
                ]
                onChose: (key) => screen.part = key
            }
            ActionButton {
                id: adder
                text: qsTr("Add Rule")
                isPrimary: true
                enabled: screen.rules.isRead && screen.rules.withoutTarget.length === 0
                Accessible.description: qsTr("Add a rule at the top of the list")
                onClicked: screen.rules.addRule()
            }
        }
        Notice {
            Layout.fillWidth: true
            visible: screen.rules.problem.length > 0
            text: screen.rules.problem
            onDismissed: screen.rules.dismissProblem()
        }
        RowLayout {
            Layout.fillWidth: true
            Layout.fillHeight: true
            spacing: Theme.padding
            RuleList {
                Layout.fillWidth: true
                Layout.fillHeight: true
                visible: screen.isWide || screen.part === "rules"
                rules: screen.rules
                focus: true
            }
            ExclusionList {
                Layout.fillWidth: !screen.isWide
                Layout.preferredWidth: 300
                Layout.fillHeight: true
                visible: screen.isWide || screen.part === "exclusions"
                rules: screen.rules
            }
        }
    }
}
