import QtQuick
import QtQuick.Templates as T
import Velloran

/// One of a few: `choices` are { key, name }.
Rectangle {
    id: control

    property var choices: []
    property string chosen
    property string name
    signal chose(string key)

    implicitWidth: row.implicitWidth + 4
    implicitHeight: Theme.controlHeight
    radius: Theme.radius
    color: Theme.sunken
    border.color: Theme.border
    Accessible.role: Accessible.Grouping
    Accessible.name: name

    Row {
        id: row
        anchors.centerIn: parent
        spacing: 2
        Repeater {
            model: control.choices
            T.RadioButton {
                id: choice
                required property var modelData
                readonly property bool isChosen: control.chosen === modelData.key
                checked: isChosen
                text: modelData.name
                width: label.implicitWidth + 2 * 12
                height: Theme.controlHeight - 4
                focusPolicy: Qt.StrongFocus
                hoverEnabled: true
                onClicked: control.chose(modelData.key)
                Keys.onLeftPressed: nextItemInFocusChain(control.LayoutMirroring.enabled).forceActiveFocus(Qt.TabFocusReason)
                Keys.onRightPressed: nextItemInFocusChain(!control.LayoutMirroring.enabled).forceActiveFocus(Qt.TabFocusReason)
                Accessible.name: text
                Accessible.onPressAction: choice.clicked()
                Accessible.onToggleAction: choice.clicked()
                contentItem: Words {
                    id: label
                    text: choice.text
                    font.weight: choice.isChosen ? Font.DemiBold : Font.Normal
                    color: choice.isChosen ? Theme.ink : Theme.secondaryInk
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    Accessible.ignored: true
                }
                background: Rectangle {
                    radius: Theme.radius - 2
                    color: choice.isChosen ? Theme.panel : choice.hovered ? Theme.hover : "transparent"
                    border.width: choice.isChosen ? 1 : 0
                    border.color: Theme.strongBorder
                    FocusRing { isShown: choice.visualFocus }
                }
            }
        }
    }
}
