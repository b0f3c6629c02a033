import QtQuick
import Velloran

/// The store's place.
SettingRow {
    id: row

    required property AboutSettings about

    label: qsTr("Store")
    help: about.storeFile.length > 0 ? about.storeFile : qsTr("The store is not open.")

    ActionButton {
        enabled: row.about.storeFile.length > 0
        text: qsTr("Copy Path")
        onClicked: row.about.copyStorePath()
    }
    ActionButton {
        enabled: row.about.storeFile.length > 0
        text: qsTr("Open Folder")
        onClicked: Qt.openUrlExternally("file://" + row.about.storeFolder)
    }
}
