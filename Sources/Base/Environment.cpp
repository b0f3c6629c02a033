#include "Base/Environment.h"

#include <string_view>

#include <pwd.h>
#include <unistd.h>

namespace stintbook {

namespace {

/// A relative path in such a variable is invalid and to be ignored.
std::filesystem::path directoryNamed(const Environment& environment, const char* variable,
                                     const char* belowHome)
{
    const auto found = environment.find(variable);
    if (found != environment.end() && found->second.starts_with('/'))
        return found->second;
    return homeDirectory(environment) / belowHome;
}

} // namespace

Environment processEnvironment()
{
    Environment environment;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string_view text = *entry;
        const auto separator = text.find('=');
        if (separator != std::string_view::npos)
            environment.emplace(text.substr(0, separator), text.substr(separator + 1));
    }
    return environment;
}

std::filesystem::path homeDirectory(const Environment& environment)
{
    if (const auto home = environment.find("HOME"); home != environment.end() && !home->second.empty())
        return home->second;
    const auto* user = getpwuid(getuid());
    return user != nullptr ? user->pw_dir : "/";
}

std::filesystem::path configurationDirectory(const Environment& environment)
{
    return directoryNamed(environment, "XDG_CONFIG_HOME", ".config");
}

std::filesystem::path dataDirectory(const Environment& environment)
{
    return directoryNamed(environment, "XDG_DATA_HOME", ".local/share");
}

} // namespace stintbook
