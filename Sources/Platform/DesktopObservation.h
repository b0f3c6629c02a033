#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Base/TimeSource.h"
#include "Capture/IdleStateProviding.h"
#include "Platform/AccessibilityTrust.h"
#include "Platform/AccessibilityWindowReader.h"
#include "Platform/ApplicationIdentities.h"
#include "Platform/DesktopBoundaries.h"
#include "Platform/EventLoop.h"
#include "Platform/SystemZone.h"

namespace stintbook {

/// All that can be observed on the desktop this process runs in: looks at the session once and owns the
/// source it chose for each kind of fact. The loop and the clocks have to outlive it.
class DesktopObservation {
public:
    DesktopObservation(EventLoop& loop, const TimeSource& timeSource, const AwakeClock& awakeClock);

    FrontmostApplicationProviding& frontmost() { return *m_frontmost; }
    IdleStateProviding& idle() { return *m_idle; }
    DesktopBoundaries& boundaries() { return m_boundaries; }
    CalendarContextProviding& calendar() { return m_zone; }

    /// These are handed to the queues on which alone they are used.
    std::shared_ptr<AccessibilityWindowReader> windowReader() const { return m_windowReader; }
    std::shared_ptr<AccessibilityTrustProbing> accessibilityTrust() const { return m_accessibilityTrust; }

    /// False where no window system tells what is in front: then nothing can be recorded.
    bool canSeeApplications() const;
    /// "frontmost: x11", "idle: xscreensaver", "boundaries: logind".
    std::vector<std::string> sources() const;

private:
    ApplicationIdentities m_identities;
    std::unique_ptr<IdleStateProviding> m_idle;
    DesktopBoundaries m_boundaries;
    /// Behind the two above, which it tells of switches.
    std::unique_ptr<FrontmostApplicationProviding> m_frontmost;
    SystemZone m_zone;
    std::shared_ptr<AccessibilityWindowReader> m_windowReader;
    std::shared_ptr<AccessibilityTrustProbing> m_accessibilityTrust;
};

} // namespace stintbook
