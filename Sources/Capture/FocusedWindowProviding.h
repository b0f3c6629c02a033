#pragma once

#include "Capture/FrontmostApplicationProviding.h"
#include "Domain/FocusedContext.h"

namespace stintbook {

/// Reads what the front window shows. Blocking, bounded to a second; called on the accessibility queue
/// only. A private browser window, or a browser's window whose accessible frame could not be read, gives
/// `none`.
class FocusedWindowProviding {
public:
    virtual ~FocusedWindowProviding() = default;
    virtual FocusedContext context(const FrontmostWindow& window) = 0;
};

} // namespace stintbook
