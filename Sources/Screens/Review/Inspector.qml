import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Velloran

/// What is selected, and what can be done with it.
Panel {
    id: inspector

    required property ReviewModel review
    required property ReviewEdits edits
    readonly property var subject: review.inspected
    readonly property bool isWork: subject.kind === "work"
    signal newTargetWanted(string clientID, string clientName, string projectName)
    signal splitWanted()
    signal conversionWanted()
    signal ruleChosen(string ruleID)
    signal ruleWanted()
    /// Those of the client that is shown, after others were.
    function showProjects() {
        whom.showProjects();
    }
    function openClients() {
        whom.openClients();
    }
    function openProjects() {
        whom.openProjects();
    }
    function focusDescription() {
        description.take();
    }

    Flickable {
        id: scroll
        anchors.fill: parent
        anchors.margins: Theme.padding
        anchors.bottomMargin: confirm.visible ? confirm.height + 2 * Theme.padding : Theme.padding
        visible: inspector.subject.kind !== "none" && inspector.subject.kind !== undefined
        contentHeight: column.implicitHeight
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: ScrollEdge {
            parent: inspector
            x: inspector.width - width - 2
            y: scroll.y
            height: scroll.height
        }

        ColumnLayout {
            id: column
            width: scroll.width
            spacing: Theme.gap

            Words {
                Layout.fillWidth: true
                text: inspector.subject.title ?? ""
                font.pixelSize: Theme.heading
                font.weight: Font.DemiBold
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            Words {
                Layout.fillWidth: true
                text: inspector.subject.subtitle ?? ""
                font.pixelSize: Theme.small
                color: Theme.secondaryInk
                wrapMode: Text.WordWrap
            }
            Words {
                Layout.fillWidth: true
                visible: text.length > 0
                text: inspector.subject.note ?? ""
                font.pixelSize: Theme.small
                color: Theme.warning
                wrapMode: Text.WordWrap
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            InspectorDescription {
                id: description
                Layout.fillWidth: true
                visible: (inspector.subject.subjectID ?? "").length > 0
                review: inspector.review
                edits: inspector.edits
            }
            InspectorWhom {
                id: whom
                Layout.fillWidth: true
                visible: inspector.isWork
                review: inspector.review
                edits: inspector.edits
                onNewTargetWanted: (clientID, clientName, projectName) => inspector.newTargetWanted(clientID, clientName, projectName)
            }
            InspectorCommands {
                Layout.fillWidth: true
                Layout.topMargin: Theme.gap
                visible: inspector.isWork
                subject: inspector.subject
                edits: inspector.edits
                onSplitWanted: inspector.splitWanted()
                onRuleWanted: inspector.ruleWanted()
            }
            ActionButton {
                Layout.fillWidth: true
                visible: inspector.subject.kind === "idle"
                text: qsTr("Convert to Work…")
                onClicked: inspector.conversionWanted()
            }
            InspectorWhy {
                Layout.fillWidth: true
                visible: inspector.isWork && (inspector.subject.why ?? "").length > 0
                subject: inspector.subject
                onRuleChosen: (ruleID) => inspector.ruleChosen(ruleID)
            }
            InspectorRecord {
                Layout.fillWidth: true
                visible: inspector.isWork && (inspector.subject.shares ?? []).length > 0
                subject: inspector.subject
                lineage: inspector.review.lineage
            }
        }
    }
    ActionButton {
        id: confirm
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: Theme.padding
        visible: inspector.isWork
        isPrimary: true
        text: (inspector.subject.count ?? 0) > 1 ? qsTr("Confirm blocks") : qsTr("Confirm block")
        enabled: inspector.subject.canConfirm ?? false
        onClicked: inspector.edits.confirm()
    }
    Words {
        anchors.centerIn: parent
        width: parent.width - 2 * Theme.margin
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.WordWrap
        visible: !scroll.visible
        text: qsTr("Select work to see what it was.")
        color: Theme.secondaryInk
    }
}
