#pragma once

#include <string_view>

namespace stintbook {

enum class BuildKind {
    /// The shipped program, which alone opens the installed copy's store by default.
    installed,
    development,
};

BuildKind buildKind();
/// major.minor.patch
std::string_view version();

inline constexpr std::string_view productName = "Velloran";
/// The application's identifier on the desktop: bus name, desktop entry, log subsystem.
inline constexpr std::string_view applicationIdentifier = "app.velloran.Velloran";

} // namespace stintbook
