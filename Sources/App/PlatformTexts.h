#pragma once

#include <string_view>

/// Sentences that name places of the desktop, in one place because another desktop has others.
namespace stintbook::platformtexts {

/// Behind "Velloran could not change this. ".
inline constexpr std::string_view whereToAddToLogin =
    "You can add it in your desktop's settings, under Startup Applications or Autostart.";
inline constexpr std::string_view iconHiddenTitle = "Velloran's icon isn't visible on this display.";
inline constexpr std::string_view iconHiddenExplanation =
    "Capture keeps going in the background. Review lives in the icon's menu and the main window. If you "
    "don't see "
    "it, check whether your desktop shows status icons.";
inline constexpr std::string_view openDesktopSettings = "Open System Settings";

} // namespace stintbook::platformtexts
