#include "App/PreferencesFile.h"

#include <cmath>
#include <cstdint>
#include <ctime>
#include <fstream>
#include <iterator>
#include <sstream>
#include <tuple>
#include <type_traits>
#include <utility>

#include <toml++/toml.h>

#include "App/FileReplacement.h"
#include "Base/Log.h"

namespace stintbook {

namespace {

constexpr double nanosecondsASecond = 1e9;

Instant instantOf(const toml::date_time& moment)
{
    std::tm civil{};
    civil.tm_year = moment.date.year - 1900;
    civil.tm_mon = moment.date.month - 1;
    civil.tm_mday = moment.date.day;
    civil.tm_hour = moment.time.hour;
    civil.tm_min = moment.time.minute - (moment.offset ? moment.offset->minutes : 0);
    civil.tm_sec = moment.time.second;
    return Instant{static_cast<double>(timegm(&civil)) + moment.time.nanosecond / nanosecondsASecond};
}

toml::date_time dateTimeOf(Instant at)
{
    const auto whole = static_cast<std::time_t>(std::floor(at.secondsSinceEpoch));
    std::tm civil{};
    gmtime_r(&whole, &civil);
    const double fraction = at.secondsSinceEpoch - static_cast<double>(whole);
    return {toml::date{civil.tm_year + 1900, civil.tm_mon + 1, civil.tm_mday},
            toml::time{civil.tm_hour, civil.tm_min, civil.tm_sec,
                       static_cast<std::uint32_t>(fraction * nanosecondsASecond)},
            toml::time_offset{}};
}

std::optional<PreferenceValue> preferenceValue(const toml::node& node)
{
    if (const auto* flag = node.as_boolean())
        return PreferenceValue(flag->get());
    if (const auto* number = node.as_integer())
        return PreferenceValue(number->get());
    if (const auto* number = node.as_floating_point())
        return PreferenceValue(number->get());
    if (const auto* text = node.as_string())
        return PreferenceValue(text->get());
    if (const auto* moment = node.as_date_time())
        return PreferenceValue(instantOf(moment->get()));
    return std::nullopt;
}

/// "stintbook.capture.titleContext" as the table's path and the key in it.
std::pair<std::string_view, std::string_view> tableAndKey(std::string_view key)
{
    const auto dot = key.rfind('.');
    if (dot == std::string_view::npos)
        return {{}, key};
    return {key.substr(0, dot), key.substr(dot + 1)};
}

/// The table at a dotted path, made where it is missing and in place of anything that is no table.
toml::table& tableAt(toml::table& root, std::string_view path)
{
    toml::table* table = &root;
    while (!path.empty()) {
        const auto dot = path.find('.');
        const auto name = path.substr(0, dot);
        auto* next = table->get_as<toml::table>(name);
        if (next == nullptr)
            next = table->insert_or_assign(name, toml::table{}).first->second.as_table();
        table = next;
        path = dot == std::string_view::npos ? std::string_view{} : path.substr(dot + 1);
    }
    return *table;
}

} // namespace

PreferencesFile::PreferencesFile(std::filesystem::path file)
    : m_file(std::move(file))
{
    std::ifstream stream(m_file, std::ios::binary);
    if (!stream)
        return;
    m_document.assign(std::istreambuf_iterator<char>(stream), {});
    try {
        std::ignore = toml::parse(m_document);
    } catch (const toml::parse_error& error) {
        m_document.clear();
        const auto aside = m_file.parent_path() / "preferences.damaged.toml";
        std::error_code failure;
        std::filesystem::rename(m_file, aside, failure);
        log::error("The preferences could not be read and were set aside; the defaults hold: {}",
                   error.description());
    }
}

std::filesystem::path PreferencesFile::standardLocation(const std::map<std::string, std::string>& environment,
                                                        BuildKind buildKind)
{
    const auto lookUp = [&](const char* name) {
        const auto found = environment.find(name);
        return found == environment.end() ? std::string() : found->second;
    };
    const auto configured = lookUp("XDG_CONFIG_HOME");
    const auto base = configured.starts_with('/') ? std::filesystem::path(configured)
                                                  : std::filesystem::path(lookUp("HOME")) / ".config";
    return base / (buildKind == BuildKind::installed ? "velloran" : "velloran-development")
        / "preferences.toml";
}

std::optional<PreferenceValue> PreferencesFile::value(std::string_view key) const
{
    const auto root = toml::parse(m_document);
    const auto node = root.at_path(key);
    return node ? preferenceValue(*node.node()) : std::nullopt;
}

bool PreferencesFile::store(std::string_view key, std::optional<PreferenceValue> value)
{
    auto root = toml::parse(m_document);
    const auto [path, name] = tableAndKey(key);
    auto& table = tableAt(root, path);
    if (!value) {
        table.erase(name);
    } else {
        std::visit(
            [&](const auto& stored) {
                if constexpr (std::is_same_v<std::decay_t<decltype(stored)>, Instant>)
                    table.insert_or_assign(name, dateTimeOf(stored));
                else
                    table.insert_or_assign(name, stored);
            },
            *value);
    }
    std::ostringstream text;
    text << root << '\n';
    m_document = std::move(text).str();
    return write();
}

bool PreferencesFile::write() const
{
    std::error_code failure;
    std::filesystem::create_directories(m_file.parent_path(), failure);
    const auto replaced = replaceFile(m_file, m_document, 0600);
    if (!replaced)
        log::error("The preferences could not be saved: {}", replaced.error());
    return replaced.has_value();
}

} // namespace stintbook
