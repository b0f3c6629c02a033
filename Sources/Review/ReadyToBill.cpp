#include "Review/ReadyToBill.h"

#include <algorithm>
#include <iterator>

#include "Base/Try.h"
#include "Review/Freeze.h"

namespace stintbook {

namespace {

std::string sentence(ReadyToBillBlocker blocker)
{
    return std::string(message(blocker));
}

std::string sentence(const ReviewedEditProblem& problem)
{
    return message(problem);
}

bool isUnassigned(const WorkBlock& block)
{
    return !block.review.isIgnored && !block.effectiveAssignment();
}

bool isConflicted(const WorkBlock& block)
{
    return !block.review.isIgnored && block.isInUnsettledConflict();
}

/// The times are in order of their starts.
bool overlap(const std::vector<Interval>& times)
{
    const auto meets = [](Interval earlier, Interval later) { return later.start < earlier.end; };
    return std::ranges::adjacent_find(times, meets) != times.end();
}

} // namespace

std::string_view message(ReadyToBillBlocker blocker)
{
    switch (blocker) {
    case ReadyToBillBlocker::noIncludedWork:
        return "There is no work on this day to make ready.";
    case ReadyToBillBlocker::unassignedWork:
        return "Some work has no client and project yet.";
    case ReadyToBillBlocker::conflictedWork:
        return "Two rules disagree about some of this work.";
    case ReadyToBillBlocker::overlappingReviewedWork:
        return "Two reviewed items claim the same time, so this day cannot be totalled honestly.";
    }
    return {};
}

std::string message(const ReadyToBillRefusal& refusal)
{
    return std::visit([](const auto& kind) { return sentence(kind); }, refusal);
}

ReadyToBillEligibility eligibility(const ReviewDay& day)
{
    const auto times = day.includedTime();
    ReadyToBillEligibility result;
    const auto add = [&](bool applies, ReadyToBillBlocker blocker) {
        if (applies)
            result.blockers.push_back(blocker);
    };
    add(times.empty(), ReadyToBillBlocker::noIncludedWork);
    add(std::ranges::any_of(day.blocks, isUnassigned), ReadyToBillBlocker::unassignedWork);
    add(std::ranges::any_of(day.blocks, isConflicted), ReadyToBillBlocker::conflictedWork);
    add(overlap(times), ReadyToBillBlocker::overlappingReviewedWork);
    return result;
}

std::vector<UUID> workBehind(ReadyToBillBlocker blocker, const ReviewDay& day)
{
    std::vector<UUID> ids;
    if (blocker == ReadyToBillBlocker::unassignedWork || blocker == ReadyToBillBlocker::conflictedWork) {
        const auto isBehind = blocker == ReadyToBillBlocker::unassignedWork ? isUnassigned : isConflicted;
        for (const auto& block : day.blocks) {
            if (isBehind(block))
                ids.push_back(block.id);
        }
    } else if (blocker == ReadyToBillBlocker::overlappingReviewedWork) {
        std::vector<ReviewSubject> included(day.blocks.begin(), day.blocks.end());
        included.insert(included.end(), day.items.begin(), day.items.end());
        std::erase_if(included, isIgnored);
        for (const auto& subject : included) {
            const auto time = interval(subject);
            const bool overlaps = std::ranges::any_of(included, [&](const ReviewSubject& other) {
                return identifier(other) != identifier(subject) && interval(other).start < time.end
                    && time.start < interval(other).end;
            });
            if (overlaps)
                ids.push_back(identifier(subject));
        }
    }
    return ids;
}

std::expected<ReviewedLayerMutation, ReadyToBillRefusal> markReady(const EditContext& context, Instant now)
{
    if (const auto blockers = eligibility(context.day).blockers; !blockers.empty())
        return std::unexpected(blockers.front());
    ReviewedLayerMutation mutation;
    for (const auto& block : context.day.blocks) {
        if (!block.review.isIgnored)
            write(TRY(makeStructural(block, context)), mutation);
    }
    auto layer = context.day.items;
    std::ranges::copy(mutation.upserts, std::back_inserter(layer));
    mutation.approval =
        ReviewedDayApproval{.day = context.day.day, .revision = revision(layer), .approvedAt = now};
    return mutation;
}

} // namespace stintbook
