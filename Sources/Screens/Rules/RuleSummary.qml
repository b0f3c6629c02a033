import QtQuick
import QtQuick.Layouts
import Velloran

/// What a rule matches, whom it is for, and how it fares, in two lines.
ColumnLayout {
    id: summary

    /// The row of the list that it is part of.
    required property var rule

    spacing: 3
    RowLayout {
        Layout.fillWidth: true
        spacing: Theme.gap
        Words {
            Layout.fillWidth: true
            text: summary.rule.conditions
            font.weight: Font.Medium
            color: summary.rule.isEnabled ? Theme.ink : Theme.secondaryInk
            Accessible.ignored: true
        }
        RuleBadge {
            visible: !summary.rule.isEnabled
            text: qsTr("Off")
            ink: Theme.secondaryInk
        }
        RuleBadge {
            Layout.maximumWidth: 230
            visible: summary.rule.badge.length > 0
            text: summary.rule.badge
            ink: Theme.warning
        }
    }
    RowLayout {
        Layout.fillWidth: true
        spacing: Theme.gap
        Rectangle {
            implicitWidth: 8
            implicitHeight: 8
            radius: 2
            color: summary.rule.clientColor.length > 0 ? summary.rule.clientColor : Theme.anonymous
        }
        Words {
            Layout.fillWidth: true
            text: summary.rule.billing.length > 0 ? qsTr("%1  ·  %2").arg(summary.rule.target).arg(summary.rule.billing)
                                                  : summary.rule.target
            font.pixelSize: Theme.small
            color: Theme.secondaryInk
            Accessible.ignored: true
        }
        Words {
            text: summary.rule.counts
            font.pixelSize: Theme.small
            color: Theme.secondaryInk
            Accessible.ignored: true
        }
    }
}
