#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Support/PrivateDesktop.h"

/// Real browsers on a private desktop, and pages for them. Names under "example.test" lead to this machine.
namespace stintbook {

/// Serves small pages over HTTP, each as "/name" with that title; gives the port.
int servePages(PrivateDesktop& desktop,
               const std::vector<std::pair<std::string, std::string>>& namesAndTitles);

/// Firefox with an empty profile of the desktop's own, without first-run pages and updates. A second call
/// hands its arguments to the copy that runs.
pid_t startFirefox(PrivateDesktop& desktop, const std::vector<std::string>& arguments);

/// The same for Chromium.
pid_t startChromium(PrivateDesktop& desktop, const std::vector<std::string>& arguments);

} // namespace stintbook
