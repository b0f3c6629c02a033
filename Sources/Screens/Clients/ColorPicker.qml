import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Velloran

/// A client's colour: one of a few that go together, any other by its digits, or none.
ColumnLayout {
    id: picker

    property string color
    property string subject
    property string complaint
    signal picked(string color)
    signal restored()

    spacing: Theme.unit
    ClientPalette { id: palette }

    component Swatch: T.AbstractButton {
        id: swatch

        required property string hex
        readonly property bool isChosen: picker.color.toUpperCase() === hex.toUpperCase()

        implicitWidth: 28
        implicitHeight: 28
        focusPolicy: Qt.StrongFocus
        hoverEnabled: true
        Accessible.role: Accessible.RadioButton
        Accessible.name: text
        Accessible.checkable: true
        Accessible.checked: isChosen
        Accessible.onPressAction: swatch.clicked()
        onClicked: if (!isChosen) picker.picked(hex)
        contentItem: Item {
            Rectangle {
                anchors.centerIn: parent
                width: 20
                height: 20
                radius: Theme.radius
                color: swatch.hex.length > 0 ? swatch.hex : "transparent"
                border.width: swatch.hex.length > 0 ? 0 : 1
                border.color: Theme.anonymous
                Glyph {
                    anchors.centerIn: parent
                    visible: swatch.hex.length === 0
                    name: "close"
                    size: 10
                    ink: Theme.secondaryInk
                }
            }
        }
        background: Rectangle {
            radius: Theme.radius + 2
            color: swatch.hovered ? Theme.hover : "transparent"
            border.width: swatch.isChosen ? 2 : 0
            border.color: Theme.ink
            FocusRing { isShown: swatch.visualFocus }
        }
        Hint {
            isWanted: swatch.hovered
            text: swatch.text
        }
    }

    Flow {
        Layout.fillWidth: true
        spacing: 2
        Accessible.role: Accessible.Grouping
        Accessible.name: qsTr("Colour")
        Repeater {
            model: palette.colors
            Swatch {
                required property PaletteColor modelData
                hex: modelData.hex
                text: modelData.name
            }
        }
        Swatch {
            hex: ""
            text: qsTr("No colour")
        }
        StoredField {
            width: 104
            implicitHeight: 28
            stored: picker.color
            subject: picker.subject
            placeholderText: qsTr("#1A2B3C")
            Accessible.name: qsTr("Colour by its digits")
            onEdited: (text) => picker.picked(text)
            onRestored: picker.restored()
        }
    }
    Words {
        Layout.fillWidth: true
        visible: text.length > 0
        text: picker.complaint
        font.pixelSize: Theme.small
        wrapMode: Text.WordWrap
        color: Theme.danger
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
}
