#include "Rules/RuleSubject.h"

#include "Base/Text.h"

namespace stintbook {

RuleSubject::RuleSubject(const ActivitySegment& segment)
    : applicationBundleIdentifier(segment.application ? &segment.application->bundleIdentifier : nullptr)
    , browserDomain(segment.browserDomain ? &*segment.browserDomain : nullptr)
{
    if (!segment.context.isNone())
        foldedTitle = foldedForSearch(segment.context.text);
}

} // namespace stintbook
