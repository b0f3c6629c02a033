#pragma once

#include <span>
#include <string_view>

namespace stintbook {

/// A browser whose front tab can be read.
struct SupportedBrowser {
    /// One of the identifiers under which the browser is installed: packaged, sandboxed or by window class.
    std::string_view bundleIdentifier;
    std::string_view displayName;
    /// What is read, in order, until one answers: "KEY of front document" for an attribute of the page's
    /// accessible document, or "address field".
    std::span<const std::string_view> locationExpressions;
};

/// All of them, in the order in which settings list them.
std::span<const SupportedBrowser> supportedBrowsers();
/// Null for every other application.
const SupportedBrowser* supportedBrowser(std::string_view bundleIdentifier);

} // namespace stintbook
