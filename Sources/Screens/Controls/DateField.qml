import QtQuick
import Velloran

/// A date, typed as the reader's locale writes it in short or as "2026-11-20"; the arrows go to the next and the previous one.
InputField {
    id: control

    /// "2026-11-20"; empty while no date is typed.
    property string date
    readonly property string format: {
        const usual = Qt.locale().dateFormat(Locale.ShortFormat);
        return usual.includes("yyyy") ? usual : usual.replace("yy", "yyyy");
    }

    function show(day: date) {
        text = day.toLocaleDateString(Qt.locale(), format);
    }
    function step(days: int) {
        const day = date.length > 0 ? Date.fromLocaleString(Qt.locale(), date, "yyyy-MM-dd") : new Date();
        if (date.length > 0)
            day.setDate(day.getDate() + days);
        show(day);
    }

    implicitWidth: 132
    placeholderText: format.toLowerCase()
    inputMethodHints: Qt.ImhDate
    onTextChanged: {
        const typed = text.trim();
        const day = /^\d{4}-\d\d-\d\d$/.test(typed) ? Date.fromLocaleString(Qt.locale(), typed, "yyyy-MM-dd")
                                                     : Date.fromLocaleDateString(Qt.locale(), typed, format);
        date = isNaN(day.getTime()) ? "" : day.toLocaleDateString(Qt.locale("C"), "yyyy-MM-dd");
    }
    Keys.onUpPressed: step(1)
    Keys.onDownPressed: step(-1)
}
