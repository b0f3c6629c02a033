#include "Platform/AutostartEntry.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string_view>
#include <system_error>
#include <utility>

#include <fmt/format.h>

#include "Base/BuildInformation.h"
#include "Base/FileReplacement.h"

namespace stintbook {

namespace {

constexpr std::string_view group = "[Desktop Entry]";
constexpr std::string_view hiddenKey = "Hidden";
constexpr std::string_view enabledKey = "X-GNOME-Autostart-enabled";

/// One argument of an Exec line: quoted, with the escapes of the quoting under those of the file's strings.
std::string quoted(const std::string& argument)
{
    std::string text = "\"";
    for (const char character : argument) {
        if (character == '%')
            text += "%%";
        else if (character == '\\')
            text += R"(\\\\)";
        else if (character == '"' || character == '`' || character == '$')
            text += std::string(R"(\\)") + character;
        else
            text += character;
    }
    return text + '"';
}

std::string trimmedLine(std::string_view line)
{
    const auto first = line.find_first_not_of(" \t\r");
    const auto last = line.find_last_not_of(" \t\r");
    return first == line.npos ? std::string() : std::string(line.substr(first, last - first + 1));
}

std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const auto end = std::min(text.find('\n', at), text.size());
        lines.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return lines;
}

/// A line as a key and its value; of a comment or a heading neither.
std::optional<std::pair<std::string, std::string>> keyAndValue(const std::string& line)
{
    const auto equals = line.find('=');
    if (equals == line.npos || line.starts_with('#') || line.starts_with('['))
        return std::nullopt;
    return std::pair{trimmedLine(std::string_view(line).substr(0, equals)),
                     trimmedLine(std::string_view(line).substr(equals + 1))};
}

/// Calls `visit(line, key, value)` for the keys of the entry's own group.
template <typename Visit> void forEachKey(std::vector<std::string>& lines, Visit visit)
{
    bool isInGroup = false;
    for (auto& line : lines) {
        if (line.starts_with('['))
            isInGroup = trimmedLine(line) == group;
        const auto found = isInGroup ? keyAndValue(line) : std::nullopt;
        if (found)
            visit(line, found->first, found->second);
    }
}

std::optional<std::string> valueIn(const std::string& text, std::string_view wanted)
{
    auto lines = linesOf(text);
    std::optional<std::string> value;
    forEachKey(lines, [&](const std::string&, const std::string& key, const std::string& found) {
        if (key == wanted && !value)
            value = found;
    });
    return value;
}

/// The text with the key set to the value: in its line, or in one below the group's heading.
std::string withValue(const std::string& text, std::string_view wanted, std::string_view value)
{
    auto lines = linesOf(text);
    bool isThere = false;
    forEachKey(lines, [&](std::string& line, const std::string& key, const std::string&) {
        if (key != wanted)
            return;
        line = fmt::format("{}={}", wanted, value);
        isThere = true;
    });
    std::string changed;
    for (const auto& line : lines) {
        changed += line + '\n';
        if (!isThere && trimmedLine(line) == group) {
            changed += fmt::format("{}={}\n", wanted, value);
            isThere = true;
        }
    }
    return changed;
}

/// Absent: there is no entry.
std::optional<std::string> contentsOf(const std::filesystem::path& file)
{
    std::error_code ignored;
    std::ifstream stream(file, std::ios::binary);
    if (!stream || !std::filesystem::is_regular_file(file, ignored))
        return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

} // namespace

AutostartEntry::AutostartEntry(const std::filesystem::path& directory, std::filesystem::path program,
                               std::vector<std::string> arguments)
    : m_file(directory / fmt::format("{}.desktop", applicationIdentifier))
    , m_program(std::move(program))
    , m_arguments(std::move(arguments))
{
}

std::filesystem::path AutostartEntry::standardDirectory(const Environment& environment)
{
    return configurationDirectory(environment) / "autostart";
}

bool AutostartEntry::isRegistered() const
{
    const auto text = contentsOf(m_file);
    return text && isOwn(*text) && valueIn(*text, hiddenKey) != "true"
        && valueIn(*text, enabledKey) != "false";
}

std::expected<void, std::string> AutostartEntry::add()
{
    std::error_code failure;
    std::filesystem::create_directories(m_file.parent_path(), failure);
    const auto text = contentsOf(m_file);
    if (!text && std::filesystem::exists(std::filesystem::symlink_status(m_file, failure)))
        return std::unexpected(m_file.string() + " is no file that can be read");
    if (!text)
        return write(ownText());
    if (!isOwn(*text))
        return std::unexpected(m_file.string() + " starts another program");
    auto changed = *text;
    for (const auto& [key, value] : {std::pair{hiddenKey, "false"}, std::pair{enabledKey, "true"}}) {
        if (valueIn(changed, key))
            changed = withValue(changed, key, value);
    }
    return write(changed);
}

std::expected<void, std::string> AutostartEntry::remove()
{
    const auto text = contentsOf(m_file);
    if (!text || !isOwn(*text))
        return {};
    if (*text != ownText())
        return write(withValue(*text, hiddenKey, "true"));
    std::error_code failure;
    std::filesystem::remove(m_file, failure);
    if (failure)
        return std::unexpected(failure.message());
    return {};
}

std::expected<void, std::string> AutostartEntry::write(const std::string& text) const
{
    return replaceFile(m_file, text, 0644);
}

std::string AutostartEntry::ownText() const
{
    std::string command = quoted(m_program.string());
    for (const auto& argument : m_arguments)
        command += ' ' + quoted(argument);
    return fmt::format("{}\nType=Application\nName={}\nExec={}\nIcon={}\n{}=true\n", group, productName,
                       command, applicationIdentifier, enabledKey);
}

/// Made here, or by the desktop from the application's entry: it starts a program of this name, wherever it was
/// installed then.
bool AutostartEntry::isOwn(const std::string& text) const
{
    const auto command = valueIn(text, "Exec").value_or("");
    const bool isQuoted = command.starts_with('"');
    const auto program =
        isQuoted ? command.substr(1, command.find('"', 1) - 1) : command.substr(0, command.find(' '));
    return std::filesystem::path(program).filename() == m_program.filename();
}

} // namespace stintbook
