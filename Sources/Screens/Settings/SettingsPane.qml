import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import QtQuick.Window
import Velloran

/// A page of sections, scrolled where it is longer than the window, and to where the keyboard is.
Flickable {
    id: pane

    required property string title
    default property alias sections: column.data
    readonly property Item focused: Window.activeFocusItem

    function reveal(item: Item) {
        const top = item.mapToItem(column, 0, 0).y + column.y;
        if (top < contentY)
            contentY = Math.max(0, top - Theme.margin);
        else if (top + item.height > contentY + height)
            contentY = Math.min(contentHeight - height, top + item.height + Theme.margin - height);
    }
    function holds(item: Item): bool {
        for (let above = item; above; above = above.parent) {
            if (above === column)
                return true;
        }
        return false;
    }
    onFocusedChanged: if (holds(focused)) reveal(focused)

    contentHeight: column.implicitHeight + 2 * Theme.margin
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    T.ScrollBar.vertical: ScrollEdge { }
    Accessible.role: Accessible.Pane
    Accessible.name: title

    ColumnLayout {
        id: column
        x: Theme.margin
        y: Theme.margin
        width: pane.width - 2 * Theme.margin
        spacing: Theme.margin
        Words {
            Layout.fillWidth: true
            text: pane.title
            font.pixelSize: Theme.display
            font.weight: Font.DemiBold
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
    }
}
