#pragma once

#include <string_view>

namespace stintbook {

/// Whether an application is never recorded: this one, and the parts of the desktops that take the focus
/// without their user switching work.
bool isIgnoredApplication(std::string_view bundleIdentifier);

} // namespace stintbook
