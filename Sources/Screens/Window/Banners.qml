import QtQuick
import QtQuick.Layouts
import Velloran

/// Everything that is wrong with the store, the recording or the icon, each with its remedy.
ColumnLayout {
    id: banners

    required property ShellModel shell
    property bool hasDismissedLimit: false
    property var dismissedApplications: []
    readonly property var untitled: shell.untitledApplications
    readonly property var untitledApplications: untitled.filter(name => !dismissedApplications.includes(name))

    spacing: 0
    Banner {
        visible: banners.shell.storeProblem.length > 0
        heading: banners.shell.storeProblem
        text: qsTr("%1 %2").arg(banners.shell.storeProblemDetail).arg(banners.shell.storeRetryMessage).trim()
        actionText: qsTr("Retry")
        isActionEnabled: !banners.shell.isRetryingStore
        onActed: banners.shell.retryStore()
    }
    Banner {
        visible: banners.shell.captureProblem.length > 0
        heading: qsTr("Not recording")
        text: banners.shell.captureProblem
    }
    Banner {
        visible: banners.shell.isContextLimited && !banners.hasDismissedLimit
        heading: qsTr("Work context is limited")
        text: qsTr("Windows' titles cannot be read until your desktop's accessibility is on. Programs that run already may have to be started again afterwards.")
        actionText: qsTr("Turn On Accessibility")
        isActionEnabled: !banners.shell.isAskingForAccessibility
        isDismissible: true
        onActed: banners.shell.turnOnAccessibility()
        onDismissed: banners.hasDismissedLimit = true
    }
    Banner {
        visible: !banners.shell.isContextLimited && banners.untitledApplications.length > 0
        heading: qsTr("Restart %1").arg(banners.untitledApplications.join(", "))
        text: qsTr("It tells no titles of its windows, perhaps because it was started before your desktop's accessibility was turned on.")
        isDismissible: true
        onDismissed: banners.dismissedApplications = banners.shell.untitledApplications
    }
    Banner {
        visible: banners.shell.isIconHidden
        heading: banners.shell.iconHiddenTitle
        text: banners.shell.iconHiddenExplanation
        actionText: banners.shell.desktopSettingsTitle
        isDismissible: true
        onActed: banners.shell.openDesktopSettings()
        onDismissed: banners.shell.dismissIconNotice()
    }
}
