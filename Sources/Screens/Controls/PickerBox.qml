import QtQuick
import QtQuick.Templates as T
import Velloran

/// One of many named choices, found by typing; or a new one of the name that was typed.
T.AbstractButton {
    id: control

    /// Rows of `choiceID`, `name` and `clientColor`.
    property alias model: choices.model
    property string chosenName
    property string placeholder
    property color dot: "transparent"
    /// "New client “%1”"; empty where none can be made here.
    property string newText
    property string label
    readonly property bool hasDot: dot.a > 0 && chosenName.length > 0
    signal chose(string id)
    signal created(string name)
    function open() {
        popup.open();
    }

    implicitHeight: Theme.controlHeight
    implicitWidth: 200
    opacity: enabled ? 1 : 0.45
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    text: chosenName.length > 0 ? chosenName : placeholder
    Accessible.role: Accessible.ComboBox
    Accessible.name: label
    Accessible.description: text
    Accessible.onPressAction: popup.open()
    onClicked: popup.open()
    Keys.onDownPressed: popup.open()
    Keys.onReturnPressed: popup.open()

    contentItem: Item {
        Rectangle {
            x: control.mirrored ? parent.width - width - 10 : 10
            anchors.verticalCenter: parent.verticalCenter
            visible: control.hasDot
            width: 8
            height: 8
            radius: 2
            color: control.dot
        }
        Words {
            anchors.fill: parent
            anchors.leftMargin: control.hasDot ? 26 : 10
            anchors.rightMargin: 28
            text: control.text
            color: control.chosenName.length > 0 ? Theme.ink : Theme.secondaryInk
            verticalAlignment: Text.AlignVCenter
            Accessible.ignored: true
        }
        Glyph {
            anchors.right: parent.right
            anchors.rightMargin: 10
            anchors.verticalCenter: parent.verticalCenter
            name: "chevron-down"
            ink: Theme.secondaryInk
            size: 12
        }
    }
    background: Rectangle {
        color: control.hovered ? Theme.hover : Theme.panel
        border.color: Theme.strongBorder
        radius: Theme.radius
        FocusRing { isShown: control.visualFocus }
    }

    T.Popup {
        id: popup

        property int current: 0
        readonly property string typed: search.text.trim()
        readonly property string wanted: typed.toLocaleLowerCase()
        readonly property bool canCreate: control.newText.length > 0 && typed.length > 0 && !hasExactly()
        // Untyped: this version of the linter crashes over a call without arguments on a typed parameter.
        function matches(name) {
            return name.toLocaleLowerCase().includes(wanted);
        }
        function hasExactly(): bool {
            for (let i = 0; i < choices.count; ++i) {
                const row = choices.itemAt(i) as PickerRow;
                if (row.name.toLocaleLowerCase() === wanted)
                    return true;
            }
            return false;
        }
        function next(from: int, step: int): int {
            for (let i = from + step; i >= 0 && i < choices.count; i += step) {
                if (matches(choices.itemAt(i).name))
                    return i;
            }
            return step > 0 && canCreate ? choices.count : from;
        }
        onWantedChanged: current = next(-1, 1)
        onCanCreateChanged: current = next(-1, 1)
        function take() {
            const row = current >= 0 && current < choices.count ? choices.itemAt(current) as PickerRow : null;
            // Before it closes, which hides its rows.
            const isThere = row !== null && matches(row.name);
            const newName = isThere || !canCreate ? "" : typed;
            close();
            if (isThere)
                control.chose(row.choiceID);
            else if (newName.length > 0)
                control.created(newName);
        }

        y: control.height + 2
        width: Math.max(control.width, 220)
        height: Math.min(content.implicitHeight + 2 * padding, 320)
        padding: 4
        margins: 4
        focus: true
        onOpened: {
            search.clear();
            search.forceActiveFocus();
            current = next(-1, 1);
        }
        background: Panel { border.color: Theme.strongBorder }
        Column {
            id: content
            width: parent.width
            spacing: 2
            SearchField {
                id: search
                width: parent.width
                isClearedByEscape: false
                placeholderText: control.newText.length > 0 ? qsTr("Find or add") : qsTr("Find")
                Keys.onDownPressed: popup.current = popup.next(popup.current, 1)
                Keys.onUpPressed: popup.current = popup.next(popup.current, -1)
                Keys.onReturnPressed: popup.take()
                Keys.onEnterPressed: popup.take()
            }
            Flickable {
                width: parent.width
                height: Math.min(rows.implicitHeight, 260)
                contentHeight: rows.implicitHeight
                clip: true
                T.ScrollBar.vertical: ScrollEdge { }
                Column {
                    id: rows
                    width: parent.width
                    Repeater {
                        id: choices
                        PickerRow {
                            required property int index
                            required choiceID
                            required property string clientColor
                            width: rows.width
                            visible: popup.matches(name)
                            dot: clientColor.length > 0 ? clientColor : "transparent"
                            highlighted: popup.current === index
                            onClicked: {
                                popup.current = index;
                                popup.take();
                            }
                        }
                    }
                    PickerRow {
                        width: rows.width
                        visible: popup.canCreate
                        name: visible ? control.newText.arg(popup.typed) : ""
                        highlighted: popup.current === choices.count
                        onClicked: {
                            popup.current = choices.count;
                            popup.take();
                        }
                    }
                }
            }
        }
    }
}
