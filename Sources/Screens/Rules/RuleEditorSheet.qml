import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Velloran

/// The editor of a rule or an exclusion: its conditions, whom matching work is for, and what it would change before
/// it is added. Open as long as the editor has a draft.
Sheet {
    id: sheet

    required property RuleEditor editor

    title: editor.title
    width: Math.min(600, parent.width - 2 * Theme.margin)
    contentSpacing: Theme.padding
    visible: editor.isOpen
    asksToLeave: true
    onLeaving: editor.giveUp()
    onOpened: conditions.takeFocus()

    Flickable {
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.leftMargin: -4
        Layout.rightMargin: -4
        implicitHeight: body.implicitHeight + 8
        contentWidth: width
        contentHeight: body.implicitHeight + 8
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        T.ScrollBar.vertical: ScrollEdge { }

        ColumnLayout {
            id: body
            // Room for the ring around what has the keyboard.
            x: 4
            y: 4
            width: parent.width - 8
            spacing: Theme.padding

            RuleConditions {
                id: conditions
                Layout.fillWidth: true
                editor: sheet.editor
            }
            RuleTarget {
                Layout.fillWidth: true
                visible: !sheet.editor.isExclusion
                editor: sheet.editor
            }
            ColumnLayout {
                Layout.fillWidth: true
                visible: !sheet.editor.isExclusion
                spacing: Theme.unit
                Words {
                    Layout.fillWidth: true
                    visible: text.length > 0
                    text: sheet.editor.dayEffect
                    wrapMode: Text.WordWrap
                }
                Words {
                    Layout.fillWidth: true
                    text: sheet.editor.effect.length > 0 ? sheet.editor.effect
                        : sheet.editor.isCounting ? qsTr("Counting what it would change…")
                                                  : qsTr("What it would change is shown here once it has a condition, a client and a project.")
                    wrapMode: Text.WordWrap
                    color: Theme.secondaryInk
                    opacity: sheet.editor.isCounting && sheet.editor.effect.length > 0 ? 0.6 : 1
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }
        }
    }
    Words {
        Layout.fillWidth: true
        visible: text.length > 0
        text: sheet.editor.isAskingToDiscard ? sheet.editor.discardQuestion : sheet.editor.problem
        wrapMode: Text.WordWrap
        color: sheet.editor.isAskingToDiscard ? Theme.warning : Theme.danger
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
    actions: [
        Item { Layout.fillWidth: true },
        ActionButton {
            visible: !sheet.editor.isAskingToDiscard
            text: qsTr("Cancel")
            onClicked: sheet.editor.giveUp()
        },
        ActionButton {
            visible: sheet.editor.isAskingToDiscard
            text: qsTr("Keep Editing")
            onClicked: sheet.editor.keepEditing()
        },
        ActionButton {
            visible: sheet.editor.isAskingToDiscard
            isDestructive: true
            text: qsTr("Discard")
            onClicked: sheet.editor.discard()
        },
        ActionButton {
            isPrimary: true
            text: sheet.editor.saveText
            onClicked: sheet.editor.save()
        }
    ]
}
