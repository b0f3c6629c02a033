import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Velloran

/// What is kept out of the record.
FocusScope {
    id: panel

    required property RulesModel rules

    Panel {
        anchors.fill: parent
        ColumnLayout {
            anchors.fill: parent
            anchors.margins: Theme.padding
            spacing: Theme.gap
            Words {
                Layout.fillWidth: true
                text: qsTr("Exclusions")
                font.pixelSize: Theme.heading
                font.weight: Font.DemiBold
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            Words {
                Layout.fillWidth: true
                text: qsTr("Work that matches one of these is kept out of review.")
                font.pixelSize: Theme.small
                wrapMode: Text.WordWrap
                color: Theme.secondaryInk
            }
            ListView {
                id: list
                Layout.fillWidth: true
                Layout.fillHeight: true
                clip: true
                activeFocusOnTab: count > 0
                model: panel.rules.exclusions
                boundsBehavior: Flickable.StopAtBounds
                T.ScrollBar.vertical: ScrollEdge { }
                Accessible.role: Accessible.List
                Accessible.name: qsTr("Exclusions")
                readonly property var current: currentItem
                Keys.onSpacePressed: current?.toggle()
                Keys.onDeletePressed: current?.remove()
                delegate: Item {
                    id: row

                    required property int index
                    required property string ruleID
                    required property string conditions
                    required property bool isEnabled
                    readonly property bool isCurrent: ListView.isCurrentItem && ListView.view.activeFocus

                    function toggle() {
                        panel.rules.setExclusionEnabled(ruleID, !isEnabled);
                    }
                    function remove() {
                        panel.rules.removeExclusion(ruleID);
                    }

                    width: ListView.view.width - Theme.gap
                    height: 40
                    Accessible.role: Accessible.ListItem
                    Accessible.name: isEnabled ? conditions : qsTr("%1, off").arg(conditions)
                    Rectangle {
                        anchors.fill: parent
                        radius: Theme.radius
                        color: hover.hovered ? Theme.hover : "transparent"
                        border.width: row.isCurrent ? 2 : 0
                        border.color: Theme.accent
                    }
                    HoverHandler { id: hover }
                    RowLayout {
                        anchors.fill: parent
                        anchors.leftMargin: Theme.gap
                        spacing: Theme.gap
                        Toggle {
                            checked: row.isEnabled
                            focusPolicy: Qt.NoFocus
                            Accessible.name: qsTr("Turn the exclusion of %1 on or off").arg(row.conditions)
                            onToggled: {
                                row.toggle();
                                checked = Qt.binding(() => row.isEnabled);
                            }
                        }
                        Words {
                            Layout.fillWidth: true
                            text: row.conditions
                            color: row.isEnabled ? Theme.ink : Theme.secondaryInk
                            Accessible.ignored: true
                        }
                        IconButton {
                            glyph: "close"
                            text: qsTr("Remove %1").arg(row.conditions)
                            onClicked: row.remove()
                        }
                    }
                }
                Words {
                    anchors.centerIn: parent
                    width: parent.width
                    visible: panel.rules.isRead && list.count === 0
                    horizontalAlignment: Text.AlignHCenter
                    text: qsTr("Nothing is excluded.")
                    color: Theme.secondaryInk
                }
            }
            ActionButton {
                Layout.fillWidth: true
                text: qsTr("Add Exclusion…")
                onClicked: panel.rules.addExclusion()
            }
        }
    }
}
