import QtQuick
import QtQuick.Layouts
import Velloran

/// What is selected, and what can be done with it.
Panel {
    id: inspector

    required property ReviewModel review
    readonly property var subject: review.inspected
    readonly property bool hasSubject: subject.subjectID !== undefined

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: Theme.padding
        spacing: Theme.gap
        visible: inspector.hasSubject

        Words {
            Layout.fillWidth: true
            text: inspector.subject.times ?? ""
            font.pixelSize: Theme.heading
            font.weight: Font.DemiBold
        }
        Words {
            Layout.fillWidth: true
            text: qsTr("%1  ·  %2").arg(inspector.subject.duration ?? "").arg(inspector.subject.application || inspector.subject.project || "")
            font.pixelSize: Theme.small
            color: Theme.secondaryInk
        }
        Words {
            Layout.topMargin: Theme.gap
            text: qsTr("Description")
            font.pixelSize: Theme.small
            font.weight: Font.Medium
        }
        InputField {
            id: description
            Layout.fillWidth: true
            placeholderText: inspector.subject.title ?? ""
            Accessible.name: qsTr("Description")
            onAccepted: inspector.review.describe(text)
        }
        Words {
            Layout.topMargin: Theme.gap
            text: qsTr("Client")
            font.pixelSize: Theme.small
            font.weight: Font.Medium
        }
        ChoiceBox {
            id: client
            Layout.fillWidth: true
            placeholder: inspector.subject.client || qsTr("Choose a client")
            model: inspector.review.clients
            Accessible.name: qsTr("Client")
            onActivated: inspector.review.chooseClient(currentValue)
        }
        ChoiceBox {
            id: project
            Layout.fillWidth: true
            placeholder: inspector.subject.project || qsTr("Choose a project")
            model: inspector.review.projects
            enabled: count > 0
            Accessible.name: qsTr("Project")
            onActivated: inspector.review.assign(client.currentValue, currentValue)
        }
        Rectangle {
            Layout.fillWidth: true
            Layout.topMargin: Theme.gap
            Layout.bottomMargin: Theme.gap
            implicitHeight: 1
            color: Theme.border
        }
        GridLayout {
            Layout.fillWidth: true
            columns: 2
            columnSpacing: Theme.gap
            rowSpacing: Theme.gap
            ActionButton {
                Layout.fillWidth: true
                text: qsTr("Split")
                onClicked: inspector.review.splitAt((inspector.subject.start + inspector.subject.end) / 2)
            }
            ActionButton {
                Layout.fillWidth: true
                text: qsTr("Merge next")
                onClicked: inspector.review.mergeWithNext()
            }
            ActionButton {
                Layout.fillWidth: true
                text: inspector.subject.state === "ignored" ? qsTr("Restore") : qsTr("Ignore")
                onClicked: inspector.subject.state === "ignored" ? inspector.review.restore() : inspector.review.ignore()
            }
        }
        Item { Layout.fillHeight: true }
        ActionButton {
            Layout.fillWidth: true
            isPrimary: true
            text: qsTr("Confirm block")
            enabled: inspector.subject.state !== "ignored" && inspector.subject.state !== "reviewed"
            onClicked: inspector.review.confirm()
        }
    }
    Words {
        anchors.centerIn: parent
        visible: !inspector.hasSubject
        text: qsTr("Select work to see what it was.")
        color: Theme.secondaryInk
    }
}
