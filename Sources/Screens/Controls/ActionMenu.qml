import QtQuick
import QtQuick.Templates as T
import Velloran

/// A menu of `ActionMenuItem`s, made to fit its longest.
T.Menu {
    id: menu

    margins: 4
    padding: 4
    overlap: 1
    implicitWidth: 220
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    contentItem: ListView {
        implicitHeight: contentHeight
        model: menu.contentModel
        interactive: false
        currentIndex: menu.currentIndex
        Accessible.role: Accessible.PopupMenu
    }
    background: Panel { border.color: Theme.strongBorder }
    delegate: ActionMenuItem { }
}
