#include "Rules/RuleSubject.h"

#include "Base/Text.h"

namespace stintbook {

RuleSubject::RuleSubject(const ActivitySegment& segment, const std::string& folded)
    : applicationBundleIdentifier(segment.application ? &segment.application->bundleIdentifier : nullptr)
    , browserDomain(segment.browserDomain ? &*segment.browserDomain : nullptr)
    , foldedTitle(segment.context.isNone() ? nullptr : &folded)
{
}

std::string foldedTitle(const ActivitySegment& segment)
{
    return segment.context.isNone() ? std::string() : foldedForSearch(segment.context.text);
}

} // namespace stintbook
