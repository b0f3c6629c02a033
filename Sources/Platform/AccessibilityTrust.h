#pragma once

#include "Capture/AccessibilityTrustProbing.h"
#include "Platform/AccessibilityBus.h"

namespace stintbook {

/// Asks the session whether accessibility is switched on. Has a connection of its own, so that it may be
/// asked beside readings; belongs to one thread.
class SystemAccessibilityTrust final : public AccessibilityTrustProbing {
public:
    bool isTrusted(TrustPrompt prompt) override;

private:
    AccessibilityBus m_bus;
};

} // namespace stintbook
