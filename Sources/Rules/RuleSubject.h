#pragma once

#include <string>

#include "Domain/ActivitySegment.h"

namespace stintbook {

/// What rules see of one segment; null where nothing is known. Refers to the segment and to its folded
/// title, which outlive it.
struct RuleSubject {
    /// `folded` is what `foldedTitle(segment)` gives: folding is dear, and many segments share a title.
    RuleSubject(const ActivitySegment& segment, const std::string& folded);

    const std::string* applicationBundleIdentifier = nullptr;
    const BrowserDomain* browserDomain = nullptr;
    /// Of the window or the document.
    const std::string* foldedTitle = nullptr;
};

/// The segment's title in the form in which titles are searched; empty where there is none.
std::string foldedTitle(const ActivitySegment& segment);

} // namespace stintbook
