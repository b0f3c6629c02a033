import QtQuick

/// Colours that are told apart in light and in dark. Any other may be chosen beside them.
QtObject {
    readonly property list<PaletteColor> colors: [
        PaletteColor { hex: "#2F6FD0"; name: qsTr("Blue") },
        PaletteColor { hex: "#C98A2B"; name: qsTr("Amber") },
        PaletteColor { hex: "#3A9C82"; name: qsTr("Teal") },
        PaletteColor { hex: "#B4557A"; name: qsTr("Rose") },
        PaletteColor { hex: "#7A62C4"; name: qsTr("Violet") },
        PaletteColor { hex: "#5B9140"; name: qsTr("Green") },
        PaletteColor { hex: "#C2563F"; name: qsTr("Brick") },
        PaletteColor { hex: "#2E93B5"; name: qsTr("Cyan") },
        PaletteColor { hex: "#9A7B4F"; name: qsTr("Sand") },
        PaletteColor { hex: "#6B7A90"; name: qsTr("Slate") }
    ]

    /// A colour for the client after that many.
    function nextColor(count: int): string {
        return colors[count % colors.length].hex;
    }
}
