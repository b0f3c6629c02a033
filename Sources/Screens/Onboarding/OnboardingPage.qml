import QtQuick
import QtQuick.Layouts
import Velloran

/// One step: a heading, what it is about, and what can be done.
ColumnLayout {
    id: page

    required property string title
    property string text
    property string glyph: "review"

    spacing: Theme.padding
    Item { Layout.fillHeight: true }
    Rectangle {
        implicitWidth: 48
        implicitHeight: 48
        radius: 12
        color: Theme.selection
        Glyph {
            anchors.centerIn: parent
            name: page.glyph
            size: 24
            ink: Theme.accent
        }
    }
    Words {
        Layout.fillWidth: true
        text: page.title
        font.pixelSize: Theme.display
        font.weight: Font.DemiBold
        wrapMode: Text.WordWrap
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    Words {
        Layout.fillWidth: true
        visible: text.length > 0
        text: page.text
        color: Theme.secondaryInk
        lineHeight: 1.3
        wrapMode: Text.WordWrap
    }
    default property alias content: body.data
    ColumnLayout {
        id: body
        Layout.fillWidth: true
        spacing: Theme.padding
    }
    Item {
        Layout.fillHeight: true
        Layout.preferredHeight: 2
    }
}
