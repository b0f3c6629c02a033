import QtQuick
import QtQuick.Layouts
import QtQuick.Window
import Velloran

Window {
    id: window

    required property SettingsModel settings
    required property AppearanceModel appearance
    property string pane: "general"

    width: 780
    height: 600
    minimumWidth: 700
    minimumHeight: 500
    // Stands by itself: the main window may be closed.
    transientParent: null
    visible: true
    title: qsTr("Settings")
    color: Theme.window
    LayoutMirroring.enabled: Application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true
    Component.onCompleted: settings.open()
    Component.onDestruction: settings.close()

    Shortcut { sequences: ["Escape", StandardKey.Close]; onActivated: window.close() }
    Shortcut { sequences: [StandardKey.Quit]; onActivated: Qt.quit() }

    RowLayout {
        anchors.fill: parent
        spacing: 0
        PaneList {
            Layout.fillHeight: true
            pane: window.pane
            onChose: (pane) => window.pane = pane
        }
        ColumnLayout {
            Layout.fillWidth: true
            Layout.fillHeight: true
            spacing: 0
            Notice {
                Layout.fillWidth: true
                Layout.margins: Theme.padding
                visible: text.length > 0
                text: window.settings.problem
                onDismissed: window.settings.dismissProblem()
            }
            Loader {
                Layout.fillWidth: true
                Layout.fillHeight: true
                sourceComponent: switch (window.pane) {
                    case "capture": return capture;
                    case "billing": return billing;
                    case "history": return history;
                    case "about": return about;
                    default: return general;
                }
            }
        }
    }
    Component { id: general; GeneralPane { general: window.settings.general; appearance: window.appearance } }
    Component { id: capture; CapturePane { capture: window.settings.capture; exclusions: window.settings.exclusions } }
    Component { id: billing; BillingPane { ledger: window.settings.ledger } }
    Component { id: history; HistoryPane { history: window.settings.history; copies: window.settings.copies; about: window.settings.about } }
    Component { id: about; AboutPane { about: window.settings.about; updates: window.settings.updates } }
}
