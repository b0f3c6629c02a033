#include "Review/RuleSuggestion.h"

#include <algorithm>
#include <map>
#include <unordered_map>
#include <vector>

namespace stintbook {

namespace {

/// Finds what was recorded of blocks and items.
class RecordedWork {
public:
    explicit RecordedWork(std::span<const ActivitySegment> recorded)
    {
        for (const auto& segment : recorded)
            m_segments.emplace(segment.id, &segment);
    }

    std::vector<WorkBlockSegment> of(const WorkBlock& block) const { return block.lineage; }
    /// What the item covers of its segments, as far as they are still there.
    std::vector<WorkBlockSegment> of(const ReviewedWorkItem& item) const
    {
        std::vector<WorkBlockSegment> work;
        for (const auto& slice : item.slices) {
            const auto found = m_segments.find(slice.segmentID);
            if (found == m_segments.end())
                continue;
            auto& piece = work.emplace_back();
            piece.segment = *found->second;
            piece.segment.start = slice.start;
            piece.segment.end = slice.end;
            piece.sourceSegmentID = slice.segmentID;
        }
        return work;
    }
    std::vector<WorkBlockSegment> of(const ReviewSubject& subject) const
    {
        return std::visit([this](const auto& work) { return of(work); }, subject);
    }

private:
    std::unordered_map<SegmentID, const ActivitySegment*> m_segments;
};

/// The domain that accounts for most of the time in the application; of equals, the one that was seen first.
std::optional<BrowserDomain> domainIn(const ApplicationIdentity& application,
                                      std::span<const WorkBlockSegment> work)
{
    std::map<BrowserDomain, Seconds> times;
    for (const auto& [segment, source, evaluation, review] : work) {
        if (segment.browserDomain && segment.application.value_or(unknownApplication()) == application)
            times[*segment.browserDomain] += segment.length();
    }
    std::optional<BrowserDomain> longest;
    for (const auto& [segment, source, evaluation, review] : work) {
        const auto time = segment.browserDomain ? times.find(*segment.browserDomain) : times.end();
        if (time != times.end() && (!longest || times.at(*longest) < time->second))
            longest = segment.browserDomain;
    }
    return longest;
}

/// Whether work of the day that counts for another client is on the domain, too.
bool servesOthers(const BrowserDomain& domain, ClientID client, const ReviewDay& day,
                  const RecordedWork& recorded, UUID corrected)
{
    const auto isForOther = [&](const auto& work) {
        const auto subject = ReviewSubject(work);
        const auto assignment = effectiveAssignment(subject);
        if (identifier(subject) == corrected || isIgnored(subject) || !assignment
            || assignment->clientID == client)
            return false;
        return std::ranges::any_of(recorded.of(work), [&](const WorkBlockSegment& entry) {
            return entry.segment.browserDomain && entry.segment.browserDomain->isWithin(domain);
        });
    };
    return std::ranges::any_of(day.blocks, isForOther) || std::ranges::any_of(day.items, isForOther);
}

} // namespace

AttributionRule rule(const RuleProposal& proposal)
{
    return {.id = proposal.id,
            .match = proposal.match,
            .clientID = proposal.clientID,
            .projectID = proposal.projectID,
            .billableOverride = proposal.billableOverride};
}

RuleMatch suggestedMatch(const ReviewSubject& corrected, ClientID client, const ReviewDay& day,
                         std::span<const ActivitySegment> recorded)
{
    const RecordedWork work(recorded);
    const auto segments = work.of(corrected);
    const auto application = dominantApplication(segments);
    RuleMatch match;
    match.browserDomain = domainIn(application, segments);
    if (match.browserDomain && servesOthers(*match.browserDomain, client, day, work, identifier(corrected)))
        match.browserDomain.reset();
    if (!match.browserDomain && application != unknownApplication())
        match.applicationBundleIdentifier = application.bundleIdentifier;
    return match;
}

} // namespace stintbook
