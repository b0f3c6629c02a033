import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Velloran

/// What was recorded: how the time divides among applications, and every piece of it.
ColumnLayout {
    id: record

    required property var subject
    required property var lineage

    spacing: Theme.unit
    Words {
        Layout.topMargin: Theme.gap
        text: qsTr("Recorded")
        font.pixelSize: Theme.small
        font.weight: Font.Medium
        color: Theme.secondaryInk
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    Repeater {
        model: record.subject.shares ?? []
        RowLayout {
            id: share
            required property var modelData
            Layout.fillWidth: true
            spacing: Theme.gap
            Words {
                Layout.fillWidth: true
                text: share.modelData.name
            }
            ProgressLine {
                implicitWidth: 56
                value: share.modelData.fraction
                Accessible.name: share.modelData.name
            }
            Words {
                Layout.preferredWidth: 76
                Layout.minimumWidth: implicitWidth
                horizontalAlignment: Text.AlignRight
                text: share.modelData.duration
                color: Theme.secondaryInk
            }
        }
    }
    ListView {
        id: pieces
        Layout.fillWidth: true
        Layout.topMargin: Theme.unit
        implicitHeight: Math.min(contentHeight, 240)
        clip: true
        model: record.lineage
        activeFocusOnTab: true
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: ScrollEdge { }
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Recorded titles")
        FocusRing {
            anchors.margins: 0
            isShown: pieces.activeFocus
        }
        delegate: Item {
            id: piece
            required property string times
            required property string duration
            required property string application
            required property string title
            required property string domain
            width: pieces.width
            height: words.implicitHeight + 6
            Accessible.role: Accessible.ListItem
            Accessible.name: qsTr("%1, %2, %3, %4").arg(times).arg(application).arg(title).arg(domain)
            Column {
                id: words
                width: parent.width - 10
                Words {
                    width: parent.width
                    text: piece.title.length > 0 ? piece.title : piece.application
                    font.pixelSize: Theme.small
                    Accessible.ignored: true
                }
                Words {
                    width: parent.width
                    text: piece.domain.length > 0 ? qsTr("%1  ·  %2  ·  %3").arg(piece.times).arg(piece.application).arg(piece.domain)
                                                  : qsTr("%1  ·  %2").arg(piece.times).arg(piece.application)
                    font.pixelSize: Theme.caption
                    color: Theme.secondaryInk
                    Accessible.ignored: true
                }
            }
        }
    }
}
