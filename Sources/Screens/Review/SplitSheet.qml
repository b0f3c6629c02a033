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
        time.text = review.timeText(review.middleOfSelection());
        open();
        time.forceActiveFocus();
        time.selectAll();
    }
    function split() {
        const second = review.secondOf(time.text);
        question.complaint = second < 0 ? qsTr("This is no time of the day, so nothing was split.") : "";
        if (second < 0)
            return;
        close();
        edits.splitAt(second);
    }

    width: 320
    title: qsTr("Split %1").arg(inspected.title ?? "")
    onClosed: question.complaint = ""
    FormRow {
        id: question
        Layout.fillWidth: true
        label: qsTr("At")
        InputField {
            id: time
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
