#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "Domain/ApplicationIdentity.h"

namespace stintbook {

/// What a window tells about the program it belongs to; empty and 0 where it does not tell.
struct WindowHints {
    /// `_GTK_APPLICATION_ID`, or a Wayland window's `app_id`.
    std::string applicationID;
    /// `WM_CLASS`, or a Wayland window's `app_id`.
    std::string windowClass;
    std::int32_t processIdentifier = 0;

    friend bool operator==(const WindowHints&, const WindowHints&) = default;
};

/// The installed applications, as their desktop entries describe them.
///
/// A window's application is, in this order: the entry that the application id names; the one whose
/// `StartupWMClass` is the window's class; the one whose id, or the last dotted part of it, is the class;
/// the one that starts the window's executable. Comparisons are exact before they ignore case. Without an
/// entry the identifier is "x11:" and the class.
class ApplicationIdentities {
public:
    struct Places {
        /// Directories that hold an "applications" directory, the most important first.
        std::vector<std::filesystem::path> dataDirectories;
        /// In the form of $LANG, as "de_DE.UTF-8": the language of displayed names.
        std::string locale;
        std::filesystem::path processes = "/proc";

        /// $XDG_DATA_HOME, $XDG_DATA_DIRS and $LC_ALL, $LC_MESSAGES, $LANG, with their defaults.
        static Places ofEnvironment();
    };

    explicit ApplicationIdentities(Places places = Places::ofEnvironment());

    /// Reads the entries anew when a directory of them has changed.
    ApplicationIdentity identify(const WindowHints& hints);
    /// Those that people start from their desktop, in order of importance.
    std::vector<ApplicationIdentity> installed();

private:
    struct Entry {
        std::string id;
        std::string name;
        std::string windowClass;
        /// The executable's base name; empty for programs of a terminal.
        std::string executable;
        /// Menus leave it out.
        bool isUnlisted = false;
    };
    struct Directory {
        std::filesystem::path path;
        std::filesystem::file_time_type changed;
    };

    bool hasChanged() const;
    void readAll();
    void readDirectory(const std::filesystem::path& applications);
    static std::optional<Entry> readEntry(const std::filesystem::path& file, std::string id,
                                          const std::vector<std::string>& nameKeys);
    const Entry* find(const WindowHints& hints) const;
    std::string executableOf(std::int32_t processIdentifier) const;

    Places m_places;
    /// "Name[de_DE]", "Name[de]", "Name": the first that an entry holds is shown.
    std::vector<std::string> m_nameKeys;
    bool m_wasRead = false;
    std::vector<Directory> m_directories;
    /// In order of importance.
    std::vector<Entry> m_entries;
};

} // namespace stintbook
