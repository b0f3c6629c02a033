#pragma once

#include <optional>
#include <string>

#include "Domain/BrowserDomain.h"

namespace stintbook {

/// A block of conditions that must all hold; an absent one takes no part.
struct RuleMatch {
    /// Equal to the application's identifier, case and all.
    std::optional<std::string> applicationBundleIdentifier;
    /// This host and any subdomain of it.
    std::optional<BrowserDomain> browserDomain;
    /// Occurs in the window's or document's title, ignoring case and accents.
    std::optional<std::string> titleContains;

    bool isEmpty() const { return !applicationBundleIdentifier && !browserDomain && !titleContains; }

    friend bool operator==(const RuleMatch&, const RuleMatch&) = default;
};

} // namespace stintbook
