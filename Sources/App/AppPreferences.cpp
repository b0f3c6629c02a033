#include "App/AppPreferences.h"

#include <string>
#include <string_view>
#include <tuple>

#include "App/PreferenceKeys.h"

namespace stintbook {

namespace {

template <typename T> std::optional<T> stored(const PreferenceStoring& store, std::string_view key)
{
    const auto value = store.value(key);
    if (!value || !std::holds_alternative<T>(*value))
        return std::nullopt;
    return std::get<T>(*value);
}

RetentionWindow storedWindow(const PreferenceStoring& store)
{
    const auto count = stored<std::int64_t>(store, preferencekeys::retentionDays).value_or(0);
    return RetentionWindow::days(count).value_or(RetentionWindow::keepUntilDeleted());
}

bool storedAutomaticCleanup(const PreferenceStoring& store)
{
    return stored<bool>(store, preferencekeys::automaticCleanup).value_or(false);
}

std::optional<Instant> storedLastCleanup(const PreferenceStoring& store)
{
    return stored<Instant>(store, preferencekeys::lastCleanup);
}

/// Of an enumeration by its text.
template <typename E> E storedCase(const PreferenceStoring& store, std::string_view key, E absence)
{
    const auto name = stored<std::string>(store, key);
    return name ? fromRawValue<E>(*name).value_or(absence) : absence;
}

std::optional<ExportFieldSet> storedFields(const PreferenceStoring& store, std::string_view key)
{
    const auto tokens = stored<std::string>(store, key);
    return tokens ? ExportFieldSet::parse(*tokens) : std::nullopt;
}

/// An absent value removes its key.
template <typename T> std::optional<PreferenceValue> valueOf(const std::optional<T>& value)
{
    return value ? std::optional<PreferenceValue>(*value) : std::nullopt;
}

} // namespace

AppPreferences::AppPreferences(PreferenceStoring& store)
    : m_store(store)
    , m_hasCompletedOnboarding(stored<bool>(store, preferencekeys::onboardingCompleted).value_or(false))
    , m_retainsTitleContext(stored<bool>(store, preferencekeys::titleContext).value_or(true))
    , m_browserContextEnabled(stored<bool>(store, preferencekeys::browserContext).value_or(false))
    , m_opensWindowAtLogin(stored<bool>(store, preferencekeys::opensWindowAtLogin).value_or(false))
    , m_retentionWindow(storedWindow(store))
    , m_automaticCleanupEnabled(storedAutomaticCleanup(store))
    , m_lastAutomaticCleanup(storedLastCleanup(store))
    , m_defaultExportMode(storedCase(store, preferencekeys::exportMode, ExportMode::summarized))
    , m_summarizedFields(storedFields(store, preferencekeys::summarizedFields))
    , m_detailedFields(storedFields(store, preferencekeys::detailedFields))
    , m_appearance(storedCase(store, preferencekeys::appearance, AppearanceChoice::system))
{
}

template <typename T>
bool AppPreferences::assign(T& property, T value, std::string_view key, std::optional<PreferenceValue> stored)
{
    property = std::move(value);
    const bool isKept = m_store.store(key, std::move(stored));
    m_listeners.tell();
    return isKept;
}

bool AppPreferences::setHasCompletedOnboarding(bool hasCompleted)
{
    return assign(m_hasCompletedOnboarding, hasCompleted, preferencekeys::onboardingCompleted, hasCompleted);
}

bool AppPreferences::setRetainsTitleContext(bool retains)
{
    return assign(m_retainsTitleContext, retains, preferencekeys::titleContext, retains);
}

bool AppPreferences::setBrowserContextEnabled(bool isEnabled)
{
    return assign(m_browserContextEnabled, isEnabled, preferencekeys::browserContext, isEnabled);
}

bool AppPreferences::setOpensWindowAtLogin(bool opens)
{
    return assign(m_opensWindowAtLogin, opens, preferencekeys::opensWindowAtLogin, opens);
}

bool AppPreferences::setRetentionWindow(const RetentionWindow& window)
{
    return assign(m_retentionWindow, window, preferencekeys::retentionDays, valueOf(window.dayCount()));
}

bool AppPreferences::setAutomaticCleanupEnabled(bool isEnabled)
{
    return assign(m_automaticCleanupEnabled, isEnabled, preferencekeys::automaticCleanup, isEnabled);
}

bool AppPreferences::setLastAutomaticCleanup(std::optional<Instant> at)
{
    return assign(m_lastAutomaticCleanup, at, preferencekeys::lastCleanup, valueOf(at));
}

void AppPreferences::takeOverRetention()
{
    const auto former = std::tuple(m_retentionWindow, m_automaticCleanupEnabled, m_lastAutomaticCleanup);
    m_retentionWindow = storedWindow(m_store);
    m_automaticCleanupEnabled = storedAutomaticCleanup(m_store);
    m_lastAutomaticCleanup = storedLastCleanup(m_store);
    if (former != std::tie(m_retentionWindow, m_automaticCleanupEnabled, m_lastAutomaticCleanup))
        m_listeners.tell();
}

bool AppPreferences::setDefaultExportMode(ExportMode mode)
{
    return assign(m_defaultExportMode, mode, preferencekeys::exportMode, std::string(rawValue(mode)));
}

bool AppPreferences::setAppearance(AppearanceChoice choice)
{
    return assign(m_appearance, choice, preferencekeys::appearance, std::string(rawValue(choice)));
}

ExportFieldSet AppPreferences::exportFields(ExportMode mode) const
{
    return rememberedExportFields(mode).value_or(ExportFieldSet::standard(mode));
}

std::optional<ExportFieldSet> AppPreferences::rememberedExportFields(ExportMode mode) const
{
    return mode == ExportMode::detailed ? m_detailedFields : m_summarizedFields;
}

bool AppPreferences::setExportFields(ExportMode mode, const std::optional<ExportFieldSet>& fields)
{
    const bool isDetailed = mode == ExportMode::detailed;
    return assign(isDetailed ? m_detailedFields : m_summarizedFields, fields,
                  isDetailed ? preferencekeys::detailedFields : preferencekeys::summarizedFields,
                  fields ? std::optional<PreferenceValue>(fields->tokens()) : std::nullopt);
}

} // namespace stintbook
