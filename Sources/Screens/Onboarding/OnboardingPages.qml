import QtQuick
import QtQuick.Layouts
import Velloran

/// The first steps, one page after the other.
Rectangle {
    id: pages

    required property OnboardingModel onboarding
    required property CaptureSettings capture
    signal reviewAsked()

    property int step: 0
    readonly property var names: [qsTr("Welcome"), qsTr("Accessibility"), qsTr("Browser domains"), qsTr("First client"), qsTr("Ready")]
    readonly property bool isLast: step === names.length - 1

    color: Theme.window
    focus: true
    Accessible.role: Accessible.Dialog
    Accessible.name: qsTr("First steps")
    Component.onCompleted: {
        capture.refresh();
        onboarding.readCurrency();
        forward.forceActiveFocus();
    }
    onIsLastChanged: if (isLast) onboarding.readToday()

    function next() {
        if (client.visible && client.hasEntry)
            client.add();
        else if (isLast)
            finish();
        else
            step += 1;
    }
    function finish() {
        onboarding.complete();
        reviewAsked();
    }
    Shortcut { sequence: "Alt+Left"; enabled: pages.step > 0; onActivated: pages.step -= 1 }
    Connections {
        target: pages.onboarding
        function onClientAdded() {
            client.clear();
            pages.step += 1;
        }
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: Theme.margin
        spacing: Theme.margin

        StepMarks {
            Layout.alignment: Qt.AlignHCenter
            names: pages.names
            step: pages.step
        }
        StackLayout {
            Layout.fillHeight: true
            Layout.fillWidth: false
            Layout.preferredWidth: Math.min(560, pages.width - 2 * Theme.margin)
            Layout.alignment: Qt.AlignHCenter
            currentIndex: pages.step
            WelcomePage { }
            AccessibilityPage { capture: pages.capture }
            DomainsPage { capture: pages.capture }
            FirstClientPage {
                id: client
                onboarding: pages.onboarding
                onSubmitted: pages.next()
            }
            ReadyPage { onboarding: pages.onboarding }
        }
        RowLayout {
            Layout.maximumWidth: 560
            Layout.alignment: Qt.AlignHCenter
            spacing: Theme.gap
            ActionButton {
                visible: !pages.isLast
                text: qsTr("Skip")
                onClicked: pages.finish()
            }
            Item { Layout.fillWidth: true }
            ActionButton {
                visible: pages.step > 0
                text: qsTr("Back")
                onClicked: pages.step -= 1
            }
            ActionButton {
                id: forward
                isPrimary: true
                enabled: !pages.onboarding.isBusy
                text: pages.isLast ? qsTr("Open Review") : qsTr("Continue")
                onClicked: pages.next()
                Keys.onReturnPressed: pages.next()
            }
        }
    }
}
