import QtQuick
import QtQuick.Layouts
import Velloran

/// One condition: what it looks at, the value it wants, and how that matches.
ColumnLayout {
    id: row

    required property RuleEditor editor
    required property int index
    required property string dimension
    required property string value
    required property string explanation
    property bool isOnly: false
    readonly property var dimensions: ["application", "windowTitle", "domain"]

    function takeFocus() {
        (dimension === "application" ? application : words).forceActiveFocus(Qt.TabFocusReason);
    }
    function showValue() {
        if (words.text !== value)
            words.text = value;
        application.showIdentifier();
    }
    onValueChanged: showValue()
    Component.onCompleted: showValue()

    spacing: Theme.unit
    RowLayout {
        Layout.fillWidth: true
        spacing: Theme.gap
        ChoiceBox {
            Layout.preferredWidth: 150
            model: ListModel {
                ListElement { choiceID: "application"; name: qsTr("Application") }
                ListElement { choiceID: "windowTitle"; name: qsTr("Title contains") }
                ListElement { choiceID: "domain"; name: qsTr("Domain") }
            }
            currentIndex: row.dimensions.indexOf(row.dimension)
            Accessible.name: qsTr("Kind of condition %1").arg(row.index + 1)
            onActivated: (index) => {
                row.editor.setDimension(row.index, currentValue);
                currentIndex = Qt.binding(() => row.dimensions.indexOf(row.dimension));
            }
        }
        ApplicationField {
            id: application
            Layout.fillWidth: true
            visible: row.dimension === "application"
            editor: row.editor
            identifier: row.value
            Accessible.name: qsTr("Application of condition %1").arg(row.index + 1)
            onChose: (identifier) => row.editor.setValue(row.index, identifier)
        }
        InputField {
            id: words
            Layout.fillWidth: true
            visible: row.dimension !== "application"
            placeholderText: row.dimension === "domain" ? qsTr("example.org") : qsTr("Words of the title")
            Accessible.name: row.dimension === "domain" ? qsTr("Domain of condition %1").arg(row.index + 1)
                                                        : qsTr("Words of condition %1").arg(row.index + 1)
            onTextEdited: row.editor.setValue(row.index, text)
        }
        IconButton {
            visible: !row.isOnly
            glyph: "close"
            text: qsTr("Remove condition %1").arg(row.index + 1)
            onClicked: row.editor.removeCondition(row.index)
        }
    }
    Words {
        Layout.fillWidth: true
        text: row.explanation
        font.pixelSize: Theme.small
        wrapMode: Text.WordWrap
        color: Theme.secondaryInk
    }
}
