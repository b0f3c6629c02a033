import QtQuick
import QtQuick.Layouts
import Velloran

/// A line between parts of a column.
Rectangle {
    Layout.fillWidth: true
    implicitHeight: 1
    color: Theme.border
}
