import QtQuick
import Velloran

Rectangle {
    color: Theme.panel
    border.color: Theme.border
    border.width: 1
    radius: Theme.radius
}
