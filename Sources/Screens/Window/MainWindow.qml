import QtQuick
import QtQuick.Layouts
import QtQuick.Window
import Velloran

Window {
    id: window

    required property AppearanceModel appearance
    required property ShellModel shell
    required property ReviewModel review
    required property ReviewEdits edits
    required property RecordsModel records
    required property ClientsModel clients
    required property RulesModel rules
    required property SettingsModel settings
    required property OnboardingModel onboarding

    width: 1280
    height: 820
    minimumWidth: 900
    minimumHeight: 600
    title: Application.displayName
    color: Theme.window

    LayoutMirroring.enabled: Application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true

    SystemPalette { id: desktop }
    Binding {
        target: Theme
        property: "isDark"
        value: window.appearance.scheme.length > 0 ? window.appearance.scheme === "dark"
                                                   : desktop.window.hslLightness < 0.5
    }
    Binding {
        target: Theme
        property: "reducesMotion"
        value: window.appearance.reducesMotion
    }

    Binding {
        target: Theme
        property: "isNarrow"
        value: window.width < 1080
    }
    Binding {
        target: Theme
        property: "isLow"
        value: window.height < 720
    }

    Shortcut { sequences: [StandardKey.Quit]; onActivated: Qt.quit() }
    Shortcut { sequences: [StandardKey.Close]; onActivated: window.close() }
    Shortcut { sequences: [StandardKey.Preferences, "Ctrl+,"]; onActivated: window.shell.settingsOpen = true }
    Shortcut { sequence: "?"; onActivated: window.shell.helpOpen = true }
    Shortcut { sequence: "Ctrl+1"; onActivated: window.shell.page = "review" }
    Shortcut { sequence: "Ctrl+2"; onActivated: window.shell.page = "records" }
    Shortcut { sequence: "Ctrl+3"; onActivated: window.shell.page = "clients" }
    Shortcut { sequence: "Ctrl+4"; onActivated: window.shell.page = "rules" }

    Loader {
        active: window.shell.helpOpen
        sourceComponent: KeyboardHelp {
            Component.onCompleted: open()
            onClosed: window.shell.helpOpen = false
        }
    }

    Banners {
        id: banners
        anchors.left: parent.left
        anchors.right: parent.right
        shell: window.shell
    }
    RowLayout {
        anchors.fill: parent
        anchors.topMargin: banners.implicitHeight
        visible: !window.onboarding.isDue
        spacing: 0
        Sidebar {
            Layout.fillHeight: true
            shell: window.shell
        }
        Item {
            Layout.fillWidth: true
            Layout.fillHeight: true
            Page {
                shell: window.shell
                key: "review"
                sourceComponent: ReviewScreen {
                    review: window.review
                    edits: window.edits
                    onRuleChosen: (ruleID) => {
                        window.shell.page = "rules";
                        window.rules.selected = ruleID;
                    }
                    onRuleWanted: (dayID, workID) => window.rules.suggestFor(dayID, workID, "")
                }
            }
            Page {
                shell: window.shell
                key: "records"
                sourceComponent: RecordsScreen {
                    records: window.records
                    onDayOpened: (dayID) => {
                        window.review.openDay(dayID);
                        window.shell.page = "review";
                    }
                }
            }
            Page {
                shell: window.shell
                key: "clients"
                sourceComponent: ClientsScreen { clients: window.clients }
            }
            Page {
                shell: window.shell
                key: "rules"
                sourceComponent: RulesScreen { rules: window.rules }
            }
        }
    }
    Connections {
        target: window.rules
        function onSuggestionRefused(sentence: string) { window.review.setProblem(sentence); }
    }
    // Over whichever screen it was asked from.
    Loader {
        active: window.rules.editor.isOpen || item !== null
        sourceComponent: RuleEditorSheet { editor: window.rules.editor }
    }
    Loader {
        anchors.fill: parent
        active: window.onboarding.isDue
        focus: active
        sourceComponent: OnboardingPages {
            onboarding: window.onboarding
            capture: window.settings.capture
            onReviewAsked: window.shell.page = "review"
        }
    }
    Loader {
        active: window.shell.settingsOpen
        sourceComponent: SettingsWindow {
            settings: window.settings
            appearance: window.appearance
            onClosing: window.shell.settingsOpen = false
        }
    }
}
