#include "App/AppPreferences.h"

#include <string>
#include <string_view>

namespace stintbook {

namespace {

constexpr std::string_view titleContextKey = "stintbook.capture.titleContext";
constexpr std::string_view browserContextKey = "stintbook.capture.browserContext";
constexpr std::string_view exportModeKey = "stintbook.export.defaultMode";
constexpr std::string_view summarizedFieldsKey = "stintbook.export.fields.summary";
constexpr std::string_view detailedFieldsKey = "stintbook.export.fields.detailed";

template <typename T> std::optional<T> stored(const PreferenceStoring& store, std::string_view key)
{
    const auto value = store.value(key);
    if (!value || !std::holds_alternative<T>(*value))
        return std::nullopt;
    return std::get<T>(*value);
}

ExportMode storedMode(const PreferenceStoring& store)
{
    const auto name = stored<std::string>(store, exportModeKey);
    return name ? fromRawValue<ExportMode>(*name).value_or(ExportMode::summarized) : ExportMode::summarized;
}

std::optional<ExportFieldSet> storedFields(const PreferenceStoring& store, std::string_view key)
{
    const auto tokens = stored<std::string>(store, key);
    return tokens ? ExportFieldSet::parse(*tokens) : std::nullopt;
}

} // namespace

AppPreferences::AppPreferences(PreferenceStoring& store)
    : m_store(store)
    , m_retainsTitleContext(stored<bool>(store, titleContextKey).value_or(true))
    , m_browserContextEnabled(stored<bool>(store, browserContextKey).value_or(false))
    , m_defaultExportMode(storedMode(store))
    , m_summarizedFields(storedFields(store, summarizedFieldsKey))
    , m_detailedFields(storedFields(store, detailedFieldsKey))
{
}

bool AppPreferences::setRetainsTitleContext(bool retains)
{
    m_retainsTitleContext = retains;
    return m_store.store(titleContextKey, PreferenceValue(retains));
}

bool AppPreferences::setBrowserContextEnabled(bool isEnabled)
{
    m_browserContextEnabled = isEnabled;
    return m_store.store(browserContextKey, PreferenceValue(isEnabled));
}

ExportFieldSet AppPreferences::exportFields(ExportMode mode) const
{
    const auto& remembered = mode == ExportMode::detailed ? m_detailedFields : m_summarizedFields;
    return remembered.value_or(ExportFieldSet::standard(mode));
}

} // namespace stintbook
