#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Capture/BrowserDomainProviding.h"
#include "Capture/FocusedWindowProviding.h"
#include "Capture/SupportedBrowser.h"
#include "Platform/AccessibilityBus.h"

namespace stintbook {

/// Reads what the window in front shows: its title, and the address in a browser's front tab. Used on the
/// accessibility queue only; each reading ends within a second whatever the program does.
///
/// A title is the window system's. Accessibility is asked for browsers alone: it tells which frame the
/// window is, whether it is private, and which document is in front.
class AccessibilityWindowReader final : public FocusedWindowProviding, public BrowserDomainProviding {
public:
    FocusedContext context(const FrontmostWindow& window) override;
    BrowserDomainReading reading(const FrontmostWindow& browserWindow) override;

private:
    /// The error is the reading that says why there is no value.
    template <typename T> using Read = std::expected<T, BrowserDomainReading>;

    Read<void> begin();
    /// The accessible frame of the window; tries again while the program has not caught up with it.
    Read<AccessibleFrame> frameOf(const FrontmostWindow& window);
    Read<AccessibleFrame> findFrame(const FrontmostWindow& window);
    Read<std::vector<AccessibleObject>> programsOf(std::int32_t processIdentifier);
    Read<BrowserDomain> domainIn(const AccessibleFrame& frame, const SupportedBrowser& browser,
                                 std::int32_t processIdentifier);
    Read<std::string> address(std::string_view expression, const AccessibleFrame& frame,
                              const std::optional<AccessibleObject>& document);
    Read<std::optional<AccessibleObject>> documentOf(const AccessibleFrame& frame,
                                                     std::int32_t processIdentifier);
    Read<std::string> addressField(const AccessibleFrame& frame);
    /// Waits for the program; false when the reading's time would not suffice.
    bool pause() const;

    AccessibilityBus m_bus;
    /// Programs that were asked for a document and had none: the question wakes those that build their
    /// tree on demand, and is repeated only the first time.
    std::set<std::int32_t> m_awakened;
};

} // namespace stintbook
