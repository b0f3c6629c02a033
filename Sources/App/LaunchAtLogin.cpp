#include "App/LaunchAtLogin.h"

#include <fmt/format.h>

#include "App/PlatformTexts.h"
#include "Base/BuildInformation.h"
#include "Base/Log.h"

namespace stintbook {

LaunchAtLogin::LaunchAtLogin(LaunchAtLoginRegistering& registration)
    : m_registration(registration)
    , m_isEnabled(registration.isRegistered())
{
}

void LaunchAtLogin::setEnabled(bool isEnabled)
{
    const auto changed = isEnabled ? m_registration.add() : m_registration.remove();
    m_problemMessage.reset();
    if (!changed) {
        log::error("Opening at login could not be changed: {}", changed.error());
        m_problemMessage =
            fmt::format("{} could not change this. {}", productName, platformtexts::whereToAddToLogin);
    }
    refresh();
}

void LaunchAtLogin::refresh()
{
    m_isEnabled = m_registration.isRegistered();
    m_listeners.tell();
}

} // namespace stintbook
