import QtQuick
import Velloran

/// Which days and whose work are looked at.
Flow {
    id: filters

    required property RecordsFilter filter
    readonly property var periods: [
        { "choiceID": "thisMonth", "name": qsTr("This month") },
        { "choiceID": "lastMonth", "name": qsTr("Last month") },
        { "choiceID": "thisWeek", "name": qsTr("This week") },
        { "choiceID": "lastWeek", "name": qsTr("Last week") },
        { "choiceID": "all", "name": qsTr("All") },
        { "choiceID": "custom", "name": qsTr("Custom") }
    ]
    readonly property int choiceWidth: Math.min(180, (width - 2 * spacing) / 3)

    spacing: Theme.gap

    ChoiceBox {
        width: filters.choiceWidth
        model: filters.periods
        currentIndex: filters.periods.findIndex((one) => one.choiceID === filters.filter.period)
        Accessible.name: qsTr("Period")
        onActivated: filters.filter.period = currentValue
    }
    FilterChoice {
        width: filters.choiceWidth
        model: filters.filter.clients
        chosen: filters.filter.clientID
        Accessible.name: qsTr("Client")
        onChose: (choice) => filters.filter.clientID = choice
    }
    FilterChoice {
        width: filters.choiceWidth
        enabled: filters.filter.clientID.length > 0
        model: filters.filter.projects
        chosen: filters.filter.projectID
        Accessible.name: qsTr("Project")
        onChose: (choice) => filters.filter.projectID = choice
    }
    DateRangeFields {
        visible: filters.filter.period === "custom"
        first: filters.filter.firstDate
        last: filters.filter.lastDate
        complaint: filters.filter.datesComplaint
        onChanged: (first, last) => filters.filter.setDates(first, last)
    }
}
