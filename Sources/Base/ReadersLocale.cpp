#include "Base/ReadersLocale.h"

namespace stintbook {

std::string readersLocale(std::string_view locale)
{
    return std::string(locale == "C" || locale == "POSIX" ? "en_GB" : locale);
}

} // namespace stintbook
