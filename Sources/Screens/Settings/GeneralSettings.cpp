#include "Screens/Settings/GeneralSettings.h"

#include <QCoreApplication>

#include "App/LaunchAtLogin.h"
#include "Platform/AutostartEntry.h"
#include "Screens/Models/Texts.h"

namespace stintbook {

struct GeneralSettings::Registration {
    explicit Registration(const Environment& variables)
        : entry(AutostartEntry::standardDirectory(variables),
                QCoreApplication::applicationFilePath().toStdString(), {"--at-login"})
    {
    }

    AutostartEntry entry;
    std::optional<LaunchAtLogin> launch;
};

GeneralSettings::GeneralSettings(const ScreenContext& context, QObject* parent)
    : QObject(parent)
    , m_context(context)
    , m_registration(std::make_shared<Registration>(context.variables))
    , m_errands("login", context.main)
{
}

/// Has the registration looked at or changed, and shows what it is then.
template <typename Work> void GeneralSettings::ask(Work work)
{
    m_errands.run(
        this,
        [registration = m_registration, work] {
            if (!registration->launch)
                registration->launch.emplace(registration->entry);
            auto& launch = *registration->launch;
            work(launch);
            const auto& problem = launch.problemMessage();
            return Login{.isEnabled = launch.isEnabled(), .problem = problem ? text(*problem) : QString()};
        },
        [this](const Login& login) {
            m_login = login;
            Q_EMIT changed();
        });
}

bool GeneralSettings::opensWindowAtLogin() const
{
    return m_context.environment.preferences().opensWindowAtLogin();
}

void GeneralSettings::setStartsAtLogin(bool starts)
{
    ask([starts](LaunchAtLogin& launch) { launch.setEnabled(starts); });
}

void GeneralSettings::setOpensWindowAtLogin(bool opens)
{
    m_context.environment.preferences().setOpensWindowAtLogin(opens);
    Q_EMIT changed();
}

void GeneralSettings::refresh()
{
    ask([](LaunchAtLogin& launch) { launch.refresh(); });
}

} // namespace stintbook
