import QtQuick
import QtQuick.Templates as T
import Velloran

T.ItemDelegate {
    id: row

    required property string name
    property string choiceID
    property color dot: "transparent"

    implicitHeight: Theme.controlHeight
    hoverEnabled: true
    Accessible.role: Accessible.ListItem
    Accessible.name: name
    Accessible.onPressAction: row.clicked()
    contentItem: Item {
        Rectangle {
            x: row.mirrored ? parent.width - width - 8 : 8
            anchors.verticalCenter: parent.verticalCenter
            width: 8
            height: 8
            radius: 2
            color: row.dot
        }
        Words {
            anchors.fill: parent
            anchors.leftMargin: row.dot.a > 0 ? 24 : 8
            anchors.rightMargin: 8
            text: row.name
            verticalAlignment: Text.AlignVCenter
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        radius: Theme.radius - 2
        color: row.highlighted ? Theme.selection : row.hovered ? Theme.hover : "transparent"
    }
}
