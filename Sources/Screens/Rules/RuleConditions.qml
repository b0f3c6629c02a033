import QtQuick
import QtQuick.Layouts
import Velloran

/// The conditions of a rule, a row each, and how they go together.
ColumnLayout {
    id: conditions

    required property RuleEditor editor

    function takeFocus() {
        const first = rows.itemAt(0) as RuleConditionRow;
        if (first)
            first.takeFocus();
    }

    spacing: Theme.gap
    Words {
        text: qsTr("When")
        font.pixelSize: Theme.small
        font.weight: Font.Medium
        color: Theme.secondaryInk
    }
    Repeater {
        id: rows
        model: conditions.editor.conditions
        onItemAdded: (index, item) => (item as RuleConditionRow).takeFocus()
        RuleConditionRow {
            Layout.fillWidth: true
            editor: conditions.editor
            isOnly: rows.count === 1
        }
    }
    RowLayout {
        Layout.fillWidth: true
        spacing: 12
        ActionButton {
            text: qsTr("Add Condition")
            enabled: conditions.editor.everyDimensionUsed.length === 0
            onClicked: conditions.editor.addCondition()
        }
        Words {
            Layout.fillWidth: true
            text: conditions.editor.everyDimensionUsed.length > 0 ? conditions.editor.everyDimensionUsed
                                                                  : conditions.editor.conditionsExplanation
            font.pixelSize: Theme.small
            wrapMode: Text.WordWrap
            verticalAlignment: Text.AlignVCenter
            color: Theme.secondaryInk
        }
    }
}
