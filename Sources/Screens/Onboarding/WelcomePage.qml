import QtQuick
import QtQuick.Layouts
import Velloran

OnboardingPage {
    glyph: "review"
    title: qsTr("Your working day, written down by itself")
    text: qsTr("Velloran notes which application is in front and for how long. At the end of the day you review it, say whom it was for, and bill it.")

    Panel {
        Layout.fillWidth: true
        implicitHeight: facts.implicitHeight + 2 * Theme.padding
        ColumnLayout {
            id: facts
            anchors.fill: parent
            anchors.margins: Theme.padding
            spacing: Theme.padding
            Repeater {
                model: [
                    { "glyph": "eye", "title": qsTr("Recorded"),
                      "text": qsTr("The application in front, its window's title, when you were away, and, only if you want it, the domain of the page in your browser.") },
                    { "glyph": "minus", "title": qsTr("Never recorded"),
                      "text": qsTr("What you type, what is on your screen, whole web addresses, and private browser windows.") },
                    { "glyph": "archive", "title": qsTr("Stays here"),
                      "text": qsTr("Everything lies in one file on this computer. Nothing is sent anywhere: there is no account and no server.") }
                ]
                RowLayout {
                    id: fact
                    required property var modelData
                    Layout.fillWidth: true
                    spacing: Theme.padding
                    Glyph {
                        Layout.alignment: Qt.AlignTop
                        Layout.preferredWidth: 16
                        Layout.preferredHeight: 16
                        name: fact.modelData.glyph
                        ink: Theme.accent
                    }
                    ColumnLayout {
                        Layout.fillWidth: true
                        spacing: 2
                        Words {
                            Layout.fillWidth: true
                            text: fact.modelData.title
                            font.weight: Font.DemiBold
                        }
                        Words {
                            Layout.fillWidth: true
                            text: fact.modelData.text
                            color: Theme.secondaryInk
                            wrapMode: Text.WordWrap
                        }
                    }
                }
            }
        }
    }
}
