import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Velloran

/// Applications to exclude: those that were seen at work first, then the installed ones.
Sheet {
    id: sheet

    required property ExclusionSettings exclusions

    title: qsTr("Exclude an Application")
    onOpened: search.forceActiveFocus()
    onClosed: search.clear()

    function exclude(identifier: string) {
        exclusions.exclude(identifier);
        close();
    }
    function choose(row: T.ItemDelegate) {
        if (row)
            row.clicked();
    }
    SearchField {
        id: search
        Layout.fillWidth: true
        placeholderText: qsTr("Search applications")
        onTextChanged: sheet.exclusions.search = text
        Keys.onDownPressed: list.forceActiveFocus(Qt.TabFocusReason)
        onAccepted: sheet.choose(list.itemAtIndex(0) as T.ItemDelegate)
    }
    ListView {
        id: list
        Layout.fillWidth: true
        Layout.preferredHeight: 280
        clip: true
        activeFocusOnTab: true
        model: sheet.exclusions.candidates
        keyNavigationEnabled: true
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Applications")
        Keys.onReturnPressed: sheet.choose(currentItem as T.ItemDelegate)
        Keys.onSpacePressed: sheet.choose(currentItem as T.ItemDelegate)
        T.ScrollBar.vertical: ScrollEdge { }

        delegate: T.ItemDelegate {
            id: row
            required property int index
            required property string choiceID
            required property string name
            required property bool isObserved

            width: list.width
            height: Theme.controlHeight
            hoverEnabled: true
            highlighted: list.activeFocus && ListView.isCurrentItem
            onClicked: sheet.exclude(choiceID)
            Accessible.role: Accessible.ListItem
            Accessible.name: isObserved ? qsTr("%1, recorded").arg(name) : name
            Accessible.onPressAction: row.clicked()
            contentItem: RowLayout {
                spacing: Theme.gap
                Words {
                    Layout.fillWidth: true
                    leftPadding: 8
                    text: row.name
                    Accessible.ignored: true
                }
                Words {
                    visible: row.isObserved
                    rightPadding: 12
                    text: qsTr("Recorded")
                    font.pixelSize: Theme.small
                    color: Theme.secondaryInk
                    Accessible.ignored: true
                }
            }
            background: Rectangle {
                radius: Theme.radius
                color: row.highlighted ? Theme.selection : row.hovered ? Theme.hover : "transparent"
            }
        }
        Words {
            anchors.centerIn: parent
            visible: list.count === 0
            text: qsTr("No application has that name.")
            color: Theme.secondaryInk
        }
    }
    actions: [
        Item { Layout.fillWidth: true },
        ActionButton {
            text: qsTr("Cancel")
            onClicked: sheet.close()
        }
    ]
}
