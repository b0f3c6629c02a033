#pragma once

#include <optional>
#include <string>

#include "Domain/ActivitySegment.h"

namespace stintbook {

/// What rules see of one segment, its title folded once for every engine that is asked. It refers to the
/// segment, which must outlive it.
struct RuleSubject {
    explicit RuleSubject(const ActivitySegment& segment);
    explicit RuleSubject(const ActivitySegment&& segment) = delete;

    /// Null where nothing is known.
    const std::string* applicationBundleIdentifier = nullptr;
    const BrowserDomain* browserDomain = nullptr;
    /// The window's or document's title as `foldedForSearch` gives it; absent where there is none.
    std::optional<std::string> foldedTitle;
};

} // namespace stintbook
