import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Velloran

/// A project: a line, and below it, once it is open, all that can be set of it.
Rectangle {
    id: row

    required property ClientsModel clients
    required property string projectID
    required property string name
    required property string rate
    required property string rounding
    required property string summary
    required property string references
    required property bool isBillable
    required property bool isArchived
    property bool isOpen: false
    readonly property var complaints: clients.complaints
    signal toggled()

    implicitHeight: column.implicitHeight
    radius: Theme.radius
    color: isOpen ? Theme.sunken : "transparent"
    border.color: Theme.border

    ColumnLayout {
        id: column
        width: parent.width
        spacing: 0

        T.AbstractButton {
            id: line
            Layout.fillWidth: true
            implicitHeight: 48
            focusPolicy: Qt.StrongFocus
            hoverEnabled: true
            Accessible.role: Accessible.Button
            Accessible.name: qsTr("Project %1, %2").arg(row.name).arg(row.summary)
            Accessible.onPressAction: line.clicked()
            onClicked: row.toggled()
            Keys.onReturnPressed: clicked()
            Keys.onEnterPressed: clicked()
            contentItem: RowLayout {
                spacing: Theme.gap
                Glyph {
                    Layout.leftMargin: 12
                    Layout.preferredWidth: size
                    Layout.preferredHeight: size
                    name: row.isOpen ? "chevron-down" : row.mirrored ? "chevron-left" : "chevron-right"
                    size: 12
                    ink: Theme.secondaryInk
                }
                Words {
                    Layout.fillWidth: true
                    text: row.name
                    font.weight: Font.Medium
                    color: row.isArchived ? Theme.secondaryInk : Theme.ink
                    Accessible.ignored: true
                }
                Words {
                    Layout.rightMargin: 12
                    Layout.maximumWidth: row.width * 0.6
                    text: row.summary
                    font.pixelSize: Theme.small
                    color: Theme.secondaryInk
                    Accessible.ignored: true
                }
            }
            background: Rectangle {
                radius: Theme.radius
                color: line.hovered && !row.isOpen ? Theme.hover : "transparent"
                FocusRing {
                    anchors.margins: 0
                    isShown: line.visualFocus
                }
            }
        }
        Loader {
            Layout.fillWidth: true
            Layout.margins: Theme.padding
            Layout.topMargin: Theme.unit
            active: row.isOpen
            visible: active
            sourceComponent: ProjectEditor { project: row }
        }
    }
    readonly property bool mirrored: LayoutMirroring.enabled
}
