#include "App/EditedWork.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace stintbook {

DayEdited<std::vector<ReviewSubject>> selectedWork(const ReviewDay& day, std::span<const UUID> ids)
{
    std::vector<ReviewSubject> found;
    for (const auto& id : ids) {
        const auto block = std::ranges::find(day.blocks, id, &WorkBlock::id);
        const auto item = std::ranges::find(day.items, ReviewedItemID{id}, &ReviewedWorkItem::id);
        if (block != day.blocks.end())
            found.emplace_back(*block);
        else if (item != day.items.end())
            found.emplace_back(*item);
        else
            return std::unexpected(UnknownWork{id});
    }
    return found;
}

EditedWork workAfterwards(const ReviewDay& day, const std::vector<ReviewSubject>& selected,
                          const ReviewedLayerMutation& done)
{
    std::set<SegmentID> segments;
    std::set<ReviewedItemID> items;
    for (const auto& subject : selected) {
        if (const auto* block = std::get_if<WorkBlock>(&subject)) {
            for (const auto& entry : block->lineage)
                segments.insert(entry.segment.id);
        } else {
            items.insert(std::get<ReviewedWorkItem>(subject).id);
        }
    }
    for (const auto& item : done.upserts)
        items.insert(item.id);

    EditedWork work;
    std::ranges::copy_if(day.blocks, std::back_inserter(work.blocks), [&](const WorkBlock& block) {
        return std::ranges::any_of(block.lineage,
                                   [&](const auto& entry) { return segments.contains(entry.segment.id); });
    });
    std::ranges::copy_if(day.items, std::back_inserter(work.items),
                         [&](const ReviewedWorkItem& item) { return items.contains(item.id); });
    return work;
}

AttributionAssignment assignmentTo(const WorkTarget& target, const AssignmentDirectory& directory)
{
    const auto* project = directory.project(target.projectID);
    const bool isBillableByDefault = project == nullptr || project->defaultBillable;
    return {target.clientID, target.projectID, target.isBillable.value_or(isBillableByDefault)};
}

} // namespace stintbook
