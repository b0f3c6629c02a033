#pragma once

#include <string_view>

namespace stintbook {

/// Whether a browser marks a window as private by one of its names: the window's title or the name of its
/// accessible frame, in any of the common languages. When in doubt it does: a page whose own title ends like
/// a mark is taken for private.
bool isMarkedPrivate(std::string_view windowName);

} // namespace stintbook
