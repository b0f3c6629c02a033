import QtQuick
import QtQuick.Templates as T
import Velloran

/// An application: one of those that were seen or are installed, found by a few letters, or any identifier.
InputField {
    id: field

    required property RuleEditor editor
    property string identifier
    signal chose(string identifier)

    function showIdentifier() {
        if (!activeFocus)
            text = identifier.length > 0 ? editor.applicationName(identifier) : "";
    }
    function choose(identifier: string) {
        chose(identifier);
        text = editor.applicationName(identifier);
        list.close();
    }
    function openList(words: string) {
        editor.searchApplications(words);
        names.currentIndex = -1;
        list.open();
    }

    placeholderText: qsTr("Choose an application")
    rightPadding: 28
    Accessible.description: identifier
    onTextEdited: {
        chose(editor.applicationNamed(text));
        openList(text);
    }
    onActiveFocusChanged: {
        if (activeFocus)
            return;
        list.close();
        showIdentifier();
    }
    Keys.onDownPressed: {
        if (!list.opened)
            openList("");
        names.incrementCurrentIndex();
    }
    Keys.onUpPressed: names.decrementCurrentIndex()
    Keys.onReturnPressed: (event) => {
        event.accepted = list.opened && names.currentItem !== null;
        if (event.accepted)
            choose(names.currentItem.choiceID);
    }
    Keys.onEscapePressed: (event) => {
        event.accepted = list.opened;
        list.close();
    }

    Glyph {
        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        name: "chevron-down"
        ink: Theme.secondaryInk
        size: 12
        TapHandler {
            onTapped: {
                field.forceActiveFocus();
                field.openList("");
            }
        }
    }
    T.Popup {
        id: list
        y: field.height + 2
        width: field.width
        height: Math.min(names.contentHeight + 8, 232)
        padding: 4
        closePolicy: T.Popup.CloseOnPressOutsideParent
        contentItem: ListView {
            id: names
            clip: true
            implicitHeight: contentHeight
            model: field.editor.applications
            boundsBehavior: Flickable.StopAtBounds
            currentIndex: -1
            Accessible.role: Accessible.List
            Accessible.name: qsTr("Applications")
            T.ScrollBar.vertical: ScrollEdge { }
            delegate: T.ItemDelegate {
                id: choice

                required property int index
                required property string choiceID
                required property string name
                required property bool isObserved

                width: ListView.view.width
                height: 40
                hoverEnabled: true
                highlighted: ListView.isCurrentItem
                focusPolicy: Qt.NoFocus
                onClicked: field.choose(choiceID)
                Accessible.role: Accessible.ListItem
                Accessible.name: qsTr("%1, %2").arg(name).arg(choiceID)
                Accessible.onPressAction: choice.clicked()
                contentItem: Item {
                    Words {
                        x: 6
                        y: 3
                        width: parent.width - 12
                        text: choice.name
                        font.weight: choice.isObserved ? Font.Medium : Font.Normal
                        Accessible.ignored: true
                    }
                    Words {
                        x: 6
                        y: 21
                        width: parent.width - 12
                        text: choice.isObserved ? qsTr("%1  ·  seen at work").arg(choice.choiceID) : choice.choiceID
                        font.pixelSize: Theme.caption
                        color: Theme.secondaryInk
                        Accessible.ignored: true
                    }
                }
                background: Rectangle {
                    radius: Theme.radius - 2
                    color: choice.highlighted ? Theme.selection : choice.hovered ? Theme.hover : "transparent"
                }
            }
        }
        background: Panel { border.color: Theme.strongBorder }
    }
}
