#pragma once

#include <filesystem>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "App/PreferencesDocument.h"
#include "Base/BuildInformation.h"
#include "Base/Environment.h"
#include "Base/Preferences.h"

namespace stintbook {

/// The user's choices in a TOML file of the configuration directory. Any thread may call it.
///
/// Read at construction, and when it is refreshed. Each change reads the file again and replaces it in one step,
/// alone among the processes that do, so that a reader or a crash meets the old file or the new one, and nobody's
/// change undoes another's. A file that cannot be read as TOML is set aside as "preferences.damaged.toml" (the next
/// one as "preferences.damaged-2.toml") and reported; the defaults hold, or what had been read of it before.
class PreferencesFile final : public PreferenceStoring {
public:
    explicit PreferencesFile(std::filesystem::path file);

    /// "preferences.toml" of this product in the configuration directory; development builds have a directory of
    /// their own.
    static std::filesystem::path standardLocation(const Environment& environment, BuildKind buildKind);

    std::optional<PreferenceValue> value(std::string_view key) const override;
    /// What cannot be written holds for this object, and is written with the next change that can.
    bool store(std::string_view key, std::optional<PreferenceValue> value) override;
    /// A file that cannot be read now, while somebody is editing it perhaps, is left to the next change.
    void refresh() override;

    const std::filesystem::path& file() const { return m_file; }

private:
    void takeOver(PreferencesDocument document);
    bool read();
    bool setAside(const std::string& reason) const;
    bool write();

    std::filesystem::path m_file;
    /// Held by whoever is at the file, and alone changes what is below.
    std::mutex m_fileLock;
    /// Held for a moment to change or to read what is below, so that who only asks for a value waits for no disk.
    mutable std::mutex m_lock;
    /// As the file was when it was read last.
    PreferencesDocument m_document;
    std::map<std::string, std::optional<PreferenceValue>, std::less<>> m_unwritten;
};

} // namespace stintbook
