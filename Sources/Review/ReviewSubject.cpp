#include "Review/ReviewSubject.h"

#include <algorithm>

namespace stintbook {

namespace {

UUID identifierOf(const WorkBlock& block)
{
    return block.id;
}

UUID identifierOf(const ReviewedWorkItem& item)
{
    return item.id.uuid;
}

} // namespace

Interval interval(const ReviewSubject& subject)
{
    return std::visit([](const auto& work) { return work.interval(); }, subject);
}

UUID identifier(const ReviewSubject& subject)
{
    return std::visit([](const auto& work) { return identifierOf(work); }, subject);
}

bool isIgnored(const ReviewSubject& subject)
{
    if (const auto* block = std::get_if<WorkBlock>(&subject))
        return block->review.isIgnored;
    return !std::get<ReviewedWorkItem>(subject).isIncluded();
}

std::optional<AttributionAssignment> effectiveAssignment(const ReviewSubject& subject)
{
    if (const auto* block = std::get_if<WorkBlock>(&subject))
        return block->effectiveAssignment();
    return std::get<ReviewedWorkItem>(subject).assignment;
}

std::optional<ReviewSubject> ReviewDay::subject(UUID id) const
{
    if (const auto block = std::ranges::find(blocks, id, &WorkBlock::id); block != blocks.end())
        return *block;
    if (const auto item = std::ranges::find(items, ReviewedItemID{id}, &ReviewedWorkItem::id);
        item != items.end())
        return *item;
    return std::nullopt;
}

std::vector<Interval> ReviewDay::includedTime() const
{
    std::vector<Interval> times;
    for (const auto& item : items) {
        if (item.isIncluded())
            times.push_back(item.interval());
    }
    for (const auto& block : blocks) {
        if (!block.review.isIgnored)
            times.push_back(block.interval());
    }
    std::ranges::sort(times, {}, &Interval::start);
    return times;
}

std::vector<ReviewSubject> withoutRepetitions(ReviewSelection selection)
{
    std::vector<ReviewSubject> distinct;
    for (const auto& subject : selection) {
        if (std::ranges::find(distinct, identifier(subject), identifier) == distinct.end())
            distinct.push_back(subject);
    }
    return distinct;
}

} // namespace stintbook
