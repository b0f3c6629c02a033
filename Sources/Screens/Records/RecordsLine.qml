import QtQuick
import QtQuick.Layouts
import Velloran

/// A piece of work, or all work for one client and project.
Item {
    id: line

    required property string title
    required property string account
    required property string clientColor
    required property string times
    required property string tracked
    required property string billed
    required property string amount
    required property bool isBillable
    required property bool isReviewed
    property bool isCurrent: false
    readonly property string when: times.length === 0 || billed === tracked ? times : qsTr("%1  ·  %2 tracked").arg(times).arg(tracked)
    readonly property string amountText: isBillable ? amount : qsTr("not billable")

    implicitHeight: words.implicitHeight + 14
    Accessible.role: Accessible.ListItem
    readonly property var parts: [title, account, times, qsTr("%1 tracked").arg(tracked), qsTr("%1 billed").arg(billed), amountText]
    Accessible.name: parts.filter((part) => part.length > 0).join(", ")

    FocusRing {
        anchors.margins: 2
        radius: Theme.radius
        isShown: line.isCurrent
    }
    Rectangle {
        anchors.left: parent.left
        anchors.leftMargin: Theme.padding
        y: 9
        width: 4
        height: parent.height - 18
        radius: 2
        color: line.clientColor.length > 0 ? line.clientColor : Theme.anonymous
        opacity: line.isReviewed ? 1 : 0.5
    }
    ColumnLayout {
        id: words
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Theme.padding + 14
        anchors.rightMargin: Theme.padding
        y: 7
        spacing: 1
        RowLayout {
            Layout.fillWidth: true
            spacing: Theme.gap
            Words {
                Layout.fillWidth: true
                text: line.title.length > 0 ? line.title : line.account
                font.weight: Font.Medium
                Accessible.ignored: true
            }
            Words {
                text: line.billed
                Accessible.ignored: true
            }
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: Theme.gap
            Words {
                Layout.fillWidth: true
                text: line.title.length > 0 ? line.account : line.when.length > 0 ? line.when : qsTr("%1 tracked").arg(line.tracked)
                font.pixelSize: Theme.small
                color: Theme.secondaryInk
                Accessible.ignored: true
            }
            Words {
                text: line.amountText
                font.pixelSize: Theme.small
                color: Theme.secondaryInk
                Accessible.ignored: true
            }
        }
        Words {
            Layout.fillWidth: true
            visible: line.title.length > 0 && line.when.length > 0
            text: line.when
            font.pixelSize: Theme.small
            color: Theme.secondaryInk
            Accessible.ignored: true
        }
    }
}
