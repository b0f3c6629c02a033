import QtQuick
import Velloran

OnboardingPage {
    id: page

    required property OnboardingModel onboarding

    glyph: "check"
    title: qsTr("Your day so far")
    text: onboarding.today + "\n\n" + qsTr("Velloran keeps recording while its window is closed. In Review you assign the day's work; a whole day takes a minute or two.")
}
