import QtQuick
import QtQuick.Layouts
import Velloran

GridLayout {
    id: commands

    required property var subject
    required property ReviewEdits edits
    signal splitWanted()
    signal ruleWanted()

    columns: 2
    columnSpacing: Theme.gap
    rowSpacing: Theme.gap
    component Command: ActionButton {
        Layout.fillWidth: true
        Layout.preferredWidth: 1
    }
    Command {
        text: qsTr("Split…")
        enabled: commands.subject.canSplit ?? false
        onClicked: commands.splitWanted()
    }
    Command {
        text: (commands.subject.count ?? 0) > 1 ? qsTr("Merge") : qsTr("Merge next")
        enabled: commands.subject.canMerge ?? false
        onClicked: commands.edits.merge()
    }
    Command {
        text: commands.subject.isIgnored ? qsTr("Restore") : qsTr("Ignore")
        onClicked: commands.subject.isIgnored ? commands.edits.restore() : commands.edits.ignore()
    }
    Command {
        text: qsTr("Make rule…")
        enabled: commands.subject.canMakeRule ?? false
        onClicked: commands.ruleWanted()
    }
}
