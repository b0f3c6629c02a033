#pragma once

#include <string>

namespace stintbook {

/// Which application was in front.
struct ApplicationIdentity {
    /// A desktop-entry id, or "x11:" and a window class where none is known.
    std::string bundleIdentifier;
    /// The name shown to the user.
    std::string displayName;

    friend bool operator==(const ApplicationIdentity&, const ApplicationIdentity&) = default;
    friend auto operator<=>(const ApplicationIdentity&, const ApplicationIdentity&) = default;
};

inline constexpr const char* unknownApplicationName = "Unknown application";

} // namespace stintbook
