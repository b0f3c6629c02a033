import QtQuick
import Velloran

/// The day from its first to its last work: blocks in their clients' colours, idle time and what was not recorded.
Panel {
    id: timeline

    required property ReviewModel review

    readonly property double span: Math.max(review.lastSecond - review.firstSecond, 3600)
    readonly property double pointsPerSecond: (track.width) / span
    function place(second: double): int {
        return Math.round((second - review.firstSecond) * pointsPerSecond);
    }

    implicitHeight: 124
    clip: true
    Accessible.role: Accessible.Grouping
    Accessible.name: qsTr("Timeline")

    Item {
        id: track
        anchors.fill: parent
        anchors.margins: Theme.padding

        Repeater {
            model: Math.round(timeline.span / 3600) + 1
            Item {
                id: hour
                required property int index
                readonly property double second: timeline.review.firstSecond + index * 3600
                x: timeline.place(second)
                height: track.height
                Rectangle {
                    y: 20
                    width: 1
                    height: track.height - 20
                    color: Theme.border
                }
                Words {
                    x: hour.index === 0 ? 0 : hour.second >= timeline.review.lastSecond ? -width : -width / 2
                    text: new Date(0, 0, 1, 0, 0, hour.second).toLocaleTimeString(Qt.locale(), Qt.locale().timeFormat(Locale.ShortFormat).replace(":ss", ""))
                    font.pixelSize: Theme.caption
                    color: Theme.secondaryInk
                    Accessible.ignored: true
                }
            }
        }
        Rectangle {
            y: 26
            width: track.width
            height: track.height - 26 - Theme.gap
            radius: 3
            color: Theme.sunken
        }
        Repeater {
            model: timeline.review.spans
            Rectangle {
                required property string title
                required property bool isIdle
                required property double start
                required property double end
                x: timeline.place(start)
                y: 26
                width: Math.max(1, timeline.place(end) - x)
                height: track.height - 26 - Theme.gap
                color: isIdle ? Theme.idle : "transparent"
                Accessible.role: Accessible.StaticText
                Accessible.name: title
            }
        }
        Repeater {
            model: timeline.review.subjects
            Rectangle {
                id: block
                required property string subjectID
                required property string title
                required property string times
                required property string clientColor
                required property string client
                required property string state
                required property double start
                required property double end
                readonly property bool isChosen: timeline.review.selected === subjectID

                x: timeline.place(start)
                y: 26
                width: Math.max(2, timeline.place(end) - x - 1)
                height: track.height - 26 - Theme.gap
                radius: Math.min(3, width / 3)
                opacity: state === "ignored" ? 0.35 : 1
                color: clientColor.length > 0 ? clientColor : Theme.anonymous
                Accessible.role: Accessible.ListItem
                Accessible.name: qsTr("%1, %2").arg(times).arg(title)
                Accessible.onPressAction: timeline.review.select(subjectID)
                TapHandler { onTapped: timeline.review.select(block.subjectID) }
                Rectangle {
                    anchors.fill: parent
                    anchors.margins: -3
                    visible: block.isChosen
                    radius: 5
                    color: "transparent"
                    border.width: 2
                    border.color: Theme.ink
                }
            }
        }
    }
}
