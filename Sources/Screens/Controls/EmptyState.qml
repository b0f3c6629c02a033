import QtQuick
import QtQuick.Layouts
import Velloran

/// Instead of a list that has nothing: why, and what to do about it.
ColumnLayout {
    id: state

    property string glyph
    property alias heading: title.text
    property alias text: sentence.text
    property alias actionText: action.text
    signal acted()

    spacing: Theme.gap
    width: Math.min(360, parent ? parent.width - 2 * Theme.margin : 360)
    Glyph {
        Layout.alignment: Qt.AlignHCenter
        visible: state.glyph.length > 0
        name: state.glyph.length > 0 ? state.glyph : "review"
        size: 28
        ink: Theme.strongBorder
    }
    Words {
        id: title
        Layout.fillWidth: true
        visible: text.length > 0
        font.pixelSize: Theme.heading
        font.weight: Font.DemiBold
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.WordWrap
    }
    Words {
        id: sentence
        Layout.fillWidth: true
        visible: text.length > 0
        color: Theme.secondaryInk
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.WordWrap
    }
    ActionButton {
        id: action
        Layout.alignment: Qt.AlignHCenter
        Layout.topMargin: Theme.gap
        visible: text.length > 0
        onClicked: state.acted()
    }
}
