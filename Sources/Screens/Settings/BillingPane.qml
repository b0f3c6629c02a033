import QtQuick
import QtQuick.Layouts
import Velloran

SettingsPane {
    id: pane

    required property LedgerSettings ledger

    title: qsTr("Billing")

    Notice {
        Layout.fillWidth: true
        visible: pane.ledger.problem.length > 0
        text: pane.ledger.problem
        onDismissed: pane.ledger.dismissProblem()
    }
    SettingsSection {
        SettingRow {
            label: qsTr("Currency")
            help: pane.ledger.currencyName.length > 0 ? qsTr("All amounts are in this currency: %1.").arg(pane.ledger.currencyName)
                                                      : qsTr("Amounts are shown once there is a currency. Write its three letters, such as EUR.")
            complaint: pane.ledger.currencyProblem
            StoredField {
                id: currency
                implicitWidth: 96
                stored: pane.ledger.currency
                maximumLength: 3
                font.capitalization: Font.AllUppercase
                Accessible.name: qsTr("Currency")
                onEdited: (text) => pane.ledger.setCurrency(text)
                onRestored: pane.ledger.dismissCurrencyProblem()
            }
        }
        SettingRow {
            label: qsTr("Default rounding")
            help: qsTr("How each line of an export becomes billed time, where its client and project say nothing else.")
            ChoiceBox {
                implicitWidth: 220
                model: pane.ledger.roundings
                currentIndex: pane.ledger.rounding
                placeholder: qsTr("Exact")
                Accessible.name: qsTr("Default rounding")
                onActivated: (index) => {
                    currentIndex = Qt.binding(() => pane.ledger.rounding);
                    pane.ledger.setRounding(index);
                }
            }
        }
    }
}
