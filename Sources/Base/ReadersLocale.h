#pragma once

#include <string>
#include <string_view>

#include "Base/Environment.h"

namespace stintbook {

/// The locale in which dates and numbers are spelled for a reader with this one ("de_DE"). Where none is set, which
/// is "C" or "POSIX", days stand before months, and months are named in English.
std::string readersLocale(std::string_view locale);

/// What the variables say of a category such as "LC_TIME": "de_DE", or "C" where they say nothing.
std::string localeOf(const Environment& variables, const std::string& category);

} // namespace stintbook
