import QtQuick
import QtQuick.Layouts
import Velloran

/// A day with its state and figures, or the month above its days.
Item {
    id: row

    required property string rowID
    required property bool isMonth
    required property bool isSelected
    required property string title
    required property string stateKey
    required property string stateName
    required property string tracked
    required property string billed
    required property string amount
    property bool isWide: true
    property bool isCurrent: false
    signal chose(string how)
    signal opened()

    height: isMonth ? 40 : 48
    Accessible.role: Accessible.ListItem
    readonly property var parts: [title, stateName, tracked.length > 0 ? qsTr("%1 tracked").arg(tracked) : "",
                      billed.length > 0 ? qsTr("%1 billed").arg(billed) : "", amount]
    Accessible.name: parts.filter((part) => part.length > 0).join(", ")
    Accessible.selectable: true
    Accessible.selected: isSelected
    Accessible.onPressAction: chose("only")

    Rectangle {
        anchors.fill: parent
        anchors.topMargin: row.isMonth ? 4 : 0
        radius: Theme.radius
        color: row.isSelected ? Theme.selection : hover.hovered ? Theme.hover : "transparent"
        FocusRing {
            anchors.margins: 1
            radius: Theme.radius
            isShown: row.isCurrent
        }
    }
    HoverHandler { id: hover }
    TapHandler {
        acceptedModifiers: Qt.NoModifier
        onTapped: row.chose("only")
        onDoubleTapped: if (!row.isMonth) row.opened()
    }
    TapHandler {
        acceptedModifiers: Qt.ControlModifier
        onTapped: row.chose("toggle")
    }
    TapHandler {
        acceptedModifiers: Qt.ShiftModifier
        onTapped: row.chose("extend")
    }
    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 12
        anchors.rightMargin: 14
        anchors.topMargin: row.isMonth ? 4 : 0
        spacing: Theme.gap
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 1
            Words {
                Layout.fillWidth: true
                text: row.title
                font.weight: row.isMonth ? Font.DemiBold : Font.Medium
                Accessible.ignored: true
            }
            RecordState {
                Layout.fillWidth: true
                visible: !row.isMonth && row.stateKey.length > 0
                stateKey: row.stateKey
                text: row.stateName
            }
        }
        Words {
            visible: row.isMonth && hover.hovered
            text: qsTr("Select month")
            font.pixelSize: Theme.small
            color: Theme.accent
            Accessible.ignored: true
        }
        RecordFigures {
            Layout.fillWidth: false
            isWide: row.isWide
            isStrong: row.isMonth
            tracked: row.tracked
            billed: row.billed
            amount: row.amount
        }
    }
}
