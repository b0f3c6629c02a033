import QtQuick
import QtQuick.Layouts
import Velloran

/// Work that nobody recorded, or that was done while the computer seemed idle.
Sheet {
    id: sheet

    required property ReviewModel review
    required property ReviewEdits edits
    readonly property var inspected: review.inspected
    property bool isIdle: false
    property string clientID
    property string projectID
    function openEmpty() {
        begin(false, -1, -1);
        from.forceActiveFocus();
    }
    function openFor(start: double, end: double) {
        begin(false, start, end);
        client.forceActiveFocus(Qt.TabFocusReason);
    }
    function openForIdle() {
        begin(true, -1, -1);
        client.forceActiveFocus(Qt.TabFocusReason);
    }
    function begin(idle: bool, start: double, end: double) {
        isIdle = idle;
        from.show(start);
        to.show(end);
        description.clear();
        complaint.text = "";
        billable.checkState = Qt.PartiallyChecked;
        clientID = "";
        projectID = "";
        edits.readDescriptions();
        open();
    }
    function save() {
        if (isIdle) {
            edits.convertIdle(clientID, projectID, billable.checkState, description.text);
            return;
        }
        const start = from.secondOfDay(0);
        const end = to.secondOfDay(start);
        if (start < 0 || end < 0)
            complaint.text = qsTr("“%1” is no time of the day, so no work was added.").arg(start < 0 ? from.text : to.text);
        else
            edits.addWork(start, end, clientID, projectID, billable.checkState, description.text);
    }

    title: isIdle ? qsTr("Convert Idle Time to Work") : qsTr("Add Missing Work")
    Connections {
        target: sheet.edits
        enabled: sheet.visible
        function onAccepted() { sheet.close(); }
        function onRefused(sentence: string) { complaint.text = sentence; }
    }

    Words {
        Layout.fillWidth: true
        visible: sheet.isIdle
        text: sheet.inspected.title ?? ""
        color: Theme.secondaryInk
    }
    RowLayout {
        Layout.fillWidth: true
        visible: !sheet.isIdle
        spacing: Theme.padding
        FormRow {
            Layout.fillWidth: true
            label: qsTr("From")
            TimeField {
                id: from
                review: sheet.review
                Layout.fillWidth: true
                placeholderText: sheet.review.timeText(9 * 3600)
                Accessible.name: qsTr("From")
                onAccepted: sheet.save()
            }
        }
        FormRow {
            Layout.fillWidth: true
            label: qsTr("To")
            TimeField {
                id: to
                review: sheet.review
                Layout.fillWidth: true
                placeholderText: sheet.review.timeText(10 * 3600)
                Accessible.name: qsTr("To")
                onAccepted: sheet.save()
            }
        }
    }
    FormRow {
        Layout.fillWidth: true
        label: qsTr("Client")
        ChoicePicker {
            id: client
            Layout.fillWidth: true
            label: qsTr("Client")
            model: sheet.review.clients
            chosenID: sheet.clientID
            placeholder: qsTr("Choose a client")
            onChose: (id) => {
                sheet.clientID = id;
                sheet.projectID = "";
                sheet.review.chooseClient(id);
            }
        }
    }
    FormRow {
        Layout.fillWidth: true
        label: qsTr("Project")
        ChoicePicker {
            Layout.fillWidth: true
            label: qsTr("Project")
            model: sheet.review.projects
            chosenID: sheet.projectID
            enabled: sheet.clientID.length > 0
            placeholder: qsTr("Choose a project")
            onChose: (id) => sheet.projectID = id
        }
    }
    FormRow {
        Layout.fillWidth: true
        label: qsTr("Description")
        InputField {
            id: description
            Layout.fillWidth: true
            Accessible.name: qsTr("Description")
            onAccepted: sheet.save()
        }
    }
    Tick {
        id: billable
        text: checkState === Qt.PartiallyChecked ? qsTr("Billable as the project says") : qsTr("Billable")
        tristate: true
    }
    Words {
        id: complaint
        Layout.fillWidth: true
        visible: text.length > 0
        color: Theme.danger
        wrapMode: Text.WordWrap
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
    actions: [
        Item { Layout.fillWidth: true },
        ActionButton {
            text: qsTr("Cancel")
            onClicked: sheet.close()
        },
        ActionButton {
            isPrimary: true
            text: sheet.isIdle ? qsTr("Convert") : qsTr("Add Work")
            onClicked: sheet.save()
        }
    ]
}
