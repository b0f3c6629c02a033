import QtQuick
import QtQuick.Templates as T
import Velloran

/// The cells of a file with its keys above them; as wide as they are.
Flickable {
    id: table

    required property DocumentModel document
    readonly property var columns: document.columns
    readonly property real characterWidth: metrics.averageCharacterWidth + 1
    readonly property var widths: columns.map((column) => Math.round(column.width * characterWidth + 20))
    readonly property real allWidths: widths.reduce((sum, one) => sum + one, 0)

    contentWidth: Math.max(width, allWidths)
    boundsBehavior: Flickable.StopAtBounds
    flickableDirection: Flickable.HorizontalFlick
    clip: true
    T.ScrollBar.horizontal: ScrollEdge { }

    FontMetrics {
        id: metrics
        font.family: Theme.family
        font.pixelSize: Theme.small
    }
    component Cells: Row {
        id: row
        property var cells: []
        property bool isHeading: false
        height: 26
        Repeater {
            model: row.cells
            Words {
                required property int index
                required property string modelData
                width: table.widths[index] ?? 0
                height: row.height
                leftPadding: 10
                rightPadding: 10
                text: modelData
                font.pixelSize: Theme.small
                font.weight: row.isHeading ? Font.DemiBold : Font.Normal
                color: row.isHeading ? Theme.secondaryInk : Theme.ink
                horizontalAlignment: table.columns[index]?.isNumber ? Text.AlignRight : Text.AlignLeft
                verticalAlignment: Text.AlignVCenter
                Accessible.ignored: !row.isHeading
            }
        }
    }
    Cells {
        id: heading
        isHeading: true
        cells: table.columns.map((column) => column.key)
    }
    Rectangle {
        y: heading.height
        width: table.contentWidth
        height: 1
        color: Theme.border
    }
    ListView {
        id: list
        y: heading.height + 1
        width: table.contentWidth
        height: table.height - y
        clip: true
        model: table.document.rows
        activeFocusOnTab: true
        keyNavigationEnabled: true
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: ScrollEdge { }
        Accessible.role: Accessible.Table
        Accessible.name: qsTr("Preview of the table")
        delegate: Rectangle {
            id: line
            required property int index
            required property var cells
            width: ListView.view.width
            height: 26
            color: list.activeFocus && ListView.isCurrentItem ? Theme.selection : index % 2 === 0 ? Theme.panel : "transparent"
            Accessible.role: Accessible.Row
            Accessible.name: cells.join(", ")
            Cells { cells: line.cells }
        }
    }
}
