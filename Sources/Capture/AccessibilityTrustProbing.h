#pragma once

namespace stintbook {

enum class TrustPrompt { none, shown };

/// Whether accessibility is enabled for this process's session. Blocking, bounded to a second.
class AccessibilityTrustProbing {
public:
    virtual ~AccessibilityTrustProbing() = default;
    /// With `shown` accessibility is switched on, after its user agreed.
    virtual bool isTrusted(TrustPrompt prompt) = 0;
};

} // namespace stintbook
