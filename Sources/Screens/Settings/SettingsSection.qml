import QtQuick
import QtQuick.Layouts
import Velloran

/// Settings that belong together, in a frame.
ColumnLayout {
    id: section

    property string title
    default property alias rows: body.data

    Layout.fillWidth: true
    spacing: Theme.gap
    Words {
        Layout.fillWidth: true
        visible: text.length > 0
        text: section.title
        font.pixelSize: Theme.small
        font.weight: Font.DemiBold
        color: Theme.secondaryInk
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    Panel {
        Layout.fillWidth: true
        implicitHeight: body.implicitHeight + 2 * Theme.padding
        ColumnLayout {
            id: body
            anchors.fill: parent
            anchors.margins: Theme.padding
            spacing: Theme.padding
        }
    }
}
