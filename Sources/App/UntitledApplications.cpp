#include "App/UntitledApplications.h"

#include <algorithm>
#include <map>

namespace stintbook {

namespace {

/// Less work may have found no moment in which its title was read.
constexpr Seconds patience{60};

struct Observed {
    std::string name;
    Seconds worked;
    bool hasTitle = false;
};

} // namespace

std::vector<std::string> untitledApplications(std::span<const ActivitySegment> segments)
{
    std::map<std::string, Observed> applications;
    for (const auto& segment : segments) {
        if (segment.kind != ActivityKind::work || segment.origin != SegmentOrigin::observed
            || !segment.application)
            continue;
        auto& application = applications[segment.application->bundleIdentifier];
        application.name = segment.application->displayName;
        application.worked += segment.length();
        application.hasTitle |= segment.evidence == ContextEvidence::applicationAndWindow;
    }
    std::vector<std::string> names;
    for (auto& [identifier, application] : applications) {
        if (!application.hasTitle && application.worked >= patience)
            names.push_back(std::move(application.name));
    }
    std::ranges::sort(names);
    return names;
}

} // namespace stintbook
