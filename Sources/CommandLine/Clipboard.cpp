#include "CommandLine/Clipboard.h"

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

#include "Export/ExportDelivery.h"

namespace stintbook {

namespace {

bool isProgram(const std::string& name, const std::string& path)
{
    for (std::size_t begin = 0; begin <= path.size();) {
        const auto end = std::min(path.find(':', begin), path.size());
        const auto file = path.substr(begin, end - begin) + "/" + name;
        if (::access(file.c_str(), X_OK) == 0)
            return true;
        begin = end + 1;
    }
    return false;
}

std::string lookUp(const Environment& environment, const std::string& name)
{
    const auto found = environment.find(name);
    return found == environment.end() ? std::string() : found->second;
}

/// The helper's command; empty when the desktop has none.
std::string clipboardCommand(const Environment& environment)
{
    const auto path = lookUp(environment, "PATH");
    if (!lookUp(environment, "WAYLAND_DISPLAY").empty() && isProgram("wl-copy", path))
        return "wl-copy --type text/plain";
    if (lookUp(environment, "DISPLAY").empty())
        return {};
    if (isProgram("xclip", path))
        return "xclip -selection clipboard -in >/dev/null 2>&1";
    if (isProgram("xsel", path))
        return "xsel --clipboard --input >/dev/null 2>&1";
    return {};
}

} // namespace

ExportDesk::Delivery clipboardDelivery(const Environment& environment)
{
    return [command =
                clipboardCommand(environment)](const std::string& text) -> std::expected<void, std::string> {
        const auto refused = std::unexpected(message(ExportTextProblem::pasteboardRefused));
        if (command.empty())
            return refused;
        auto* helper = ::popen(command.c_str(), "w");
        if (helper == nullptr)
            return refused;
        const bool isWritten = std::fwrite(text.data(), 1, text.size(), helper) == text.size();
        if (::pclose(helper) != 0 || !isWritten)
            return refused;
        return {};
    };
}

} // namespace stintbook
