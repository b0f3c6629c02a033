import QtQuick
import QtQuick.Layouts
import Velloran

/// How a day stands, in the system's own words.
RowLayout {
    id: mark

    property string stateKey
    property alias text: label.text
    readonly property color tint: ({ "needsReview": Theme.warning, "readyToBill": Theme.accent, "exported": Theme.good,
                                     "changedSinceExport": Theme.danger })[stateKey] ?? Theme.secondaryInk

    spacing: 6
    Rectangle {
        implicitWidth: 7
        implicitHeight: 7
        radius: 4
        color: mark.tint
    }
    Words {
        id: label
        Layout.fillWidth: true
        font.pixelSize: Theme.small
        color: mark.tint
        Accessible.ignored: true
    }
}
