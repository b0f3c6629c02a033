import QtQuick
import QtQuick.Layouts
import Velloran

/// An hourly rate, checked while it is typed. The stored one stays until the text is a rate.
FormRow {
    id: row

    required property ClientsModel clients
    property string stored
    property string subject
    property string placeholder
    property string name
    /// Why the last edit of it was not stored.
    property string refusal
    readonly property string fault: clients.rateComplaint(field.text)
    signal edited(string rate)
    signal restored()

    label: clients.currency.length > 0 ? qsTr("Hourly rate (%1)").arg(clients.currency) : qsTr("Hourly rate")
    complaint: fault.length > 0 ? fault : refusal
    StoredField {
        id: field
        Layout.fillWidth: true
        stored: row.stored
        subject: row.subject
        placeholderText: row.placeholder
        inputMethodHints: Qt.ImhFormattedNumbersOnly
        Accessible.name: row.name
        Accessible.description: row.complaint
        onEdited: (text) => { if (row.fault.length === 0) row.edited(text); }
        onRestored: row.restored()
    }
}
