import QtQuick
import QtQuick.Layouts
import Velloran

/// A rule in the list: its handle, its switch, what it matches and whom for; once it is chosen, more below.
Item {
    id: row

    required property RulesModel rules
    required property int index
    required property string ruleID
    required property int number
    required property string conditions
    required property string target
    required property string clientColor
    required property string billing
    required property string counts
    required property string remark
    required property string badge
    required property string explanation
    required property bool isEnabled
    readonly property bool isChosen: rules.selected === ruleID
    property bool hasKeyboard: false
    property bool isGapAbove: false
    property bool isGapBelow: false
    signal chosen()
    /// To that place in this row.
    signal dragged(real y)
    signal dropped()
    signal removalWanted()

    function toggle() {
        rules.setEnabled(ruleID, !isEnabled);
    }
    function told(parts: list<string>): string {
        return parts.filter((part) => part.length > 0).join(", ");
    }

    height: column.implicitHeight
    Accessible.role: Accessible.ListItem
    Accessible.name: told([qsTr("Rule %1").arg(number), conditions, target, billing, isEnabled ? "" : qsTr("off"), badge, counts])
    Accessible.selectable: true
    Accessible.selected: isChosen
    Accessible.onPressAction: chosen()

    Rectangle {
        anchors.fill: parent
        radius: Theme.radius
        color: row.isChosen ? Theme.selection : hover.hovered ? Theme.hover : "transparent"
        border.width: row.hasKeyboard ? 2 : 0
        border.color: Theme.accent
    }
    Rectangle {
        y: row.isGapAbove ? -2 : row.height - 1
        width: row.width
        height: 3
        radius: 1
        visible: row.isGapAbove || row.isGapBelow
        color: Theme.accent
    }
    HoverHandler { id: hover }
    TapHandler {
        onTapped: row.chosen()
        onDoubleTapped: row.rules.editRule(row.ruleID)
    }
    ColumnLayout {
        id: column
        width: parent.width
        spacing: 0
        RowLayout {
            Layout.fillWidth: true
            Layout.leftMargin: 4
            Layout.rightMargin: 12
            Layout.minimumHeight: 56
            spacing: Theme.gap
            Item {
                implicitWidth: 20
                implicitHeight: 40
                Glyph {
                    anchors.centerIn: parent
                    name: "grip"
                    ink: drag.active || grip.hovered ? Theme.ink : Theme.secondaryInk
                    opacity: hover.hovered || row.isChosen ? 1 : 0.5
                }
                HoverHandler {
                    id: grip
                    cursorShape: drag.active ? Qt.ClosedHandCursor : Qt.OpenHandCursor
                }
                DragHandler {
                    id: drag
                    target: null
                    xAxis.enabled: false
                    onCentroidChanged: if (active) row.dragged(row.mapFromItem(parent, centroid.position.x, centroid.position.y).y)
                    onActiveChanged: if (!active) row.dropped()
                }
            }
            Words {
                Layout.preferredWidth: 22
                text: row.number
                font.pixelSize: Theme.small
                horizontalAlignment: Text.AlignRight
                color: Theme.secondaryInk
                Accessible.ignored: true
            }
            Toggle {
                checked: row.isEnabled
                focusPolicy: Qt.NoFocus
                Accessible.name: qsTr("Turn this rule on or off")
                onToggled: {
                    row.toggle();
                    checked = Qt.binding(() => row.isEnabled);
                }
            }
            RuleSummary {
                Layout.fillWidth: true
                Layout.leftMargin: Theme.unit
                rule: row
            }
        }
        Loader {
            Layout.fillWidth: true
            Layout.leftMargin: 62
            Layout.rightMargin: 12
            Layout.bottomMargin: active ? 12 : 0
            active: row.isChosen
            visible: active
            sourceComponent: RuleDetails {
                rules: row.rules
                ruleID: row.ruleID
                explanation: row.explanation
                remark: row.remark
                onRemovalWanted: row.removalWanted()
            }
        }
    }
}
