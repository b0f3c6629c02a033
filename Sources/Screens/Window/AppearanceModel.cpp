#include "Screens/Window/AppearanceModel.h"

#include "Screens/Models/Texts.h"

namespace stintbook {

AppearanceModel::AppearanceModel(AppPreferences& preferences, QObject* parent)
    : QObject(parent)
    , m_preferences(preferences)
{
    connect(&m_desktop, &DesktopAppearance::changed, this, &AppearanceModel::changed);
}

QString AppearanceModel::choice() const
{
    return text(rawValue(m_preferences.appearance()));
}

void AppearanceModel::setChoice(const QString& choice)
{
    const auto chosen = fromRawValue<AppearanceChoice>(choice.toStdString());
    if (!chosen || *chosen == m_preferences.appearance())
        return;
    m_preferences.setAppearance(*chosen);
    Q_EMIT changed();
}

QString AppearanceModel::scheme() const
{
    if (m_preferences.appearance() != AppearanceChoice::system)
        return choice();
    const auto prefersDark = m_desktop.prefersDark();
    return text(!prefersDark ? ""
                             : rawValue(*prefersDark ? AppearanceChoice::dark : AppearanceChoice::light));
}

} // namespace stintbook
