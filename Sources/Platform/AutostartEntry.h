#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "App/Ports/LaunchAtLoginRegistering.h"
#include "Base/Environment.h"

namespace stintbook {

/// The application's entry among those that the desktop starts at login: app.velloran.Velloran.desktop in
/// $XDG_CONFIG_HOME/autostart.
///
/// An entry that its user has switched off there counts as none. What else stands in the entry stays; one that
/// starts another program is nobody's to change from here.
class AutostartEntry final : public LaunchAtLoginRegistering {
public:
    /// The program's whole path, and its arguments, as they are to be started at login.
    AutostartEntry(const std::filesystem::path& directory, std::filesystem::path program,
                   std::vector<std::string> arguments);

    /// "autostart" in the configuration directory.
    static std::filesystem::path standardDirectory(const Environment& environment);

    bool isRegistered() const override;
    std::expected<void, std::string> add() override;
    std::expected<void, std::string> remove() override;

private:
    std::expected<void, std::string> write(const std::string& text) const;
    /// The entry as it is made here.
    std::string ownText() const;
    bool isOwn(const std::string& text) const;

    std::filesystem::path m_file;
    std::filesystem::path m_program;
    std::vector<std::string> m_arguments;
};

} // namespace stintbook
