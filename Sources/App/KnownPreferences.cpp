#include "App/KnownPreferences.h"

#include <algorithm>

#include <fmt/format.h>

#include "App/HistoryRetention.h"
#include "App/PreferenceKeys.h"
#include "Base/RawValue.h"
#include "Capture/CapturePause.h"

namespace stintbook {

namespace {

using Value = std::optional<PreferenceValue>;

/// Absent where the text is no value of the preference; otherwise whether it could be saved.
using Choice = std::optional<bool>;

struct Preference {
    std::string_view key;
    std::string_view comment;
    std::string_view expected;
    std::string_view absence;
    Value (*read)(const AppPreferences&);
    /// Null: not for choice.
    Choice (*choose)(AppPreferences&, std::string_view text);
};

std::optional<bool> flag(std::string_view text)
{
    if (text == "true" || text == "yes")
        return true;
    if (text == "false" || text == "no")
        return false;
    return std::nullopt;
}

template <bool (AppPreferences::*read)() const> Value readFlag(const AppPreferences& preferences)
{
    return (preferences.*read)();
}

template <bool (AppPreferences::*assign)(bool)>
Choice chooseFlag(AppPreferences& preferences, std::string_view text)
{
    const auto value = flag(text);
    return value ? Choice((preferences.*assign)(*value)) : std::nullopt;
}

Value readWindow(const AppPreferences& preferences)
{
    const auto count = preferences.retentionWindow().dayCount();
    return count ? Value(*count) : std::nullopt;
}

Choice chooseWindow(AppPreferences& preferences, std::string_view text)
{
    const auto chosen = retentionWindowFrom(text);
    return chosen ? Choice(preferences.setRetentionWindow(*chosen)) : std::nullopt;
}

Value readLastCleanup(const AppPreferences& preferences)
{
    const auto at = preferences.lastAutomaticCleanup();
    return at ? Value(*at) : std::nullopt;
}

Value readExportMode(const AppPreferences& preferences)
{
    return std::string(rawValue(preferences.defaultExportMode()));
}

Choice chooseExportMode(AppPreferences& preferences, std::string_view text)
{
    const auto mode = fromRawValue<ExportMode>(text);
    return mode ? Choice(preferences.setDefaultExportMode(*mode)) : std::nullopt;
}

Value readAppearance(const AppPreferences& preferences)
{
    return std::string(rawValue(preferences.appearance()));
}

Choice chooseAppearance(AppPreferences& preferences, std::string_view text)
{
    const auto choice = fromRawValue<AppearanceChoice>(text);
    return choice ? Choice(preferences.setAppearance(*choice)) : std::nullopt;
}

template <ExportMode mode> Value readColumns(const AppPreferences& preferences)
{
    const auto columns = preferences.rememberedExportFields(mode);
    return columns ? Value(columns->tokens()) : std::nullopt;
}

template <ExportMode mode> Choice chooseColumns(AppPreferences& preferences, std::string_view text)
{
    if (text == "standard")
        return preferences.setExportFields(mode, std::nullopt);
    const auto columns = ExportFieldSet::parse(text);
    return columns ? Choice(preferences.setExportFields(mode, columns)) : std::nullopt;
}

constexpr std::string_view trueOrFalse = "true or false";
constexpr std::string_view columnTokens =
    "“standard”, or columns separated by commas: date, client, project, duration, timeOfDay, description, "
    "billableState, rateAndAmount";

constexpr Preference preferenceTable[] = {
    {preferencekeys::onboardingCompleted,
     "Whether the introduction was read to its end.",
     trueOrFalse,
     {},
     readFlag<&AppPreferences::hasCompletedOnboarding>,
     chooseFlag<&AppPreferences::setHasCompletedOnboarding>},
    {preferencekeys::titleContext,
     "Whether the titles of windows are recorded; they are unless this is false.",
     trueOrFalse,
     {},
     readFlag<&AppPreferences::retainsTitleContext>,
     chooseFlag<&AppPreferences::setRetainsTitleContext>},
    {preferencekeys::browserContext,
     "Whether the web domain in front of a browser is recorded; it is not unless this is true.",
     trueOrFalse,
     {},
     readFlag<&AppPreferences::browserContextEnabled>,
     chooseFlag<&AppPreferences::setBrowserContextEnabled>},
    {preferencekeys::retentionDays, "For how many days, today included, observed activity is kept.",
     "a number of days from 1, or “forever”", "forever", readWindow, chooseWindow},
    {preferencekeys::automaticCleanup,
     "Whether older activity is deleted automatically.",
     trueOrFalse,
     {},
     readFlag<&AppPreferences::automaticCleanupEnabled>,
     chooseFlag<&AppPreferences::setAutomaticCleanupEnabled>},
    {preferencekeys::lastCleanup,
     "When older activity was last deleted automatically.",
     {},
     "never",
     readLastCleanup,
     nullptr},
    {preferencekeys::exportMode,
     "How exports begin: \"summarized\" or \"detailed\".",
     "summarized or detailed",
     {},
     readExportMode,
     chooseExportMode},
    {preferencekeys::summarizedFields, "The columns of a summarized export, separated by commas.",
     columnTokens, "standard", readColumns<ExportMode::summarized>, chooseColumns<ExportMode::summarized>},
    {preferencekeys::detailedFields, "The columns of a detailed export, separated by commas.", columnTokens,
     "standard", readColumns<ExportMode::detailed>, chooseColumns<ExportMode::detailed>},
    {preferencekeys::appearance,
     "Whether windows are light or dark: \"system\" (as the desktop is), \"light\" or \"dark\".",
     "system, light or dark",
     {},
     readAppearance,
     chooseAppearance},
    {preferencekeys::opensWindowAtLogin,
     "Whether a start at login opens the window beside the icon.",
     trueOrFalse,
     {},
     readFlag<&AppPreferences::opensWindowAtLogin>,
     chooseFlag<&AppPreferences::setOpensWindowAtLogin>},
};

/// Not among the choices: `pause` and `resume` keep these.
struct PauseComment {
    std::string_view key;
    std::string_view comment;
};
constexpr PauseComment pauseComments[] = {
    {PreferencesCapturePauseStore::kindKey, "A pause of recording: \"timed\" or \"indefinite\"."},
    {PreferencesCapturePauseStore::deadlineKey, "When a timed pause ends."},
    {PreferencesCapturePauseStore::lengthKey, "How long it was to be, in seconds."},
};

} // namespace

std::string_view commentOf(std::string_view key)
{
    if (const auto* known = std::ranges::find(preferenceTable, key, &Preference::key);
        known != std::end(preferenceTable))
        return known->comment;
    const auto* pause = std::ranges::find(pauseComments, key, &PauseComment::key);
    return pause != std::end(pauseComments) ? pause->comment : std::string_view{};
}

bool isReadByARunningCopy(std::string_view key)
{
    return key == preferencekeys::retentionDays || key == preferencekeys::automaticCleanup;
}

std::vector<ListedPreference> listed(const AppPreferences& preferences)
{
    std::vector<ListedPreference> all;
    for (const auto& preference : preferenceTable)
        all.push_back({preference.key, preference.read(preferences), preference.absence});
    return all;
}

std::string message(const PreferenceProblem& problem)
{
    if (const auto* unknown = std::get_if<UnknownPreference>(&problem))
        return fmt::format("No preference is called “{}”.", unknown->key);
    if (const auto* fixed = std::get_if<PreferenceNotForChoice>(&problem))
        return fmt::format("“{}” is written by Velloran itself, so it was not changed.", fixed->key);
    if (const auto* refused = std::get_if<PreferenceValueRefused>(&problem))
        return fmt::format("“{}” is no value for “{}”; it takes {}.", refused->text, refused->key,
                           refused->expected);
    return "The preferences could not be saved, so nothing was changed.";
}

std::expected<void, PreferenceProblem> choose(AppPreferences& preferences, const std::string& key,
                                              const std::string& text)
{
    const auto* preference = std::ranges::find(preferenceTable, key, &Preference::key);
    if (preference == std::end(preferenceTable))
        return std::unexpected(UnknownPreference{key});
    if (preference->choose == nullptr)
        return std::unexpected(PreferenceNotForChoice{key});
    const auto isSaved = preference->choose(preferences, text);
    if (!isSaved)
        return std::unexpected(PreferenceValueRefused{key, text, preference->expected});
    if (!*isSaved)
        return std::unexpected(PreferenceNotSaved{});
    return {};
}

} // namespace stintbook
