#include "Domain/SystemTimeZone.h"

#include <cstdlib>
#include <fstream>
#include <string_view>

#include "Base/Text.h"
#include "Domain/CalendarContext.h"

namespace stintbook {

namespace {

using Name = std::optional<std::string>;

Name knownZone(const std::string& name)
{
    return CalendarContext::isKnownZone(name) ? Name(name) : std::nullopt;
}

/// "/usr/share/zoneinfo/Europe/Berlin" is Europe/Berlin's.
Name zoneOfFile(std::string_view file)
{
    constexpr std::string_view folder = "/zoneinfo/";
    const auto found = file.find(folder);
    if (found == std::string_view::npos)
        return std::nullopt;
    file.remove_prefix(found + folder.size());
    if (file.starts_with("posix/"))
        file.remove_prefix(std::string_view("posix/").size());
    return knownZone(std::string(file));
}

Name zoneOfLink(const std::filesystem::path& link)
{
    // The link's own target first: behind it, one zone's name may in turn be a link to another's.
    std::error_code error;
    if (auto zone = zoneOfFile(std::filesystem::read_symlink(link, error).string()))
        return zone;
    return zoneOfFile(std::filesystem::canonical(link, error).string());
}

Name zoneInEnvironment(std::string text)
{
    if (text.starts_with(':'))
        text.erase(0, 1);
    return text.starts_with('/') ? zoneOfFile(text) : knownZone(text);
}

Name zoneInFile(const std::filesystem::path& file)
{
    std::string line;
    std::ifstream stream(file);
    std::getline(stream, line);
    return knownZone(trimmed(line));
}

} // namespace

SystemTimeZoneSources SystemTimeZoneSources::ofThisProcess()
{
    const char* const environment = std::getenv("TZ");
    return {.environment = environment ? std::optional<std::string>(environment) : std::nullopt};
}

std::string systemTimeZoneIdentifier(const SystemTimeZoneSources& sources)
{
    if (sources.environment) {
        if (auto zone = zoneInEnvironment(*sources.environment))
            return *std::move(zone);
    }
    if (auto zone = zoneOfLink(sources.localTimeLink))
        return *std::move(zone);
    return zoneInFile(sources.nameFile).value_or("UTC");
}

} // namespace stintbook
