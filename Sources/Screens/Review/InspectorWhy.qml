import QtQuick
import QtQuick.Layouts
import Velloran

/// Why the work is for whom it is for: the rules that say so, and those that disagree.
ColumnLayout {
    id: why

    required property var subject
    signal ruleChosen(string ruleID)

    spacing: Theme.unit
    Words {
        Layout.topMargin: Theme.gap
        text: qsTr("Why")
        font.pixelSize: Theme.small
        font.weight: Font.Medium
        color: Theme.secondaryInk
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    Words {
        Layout.fillWidth: true
        text: why.subject.why ?? ""
        wrapMode: Text.WordWrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Repeater {
        model: why.subject.reasons ?? []
        ColumnLayout {
            id: reason
            required property var modelData
            Layout.fillWidth: true
            spacing: 0
            LinkText {
                Layout.fillWidth: true
                text: qsTr("%1: %2").arg(reason.modelData.role).arg(reason.modelData.text ?? qsTr("a rule that is gone"))
                enabled: reason.modelData.text !== undefined
                onClicked: why.ruleChosen(reason.modelData.ruleID)
            }
            Words {
                Layout.fillWidth: true
                text: reason.modelData.target ?? ""
                font.pixelSize: Theme.small
                color: Theme.secondaryInk
            }
        }
    }
    Words {
        Layout.fillWidth: true
        visible: text.length > 0
        text: why.subject.alsoMatched ?? ""
        font.pixelSize: Theme.small
        color: Theme.secondaryInk
        wrapMode: Text.WordWrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
