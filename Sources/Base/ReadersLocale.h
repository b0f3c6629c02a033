#pragma once

#include <string>
#include <string_view>

namespace stintbook {

/// The locale in which dates and numbers are spelled for a reader with this one ("de_DE"). Where none is set, which
/// is "C" or "POSIX", days stand before months, and months are named in English.
std::string readersLocale(std::string_view locale);

} // namespace stintbook
