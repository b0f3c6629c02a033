import QtQuick
import QtQuick.Templates as T
import Velloran

/// A document as it is handed over: a table, pages of paper or a text.
Rectangle {
    id: pane

    required property DocumentModel document

    color: Theme.sunken
    border.color: Theme.border
    radius: Theme.radius
    clip: true

    DocumentTable {
        anchors.fill: parent
        anchors.margins: 1
        visible: pane.document.kind === "table"
        document: pane.document
    }
    ListView {
        id: pages
        anchors.fill: parent
        anchors.margins: 1
        visible: pane.document.kind === "pages"
        topMargin: Theme.padding
        bottomMargin: Theme.padding
        spacing: Theme.padding
        clip: true
        model: pane.document.pageCount
        boundsBehavior: Flickable.StopAtBounds
        activeFocusOnTab: true
        T.ScrollBar.vertical: ScrollEdge { }
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Pages")
        readonly property int pageWidth: Math.min(width - 2 * Theme.padding, 760)
        delegate: Item {
            id: page
            required property int index
            width: pages.width
            height: Math.round(pages.pageWidth * pane.document.pageShape)
            Accessible.role: Accessible.ListItem
            Accessible.name: qsTr("Page %1 of %2").arg(index + 1).arg(pages.count)
            Rectangle {
                anchors.centerIn: parent
                width: pages.pageWidth
                height: parent.height
                color: Theme.paper
                border.color: Theme.border
                Image {
                    anchors.fill: parent
                    anchors.margins: 1
                    asynchronous: true
                    cache: false
                    smooth: true
                    sourceSize.width: Math.round(width * Screen.devicePixelRatio)
                    source: pane.document.pageCount > 0 ? pane.document.pageSource(page.index) : ""
                    Accessible.ignored: true
                }
            }
        }
    }
    Flickable {
        id: scroll
        anchors.fill: parent
        anchors.margins: 1
        visible: pane.document.kind === "text"
        contentWidth: width
        contentHeight: summary.height + 2 * Theme.padding
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: ScrollEdge { }
        TextEdit {
            id: summary
            x: Theme.padding
            y: Theme.padding
            width: scroll.width - 2 * Theme.padding
            text: pane.document.text
            readOnly: true
            selectByMouse: true
            wrapMode: TextEdit.Wrap
            textFormat: TextEdit.PlainText
            color: Theme.ink
            selectionColor: Theme.accent
            selectedTextColor: Theme.accentInk
            font.family: Theme.family
            font.pixelSize: Theme.body
            renderType: Text.NativeRendering
            activeFocusOnTab: true
            Accessible.name: qsTr("Summary")
        }
    }
}
