import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Velloran

/// A month to choose a day from.
T.Popup {
    id: popup

    required property ReviewModel review

    x: parent ? parent.width - width : 0
    y: parent ? parent.height + 4 : 0
    width: 7 * 40 + 2 * padding
    height: contentItem.implicitHeight + 2 * padding
    padding: 12
    margins: 8
    focus: true
    onAboutToShow: review.calendar.showMonth()
    onOpened: {
        for (let index = 0; index < grid.count; ++index) {
            if (grid.itemAtIndex(index)?.isChosen)
                grid.currentIndex = index;
        }
        grid.forceActiveFocus();
    }
    background: Panel { border.color: Theme.strongBorder }

    contentItem: ColumnLayout {
        spacing: Theme.gap
        RowLayout {
            Layout.fillWidth: true
            Words {
                Layout.fillWidth: true
                text: popup.review.calendar.monthTitle
                font.weight: Font.DemiBold
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            IconButton {
                glyph: "chevron-left"
                text: qsTr("Previous Month")
                onClicked: popup.review.calendar.moveMonth(-1)
            }
            IconButton {
                glyph: "chevron-right"
                text: qsTr("Next Month")
                onClicked: popup.review.calendar.moveMonth(1)
            }
        }
        Row {
            Repeater {
                model: popup.review.calendar.weekdays
                Words {
                    required property string modelData
                    width: 40
                    horizontalAlignment: Text.AlignHCenter
                    text: modelData
                    font.pixelSize: Theme.caption
                    color: Theme.secondaryInk
                    Accessible.ignored: true
                }
            }
        }
        GridView {
            id: grid
            implicitWidth: 7 * 40
            implicitHeight: 6 * 44
            cellWidth: 40
            cellHeight: 44
            interactive: false
            keyNavigationEnabled: true
            activeFocusOnTab: true
            model: popup.review.calendar.month
            Accessible.role: Accessible.Table
            Accessible.name: popup.review.calendar.monthTitle
            Keys.onReturnPressed: currentItem?.clicked()
            Keys.onPressed: (event) => {
                if (event.key === Qt.Key_PageUp)
                    popup.review.calendar.moveMonth(-1);
                else if (event.key === Qt.Key_PageDown)
                    popup.review.calendar.moveMonth(1);
            }
            delegate: DayButton {
                id: day
                required property int index
                width: 40
                height: 44
                opacity: isOutside ? 0.5 : 1
                focusPolicy: Qt.NoFocus
                isCurrent: grid.activeFocus && grid.currentIndex === index
                onIsChosenChanged: if (isChosen) grid.currentIndex = index
                Component.onCompleted: if (isChosen) grid.currentIndex = index
                onClicked: {
                    popup.close();
                    popup.review.openDay(dayID);
                }
            }
        }
    }
}
