import QtQuick
import QtQuick.Layouts
import Velloran

OnboardingPage {
    id: page

    required property OnboardingModel onboarding
    readonly property bool hasEntry: (client.text + project.text + rate.text).trim().length > 0
    signal submitted()

    function add() {
        onboarding.addClient(client.text, project.text, rate.text);
    }
    function clear() {
        for (const field of [client, project, rate])
            field.clear();
    }

    glyph: "clients"
    title: qsTr("Whom do you work for?")
    text: onboarding.addedClient.length > 0 ? qsTr("%1 is in your client list. Add another one here, or continue.").arg(onboarding.addedClient)
                                            : qsTr("Add a client with a project now, or leave this empty and do it later in Clients.")
    onVisibleChanged: if (visible) client.forceActiveFocus()

    FormRow {
        Layout.fillWidth: true
        label: qsTr("Client")
        complaint: page.onboarding.nameProblem
        InputField {
            id: client
            Layout.fillWidth: true
            Accessible.name: qsTr("Client")
            onAccepted: page.submitted()
        }
    }
    RowLayout {
        Layout.fillWidth: true
        spacing: Theme.padding
        FormRow {
            Layout.fillWidth: true
            Layout.alignment: Qt.AlignTop
            label: qsTr("First project")
            complaint: page.onboarding.projectProblem
            InputField {
                id: project
                Layout.fillWidth: true
                Accessible.name: qsTr("First project")
                onAccepted: page.submitted()
            }
        }
        FormRow {
            Layout.preferredWidth: 180
            Layout.alignment: Qt.AlignTop
            label: page.onboarding.currency.length > 0 ? qsTr("Hourly rate (%1)").arg(page.onboarding.currency) : qsTr("Hourly rate")
            help: qsTr("May stay empty.")
            complaint: page.onboarding.rateProblem
            InputField {
                id: rate
                Layout.fillWidth: true
                inputMethodHints: Qt.ImhFormattedNumbersOnly
                Accessible.name: qsTr("Hourly rate")
                onAccepted: page.submitted()
            }
        }
    }
    Words {
        Layout.fillWidth: true
        visible: text.length > 0
        text: page.onboarding.problem
        color: Theme.danger
        wrapMode: Text.WordWrap
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
}
