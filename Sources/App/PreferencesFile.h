#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "Base/BuildInformation.h"
#include "Base/Preferences.h"

namespace stintbook {

/// The user's choices in a TOML file of the configuration directory: the key "stintbook.capture.titleContext"
/// is `titleContext` in the table `[stintbook.capture]`.
///
/// Read once at construction. Each change replaces the file in one step, so that a reader or a crash meets
/// the old file or the new one; keys that this program does not know stay. A file that is no TOML is set
/// aside as "preferences.damaged.toml" and reported, and the defaults hold.
class PreferencesFile final : public PreferenceStoring {
public:
    explicit PreferencesFile(std::filesystem::path file);

    /// "preferences.toml" of this product in $XDG_CONFIG_HOME, else ~/.config; development builds have a
    /// directory of their own.
    static std::filesystem::path standardLocation(const std::map<std::string, std::string>& environment,
                                                  BuildKind buildKind);

    std::optional<PreferenceValue> value(std::string_view key) const override;
    bool store(std::string_view key, std::optional<PreferenceValue> value) override;

    const std::filesystem::path& file() const { return m_file; }

private:
    bool write() const;

    std::filesystem::path m_file;
    /// The whole file as text between two changes, so that TOML's types stay out of this header.
    std::string m_document;
};

} // namespace stintbook
