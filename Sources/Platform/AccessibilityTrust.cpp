#include "Platform/AccessibilityTrust.h"

#include "Base/Log.h"

namespace stintbook {

bool SystemAccessibilityTrust::isTrusted(TrustPrompt prompt)
{
    if (!m_bus.begin(Seconds{1}))
        return false;
    if (prompt == TrustPrompt::shown) {
        if (auto enabled = m_bus.enable(); !enabled)
            log::error("Accessibility could not be switched on: {}", enabled.error().text);
    }
    return m_bus.isEnabled().value_or(false);
}

} // namespace stintbook
