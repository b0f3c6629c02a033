import QtQuick
import Velloran

/// The periods that people look at and bill.
ChoiceBox {
    id: control

    required property RecordsFilter filter

    model: [
        { "choiceID": "thisMonth", "name": qsTr("This month") },
        { "choiceID": "lastMonth", "name": qsTr("Last month") },
        { "choiceID": "thisWeek", "name": qsTr("This week") },
        { "choiceID": "lastWeek", "name": qsTr("Last week") },
        { "choiceID": "all", "name": qsTr("All") },
        { "choiceID": "custom", "name": qsTr("Custom") }
    ]
    currentIndex: model.findIndex((one) => one.choiceID === control.filter.period)
    Accessible.name: qsTr("Period")
    onActivated: filter.period = currentValue
}
