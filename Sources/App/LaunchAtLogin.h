#pragma once

#include <functional>
#include <optional>
#include <string>

#include "App/Listeners.h"
#include "App/Ports/LaunchAtLoginRegistering.h"

namespace stintbook {

/// The switch for opening at login. It shows what the desktop says and never what was wished.
class LaunchAtLogin {
public:
    explicit LaunchAtLogin(LaunchAtLoginRegistering& registration);

    bool isEnabled() const { return m_isEnabled; }
    /// Why the last wish was not granted.
    const std::optional<std::string>& problemMessage() const { return m_problemMessage; }

    void setEnabled(bool isEnabled);
    /// Looks again: its user may have changed it on the desktop.
    void refresh();

    [[nodiscard]] Listeners::Subscription follow(std::function<void()> listener)
    {
        return m_listeners.add(std::move(listener));
    }

private:
    LaunchAtLoginRegistering& m_registration;
    bool m_isEnabled;
    std::optional<std::string> m_problemMessage;
    Listeners m_listeners;
};

} // namespace stintbook
