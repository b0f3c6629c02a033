import QtQuick
import QtQuick.Layouts
import Velloran

/// Asks at which time the selected work is to be split.
Sheet {
    id: sheet

    required property ReviewModel review
    required property ReviewEdits edits
    readonly property var inspected: review.inspected
    function openHere() {
        const middle = review.middleOfSelection();
        const minute = Math.floor(middle / 60) * 60;
        time.show(minute > review.startOfSelection() ? minute : middle);
        open();
        time.forceActiveFocus();
        time.selectAll();
    }
    function split() {
        const second = time.secondOfDay(review.startOfSelection());
        question.complaint = second < 0 ? qsTr("This is no time of the day, so nothing was split.") : "";
        if (second >= 0)
            edits.splitBySheet(second);
    }

    width: 320
    title: qsTr("Split %1").arg(inspected.title ?? "")
    onClosed: question.complaint = ""
    Connections {
        target: sheet.edits
        enabled: sheet.visible
        function onAccepted() { sheet.close(); }
        function onRefused(sentence: string) { question.complaint = sentence; }
    }
    FormRow {
        id: question
        Layout.fillWidth: true
        label: qsTr("At")
        TimeField {
            id: time
            review: sheet.review
            Layout.fillWidth: true
            Accessible.name: qsTr("Time of the split")
            onAccepted: sheet.split()
        }
    }
    actions: [
        Item { Layout.fillWidth: true },
        ActionButton {
            text: qsTr("Cancel")
            onClicked: sheet.close()
        },
        ActionButton {
            isPrimary: true
            text: qsTr("Split")
            onClicked: sheet.split()
        }
    ]
}
