import QtQuick
import Velloran

/// A picker that knows by its identifier what is chosen.
PickerBox {
    id: picker

    property string chosenID
    property int revision: 0
    readonly property int row: rowOf(chosenID, revision)

    function rowOf(id: string, at: int): int {
        for (let i = 0; id.length > 0 && i < model.rowCount(); ++i) {
            if (model.data(model.index(i, 0), Qt.UserRole) === id)
                return i;
        }
        return -1;
    }
    chosenName: row < 0 ? "" : model.data(model.index(row, 0), Qt.UserRole + 1)
    dot: row < 0 ? "transparent" : model.data(model.index(row, 0), Qt.UserRole + 2) || "transparent"
    Connections {
        target: picker.model
        function onRowsInserted() { picker.revision += 1; }
        function onRowsRemoved() { picker.revision += 1; }
        function onRowsMoved() { picker.revision += 1; }
        function onLayoutChanged() { picker.revision += 1; }
        function onDataChanged() { picker.revision += 1; }
    }
}
