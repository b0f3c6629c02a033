import QtQuick
import QtQuick.Layouts
import Velloran

/// What the work was, in its user's words, with those of earlier work to choose from.
FormRow {
    id: row

    required property ReviewModel review
    required property ReviewEdits edits
    readonly property var inspected: review.inspected
    readonly property var earlier: edits.descriptions
    readonly property var proposals: field.activeFocus && field.isTouched
        ? earlier.filter((one) => one.toLocaleLowerCase().includes(field.text.toLocaleLowerCase()) && one !== field.text).slice(0, 5) : []

    function take() {
        field.forceActiveFocus(Qt.ShortcutFocusReason);
        field.selectAll();
    }
    Connections {
        target: row.review
        function onSelectionLeft() {
            field.finish();
            field.showStored();
        }
    }

    label: qsTr("Description")
    StoredField {
        id: field
        Layout.fillWidth: true
        stored: row.inspected.description ?? ""
        enabled: row.inspected.canDescribe ?? false
        placeholderText: qsTr("What was done")
        Accessible.name: qsTr("Description")
        onActiveFocusChanged: if (activeFocus) row.edits.readDescriptions()
        onEdited: (text) => row.edits.describe(text)
        Keys.onDownPressed: proposalList.current = Math.min(proposalList.current + 1, row.proposals.length - 1)
        Keys.onUpPressed: proposalList.current = Math.max(proposalList.current - 1, -1)
        Keys.onReturnPressed: (event) => {
            event.accepted = proposalList.current >= 0;
            if (event.accepted)
                proposalList.take(row.proposals[proposalList.current]);
        }
        Panel {
            id: proposalList
            property int current: -1
            function take(words: string) {
                field.text = words;
                current = -1;
                field.isTouched = true;
                field.finish();
            }
            y: field.height + 2
            z: 1
            width: field.width
            height: list.implicitHeight + 8
            visible: row.proposals.length > 0
            onVisibleChanged: current = -1
            border.color: Theme.strongBorder
            Column {
                id: list
                x: 4
                y: 4
                width: parent.width - 8
                Repeater {
                    model: row.proposals
                    PickerRow {
                        required property string modelData
                        required property int index
                        width: list.width
                        name: modelData
                        focusPolicy: Qt.NoFocus
                        highlighted: proposalList.current === index
                        onPressed: proposalList.take(modelData)
                    }
                }
            }
        }
    }
    z: 1
}
