#pragma once

#include <string_view>

/// The names under which choices are stored. They never change.
namespace stintbook::preferencekeys {

inline constexpr std::string_view onboardingCompleted = "stintbook.onboarding.completed";
inline constexpr std::string_view titleContext = "stintbook.capture.titleContext";
inline constexpr std::string_view browserContext = "stintbook.capture.browserContext";
inline constexpr std::string_view retentionDays = "stintbook.privacy.retentionDays";
inline constexpr std::string_view automaticCleanup = "stintbook.privacy.automaticCleanup";
inline constexpr std::string_view lastCleanup = "stintbook.privacy.lastCleanup";
inline constexpr std::string_view exportMode = "stintbook.export.defaultMode";
inline constexpr std::string_view summarizedFields = "stintbook.export.fields.summary";
inline constexpr std::string_view detailedFields = "stintbook.export.fields.detailed";
inline constexpr std::string_view appearance = "velloran.appearance";
inline constexpr std::string_view opensWindowAtLogin = "velloran.opensWindowAtLogin";

} // namespace stintbook::preferencekeys
