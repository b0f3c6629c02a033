#include "Base/ReadersLocale.h"

namespace stintbook {

std::string readersLocale(std::string_view locale)
{
    return std::string(locale == "C" || locale == "POSIX" ? "en_GB" : locale);
}

std::string localeOf(const Environment& variables, const std::string& category)
{
    for (const auto& name : {std::string("LC_ALL"), category, std::string("LANG")}) {
        if (const auto found = variables.find(name); found != variables.end() && !found->second.empty())
            return found->second.substr(0, found->second.find_first_of(".@"));
    }
    return "C";
}

} // namespace stintbook
