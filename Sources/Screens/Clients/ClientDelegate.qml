import QtQuick
import QtQuick.Layouts
import Velloran

/// A client in the list.
Item {
    id: row

    required property string clientID
    required property string name
    required property string clientColor
    required property string summary
    required property bool isArchived
    property bool isChosen: false
    property bool hasKeyboard: false
    signal chosen()

    height: 52
    Accessible.role: Accessible.ListItem
    Accessible.name: isArchived ? qsTr("%1, %2, archived").arg(name).arg(summary) : qsTr("%1, %2").arg(name).arg(summary)
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
    HoverHandler { id: hover }
    TapHandler { onTapped: row.chosen() }
    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 12
        anchors.rightMargin: 12
        spacing: 12
        Rectangle {
            implicitWidth: 12
            implicitHeight: 12
            radius: 3
            opacity: row.isArchived ? 0.6 : 1
            color: row.clientColor.length > 0 ? row.clientColor : "transparent"
            border.width: row.clientColor.length > 0 ? 0 : 1
            border.color: Theme.anonymous
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2
            Words {
                Layout.fillWidth: true
                text: row.name
                font.weight: Font.Medium
                color: row.isArchived ? Theme.secondaryInk : Theme.ink
                Accessible.ignored: true
            }
            Words {
                Layout.fillWidth: true
                text: row.summary
                font.pixelSize: Theme.small
                color: Theme.secondaryInk
                Accessible.ignored: true
            }
        }
    }
}
