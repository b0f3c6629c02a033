import QtQuick
import Velloran

/// Which days and whose work are looked at.
Flow {
    id: filters

    required property RecordsFilter filter
    readonly property int choiceWidth: Math.min(180, (width - 2 * spacing) / 3)

    spacing: Theme.gap

    PeriodChoice {
        width: filters.choiceWidth
        filter: filters.filter
    }
    ClientChoice {
        width: filters.choiceWidth
        filter: filters.filter
    }
    ProjectChoice {
        width: filters.choiceWidth
        filter: filters.filter
    }
    DateRangeFields {
        visible: filters.filter.period === "custom"
        first: filters.filter.firstDate
        last: filters.filter.lastDate
        complaint: filters.filter.datesComplaint
        onChanged: (first, last) => filters.filter.setDates(first, last)
    }
}
