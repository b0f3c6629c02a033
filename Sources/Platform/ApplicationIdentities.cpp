#include "Platform/ApplicationIdentities.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <ranges>
#include <system_error>

#include <strings.h>

#include "Base/Text.h"

namespace stintbook {

namespace fs = std::filesystem;

namespace {

std::string environment(const char* name)
{
    const char* value = std::getenv(name);
    return value ? value : "";
}

/// The keys under which a desktop entry may hold the name in this locale, the best first.
std::vector<std::string> nameKeys(std::string_view locale)
{
    auto modifierAt = locale.find('@');
    auto modifier = modifierAt == locale.npos ? std::string() : std::string(locale.substr(modifierAt));
    auto country = std::string(locale.substr(0, std::min(locale.find('.'), modifierAt)));
    auto language = country.substr(0, country.find('_'));

    std::vector<std::string> keys;
    for (const auto& tag : {country + modifier, country, language + modifier, language}) {
        auto key = "Name[" + tag + "]";
        if (!tag.empty() && std::ranges::find(keys, key) == keys.end())
            keys.push_back(key);
    }
    keys.emplace_back("Name");
    return keys;
}

/// The program that an Exec line starts, by its base name.
std::string executable(std::string_view commandLine)
{
    std::string word;
    for (auto part : commandLine | std::views::split(' ')) {
        word.assign(part.begin(), part.end());
        std::erase(word, '"');
        bool isPrefix = word.empty() || word == "env" || word.ends_with("/env") || word.contains('=');
        if (!isPrefix)
            break;
    }
    return fs::path(word).filename();
}

/// Classes and entry ids are ASCII in practice.
bool isEqualIgnoringCase(std::string_view a, std::string_view b)
{
    return a.size() == b.size() && strncasecmp(a.data(), b.data(), a.size()) == 0;
}

/// What follows the last dot of "org.gnome.gedit".
std::string_view lastPart(std::string_view id)
{
    return id.substr(id.rfind('.') + 1);
}

} // namespace

ApplicationIdentities::Places ApplicationIdentities::Places::ofEnvironment()
{
    Places places;
    auto home = environment("XDG_DATA_HOME");
    if (home.empty())
        home = environment("HOME") + "/.local/share";
    places.dataDirectories.emplace_back(home);

    auto others = environment("XDG_DATA_DIRS");
    if (others.empty())
        others = "/usr/local/share:/usr/share";
    for (auto part : others | std::views::split(':')) {
        if (!part.empty())
            places.dataDirectories.emplace_back(std::string(part.begin(), part.end()));
    }

    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (places.locale = environment(variable); !places.locale.empty())
            break;
    }
    return places;
}

ApplicationIdentities::ApplicationIdentities(Places places)
    : m_places(std::move(places))
    , m_nameKeys(nameKeys(m_places.locale))
{
}

ApplicationIdentity ApplicationIdentities::identify(const WindowHints& hints)
{
    if (!m_wasRead || hasChanged())
        readAll();
    if (const auto* entry = find(hints))
        return {entry->id, entry->name};

    auto name = hints.windowClass.empty() ? hints.applicationID : hints.windowClass;
    if (name.empty())
        name = executableOf(hints.processIdentifier);
    if (name.empty())
        return {"x11:unknown", unknownApplicationName};
    return {"x11:" + lowerCased(name), name};
}

std::vector<ApplicationIdentity> ApplicationIdentities::installed()
{
    if (!m_wasRead || hasChanged())
        readAll();
    std::vector<ApplicationIdentity> applications;
    for (const auto& entry : m_entries) {
        if (!entry.name.empty() && !entry.isUnlisted)
            applications.push_back({entry.id, entry.name});
    }
    return applications;
}

bool ApplicationIdentities::hasChanged() const
{
    return std::ranges::any_of(m_directories, [](const Directory& directory) {
        std::error_code error;
        return fs::last_write_time(directory.path, error) != directory.changed;
    });
}

void ApplicationIdentities::readAll()
{
    m_wasRead = true;
    m_entries.clear();
    m_directories.clear();
    for (const auto& data : m_places.dataDirectories)
        readDirectory(data / "applications");
}

/// An entry's id is its path below "applications" with dashes for slashes. The first of an id counts, also
/// when it only hides the later ones.
void ApplicationIdentities::readDirectory(const fs::path& applications)
{
    std::error_code error;
    // A directory that does not exist yet is watched as well: its time is the lowest one.
    m_directories.push_back({applications, fs::last_write_time(applications, error)});

    std::vector<fs::path> files;
    fs::recursive_directory_iterator item(applications, fs::directory_options::skip_permission_denied, error);
    for (; !error && item != fs::recursive_directory_iterator(); item.increment(error)) {
        if (item->is_directory(error))
            m_directories.push_back({item->path(), fs::last_write_time(item->path(), error)});
        else if (item->path().extension() == ".desktop")
            files.push_back(item->path());
    }
    // A directory lists its files in no order, and which of two entries answers must not change.
    std::ranges::sort(files);

    for (const auto& file : files) {
        auto id = file.lexically_relative(applications).replace_extension().string();
        std::ranges::replace(id, '/', '-');
        if (std::ranges::find(m_entries, id, &Entry::id) != m_entries.end())
            continue;
        if (auto entry = readEntry(file, id, m_nameKeys))
            m_entries.push_back(std::move(*entry));
        else
            m_entries.push_back({.id = id});
    }
}

/// Absent for an entry that is hidden or starts no application.
std::optional<ApplicationIdentities::Entry> ApplicationIdentities::readEntry(
    const fs::path& file, std::string id, const std::vector<std::string>& nameKeys)
{
    Entry entry{.id = std::move(id)};
    auto bestName = nameKeys.size();
    bool isApplication = false;
    bool isInTerminal = false;
    bool isInGroup = false;

    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with('[')) {
            if (isInGroup)
                break;
            isInGroup = line.starts_with("[Desktop Entry]");
            continue;
        }
        auto equals = line.find('=');
        if (!isInGroup || equals == line.npos)
            continue;
        auto key = trimmed(std::string_view(line).substr(0, equals));
        auto value = trimmed(std::string_view(line).substr(equals + 1));
        if (key == "Type")
            isApplication = value == "Application";
        else if (key == "Hidden" && value == "true")
            return std::nullopt;
        else if (key == "NoDisplay")
            entry.isUnlisted = value == "true";
        else if (key == "Terminal")
            isInTerminal = value == "true";
        else if (key == "StartupWMClass")
            entry.windowClass = value;
        else if (key == "Exec")
            entry.executable = executable(value);
        auto rank = static_cast<std::size_t>(std::ranges::find(nameKeys, key) - nameKeys.begin());
        if (rank < bestName) {
            bestName = rank;
            entry.name = value;
        }
    }
    if (!isApplication || entry.name.empty())
        return std::nullopt;
    if (isInTerminal)
        entry.executable.clear();
    return entry;
}

const ApplicationIdentities::Entry* ApplicationIdentities::find(const WindowHints& hints) const
{
    auto firstWith = [this](auto&& holds) -> const Entry* {
        auto found = std::ranges::find_if(m_entries, [&](const Entry& entry) {
            // Those without a name only hide others.
            return !entry.name.empty() && holds(entry);
        });
        return found == m_entries.end() ? nullptr : &*found;
    };
    auto firstEqual = [&](const std::string& text, auto&& field) -> const Entry* {
        if (text.empty())
            return nullptr;
        if (const auto* exact = firstWith([&](const Entry& entry) { return field(entry) == text; }))
            return exact;
        return firstWith([&](const Entry& entry) { return isEqualIgnoringCase(field(entry), text); });
    };
    auto id = [](const Entry& entry) { return std::string_view(entry.id); };

    const auto& windowClass = hints.windowClass;
    if (const auto* named = firstEqual(hints.applicationID, id))
        return named;
    if (const auto* declared =
            firstEqual(windowClass, [](const Entry& entry) { return std::string_view(entry.windowClass); }))
        return declared;
    if (const auto* same = firstEqual(windowClass, id))
        return same;
    if (const auto* ending = firstEqual(windowClass, [](const Entry& entry) { return lastPart(entry.id); }))
        return ending;
    auto program = executableOf(hints.processIdentifier);
    if (program.empty())
        return nullptr;
    return firstWith([&](const Entry& entry) { return entry.executable == program; });
}

std::string ApplicationIdentities::executableOf(std::int32_t processIdentifier) const
{
    if (processIdentifier <= 0)
        return {};
    std::error_code error;
    auto target = fs::read_symlink(m_places.processes / std::to_string(processIdentifier) / "exe", error);
    auto name = target.filename().string();
    // A program that was replaced while it runs.
    constexpr std::string_view replaced = " (deleted)";
    if (name.ends_with(replaced))
        name.resize(name.size() - replaced.size());
    return name;
}

} // namespace stintbook
