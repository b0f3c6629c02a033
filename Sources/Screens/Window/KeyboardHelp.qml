import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Velloran

/// What every key does, screen by screen.
Sheet {
    id: help

    readonly property var sections: [
        {
            "name": qsTr("Everywhere"),
            "keys": [
                [qsTr("Ctrl+1 to Ctrl+4"), qsTr("Review, Records, Clients, Rules")],
                ["Ctrl+,", qsTr("Settings")],
                ["?", qsTr("These keys")],
                ["Tab", qsTr("Next control; with Shift, the one before")],
                [qsTr("Arrows"), qsTr("Within a list or a menu")],
                [qsTr("Enter or Space"), qsTr("Press, choose or open what has the focus")],
                ["Escape", qsTr("Close a sheet or a menu")],
                ["Ctrl+W", qsTr("Close the window; recording goes on")],
                ["Ctrl+Q", qsTr("Quit; recording ends")]
            ]
        },
        {
            "name": qsTr("Review"),
            "keys": [
                [qsTr("Alt+Left, Alt+Right"), qsTr("The day before, the day after; also [ and ]")],
                ["T", qsTr("Today")],
                ["G", qsTr("Choose a day in the calendar")],
                ["N", qsTr("Next unresolved work")],
                ["U", qsTr("Show unresolved work only")],
                ["/", qsTr("Search the day")],
                [qsTr("Shift+Up, Shift+Down"), qsTr("Select more")],
                ["Ctrl+A", qsTr("Select all")],
                ["A", qsTr("Choose the client")],
                ["P", qsTr("Choose the project")],
                ["B", qsTr("Billable or not")],
                ["D", qsTr("Describe")],
                ["C", qsTr("Confirm")],
                ["S", qsTr("Split")],
                ["M", qsTr("Merge")],
                ["I", qsTr("Ignore, or restore")],
                ["W", qsTr("Add missing work")],
                ["V", qsTr("Convert idle time to work")],
                ["R", qsTr("Make a rule from the work")],
                ["Ctrl+Enter", qsTr("Mark Ready to Bill")],
                ["Ctrl+Z, Ctrl+Shift+Z", qsTr("Undo, redo")],
                ["+, −, 0", qsTr("Zoom the timeline, show all of it")],
                [qsTr("Left, Right"), qsTr("On the timeline: the work or pause before, after; with Shift, its earlier or later part")]
            ]
        },
        {
            "name": qsTr("Records"),
            "keys": [
                [qsTr("Up, Down, Page Up, Page Down, Home, End"), qsTr("Another day; with Shift, several days; with Ctrl, without selecting")],
                [qsTr("Space"), qsTr("Select the day, or the days of the month; with Ctrl, add or take away a day")],
                ["Ctrl+A", qsTr("Select all days")],
                [qsTr("Enter"), qsTr("Open the day in Review")],
                ["Ctrl+E", qsTr("Export")]
            ]
        }
    ]

    title: qsTr("Keys")
    width: Math.min(560, parent.width - 2 * Theme.margin)

    Flickable {
        id: view
        Layout.fillWidth: true
        Layout.fillHeight: true
        implicitHeight: rows.implicitHeight
        contentHeight: rows.implicitHeight
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        activeFocusOnTab: contentHeight > height
        Keys.onUpPressed: contentY = Math.max(0, contentY - 40)
        Keys.onDownPressed: contentY = Math.max(0, Math.min(contentHeight - height, contentY + 40))
        T.ScrollBar.vertical: ScrollEdge {}
        ColumnLayout {
            id: rows
            width: view.width - Theme.padding
            spacing: Theme.gap
            Repeater {
                model: help.sections
                ColumnLayout {
                    id: section
                    required property var modelData
                    Layout.fillWidth: true
                    Layout.bottomMargin: Theme.gap
                    spacing: Theme.unit
                    Words {
                        Layout.fillWidth: true
                        Layout.bottomMargin: Theme.unit
                        text: section.modelData.name
                        font.weight: Font.DemiBold
                        Accessible.role: Accessible.Heading
                        Accessible.name: text
                    }
                    Repeater {
                        model: section.modelData.keys
                        RowLayout {
                            id: line
                            required property var modelData
                            Layout.fillWidth: true
                            spacing: Theme.padding
                            Accessible.role: Accessible.ListItem
                            Accessible.name: modelData.join(": ")
                            Words {
                                Layout.preferredWidth: 160
                                Layout.alignment: Qt.AlignTop
                                text: line.modelData[0]
                                color: Theme.secondaryInk
                                wrapMode: Text.WordWrap
                                Accessible.ignored: true
                            }
                            Words {
                                Layout.fillWidth: true
                                // As high as its neighbour that wraps, too.
                                Layout.fillHeight: true
                                text: line.modelData[1]
                                wrapMode: Text.WordWrap
                                Accessible.ignored: true
                            }
                        }
                    }
                }
            }
        }
    }
    actions: [
        Item { Layout.fillWidth: true },
        ActionButton {
            text: qsTr("Close")
            focus: true
            onClicked: help.close()
        }
    ]
}
