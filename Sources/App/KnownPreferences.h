#pragma once

#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "App/AppPreferences.h"

namespace stintbook {

/// What the preferences file says above a key; empty for a key that this program does not know.
std::string_view commentOf(std::string_view key);

/// A running copy takes over another process's choice with its next cleanup; every other one when it starts again.
bool isReadByARunningCopy(std::string_view key);

struct ListedPreference {
    std::string_view key;
    /// As it holds now, by default or by choice.
    std::optional<PreferenceValue> value;
    /// Stands for a value that is absent: "forever", "never", "standard".
    std::string_view absence;
};

/// Every choice of `AppPreferences`, in the order of their keys' groups.
std::vector<ListedPreference> listed(const AppPreferences& preferences);

/// No preference has that key.
struct UnknownPreference {
    std::string key;
};

/// Velloran writes it by itself.
struct PreferenceNotForChoice {
    std::string key;
};

/// The text is no value of that preference.
struct PreferenceValueRefused {
    std::string key;
    std::string text;
    /// "true or false"
    std::string_view expected;
};

/// The file could not be written.
struct PreferenceNotSaved { };

using PreferenceProblem =
    std::variant<UnknownPreference, PreferenceNotForChoice, PreferenceValueRefused, PreferenceNotSaved>;
std::string message(const PreferenceProblem& problem);

/// Chooses by the names and words that people type.
std::expected<void, PreferenceProblem> choose(AppPreferences& preferences, const std::string& key,
                                              const std::string& text);

} // namespace stintbook
