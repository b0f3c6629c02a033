import QtQuick
import Velloran

/// A setting that is on or off. It shows what holds, which need not be what was wished.
SettingRow {
    id: row

    property bool isOn: false
    signal turned(bool isOn)

    Toggle {
        id: toggle
        checked: row.isOn
        Accessible.name: row.label
        Accessible.description: row.help
        onToggled: {
            const wished = checked;
            checked = Qt.binding(() => row.isOn);
            row.turned(wished);
        }
    }
}
