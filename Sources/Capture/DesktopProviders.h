#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Capture/AccessibilityTrustProbing.h"
#include "Capture/BrowserDomainProviding.h"
#include "Capture/CalendarContextProviding.h"
#include "Capture/FocusedWindowProviding.h"
#include "Capture/FrontmostApplicationProviding.h"
#include "Capture/IdleStateProviding.h"
#include "Capture/SystemBoundaryProviding.h"

namespace stintbook {

/// Everything that capture is told by the desktop. All outlive what records.
struct DesktopProviders {
    FrontmostApplicationProviding& frontmost;
    std::shared_ptr<FocusedWindowProviding> focusedWindow;
    std::shared_ptr<BrowserDomainProviding> browserDomain;
    SystemBoundaryProviding& boundaries;
    IdleStateProviding& idle;
    std::shared_ptr<AccessibilityTrustProbing> accessibilityTrust;
    CalendarContextProviding& calendar;
    /// For people: "frontmost: x11", ….
    std::vector<std::string> sources;
};

} // namespace stintbook
