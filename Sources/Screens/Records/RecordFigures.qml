import QtQuick
import QtQuick.Layouts
import Velloran

/// The columns of figures at a row's end.
RowLayout {
    id: figures

    property string tracked
    property string billed
    property string amount
    property bool isWide: true
    property bool isHeading: false
    property bool isStrong: false
    readonly property color ink: isHeading ? Theme.secondaryInk : Theme.ink

    spacing: Theme.gap
    Item { Layout.fillWidth: true }
    component Figure: Words {
        Layout.preferredWidth: 92
        horizontalAlignment: Text.AlignRight
        font.pixelSize: figures.isHeading ? Theme.caption : Theme.body
        font.weight: figures.isStrong ? Font.DemiBold : Font.Normal
        Accessible.ignored: !figures.isHeading
    }
    Figure {
        visible: figures.isWide
        text: figures.tracked
        color: Theme.secondaryInk
    }
    Figure {
        text: figures.billed
        color: figures.ink
    }
    Figure {
        Layout.preferredWidth: figures.isWide ? 110 : 92
        text: figures.amount
        color: figures.ink
    }
}
