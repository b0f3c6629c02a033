pragma Singleton
import QtQuick

/// Every colour, size and duration. Light or dark as the desktop says.
QtObject {
    property bool isDark: false
    property bool reducesMotion: false
    /// The window is so small that spaces give way.
    property bool isNarrow: false
    property bool isLow: false

    readonly property color window: isDark ? "#16191d" : "#f4f5f8"
    readonly property color panel: isDark ? "#1d2125" : "#ffffff"
    readonly property color sunken: isDark ? "#24282d" : "#f0f1f5"
    readonly property color border: isDark ? "#32373d" : "#dfe1e8"
    readonly property color strongBorder: isDark ? "#4a515a" : "#c6cad4"
    readonly property color ink: isDark ? "#eceef1" : "#14171c"
    readonly property color secondaryInk: isDark ? "#a3aab4" : "#596070"
    readonly property color accent: isDark ? "#86a8fb" : "#2f5fd3"
    readonly property color accentInk: isDark ? "#0d1420" : "#ffffff"
    readonly property color selection: isDark ? "#202c46" : "#e8eefc"
    readonly property color hover: isDark ? "#262b31" : "#eceef3"
    readonly property color good: isDark ? "#4fb893" : "#1f7054"
    readonly property color warning: isDark ? "#e8b35a" : "#8a5a00"
    readonly property color warningGround: isDark ? "#2c2415" : "#fdf4e3"
    readonly property color danger: isDark ? "#f08a80" : "#b3261e"
    readonly property color hintGround: isDark ? "#eceef1" : "#22262c"
    readonly property color hintInk: isDark ? "#16191d" : "#ffffff"
    /// Over the window while a sheet is open.
    readonly property color shade: isDark ? "#99000000" : "#55101418"
    readonly property color chosenTrack: isDark ? "#59000000" : "#59ffffff"
    readonly property color idle: isDark ? "#2b3036" : "#e4e6ec"

    /// What a document is printed on, in any light.
    readonly property color paper: "#ffffff"

    /// For clients without a colour of their own.
    readonly property color anonymous: isDark ? "#8b93a0" : "#7d8593"
    /// Ink and ground of a client's chip: readable on each other whatever the client's colour is.
    function chipInk(client: color): color {
        return isDark ? Qt.hsla(client.hslHue, Math.min(client.hslSaturation, 0.8), 0.84, 1)
                      : Qt.hsla(client.hslHue, Math.min(client.hslSaturation, 0.8), 0.2, 1);
    }
    function chipGround(client: color): color {
        return isDark ? Qt.rgba(client.r, client.g, client.b, 0.2) : Qt.rgba(client.r, client.g, client.b, 0.13);
    }

    readonly property string family: "Inter"
    readonly property int caption: 11
    readonly property int small: 12
    readonly property int body: 13
    readonly property int heading: 15
    readonly property int display: 22

    readonly property int unit: 4
    readonly property int gap: 8
    readonly property int padding: 16
    readonly property int margin: isNarrow || isLow ? 16 : 24
    /// Beyond it a row's ends are too far apart to be read as one.
    readonly property int widestPage: 2000
    readonly property int radius: 6
    readonly property int controlHeight: 32

    readonly property int quick: reducesMotion ? 0 : 90
}
