#include "Review/ReviewedLayer.h"

#include <algorithm>

namespace stintbook {

ReviewedLayerMutation difference(const ReviewedLayer& from, const ReviewedLayer& to)
{
    const auto find = [](const std::vector<ReviewedWorkItem>& items, ReviewedItemID id) {
        const auto found = std::ranges::find(items, id, &ReviewedWorkItem::id);
        return found == items.end() ? nullptr : &*found;
    };
    ReviewedLayerMutation mutation;
    for (const auto& item : to.items) {
        const auto* present = find(from.items, item.id);
        if (present == nullptr || *present != item)
            mutation.upserts.push_back(item);
    }
    for (const auto& item : from.items) {
        if (find(to.items, item.id) == nullptr)
            mutation.deletions.push_back(item.id);
    }
    mutation.reviewUpserts = to.reviews;
    mutation.approval = to.approval;
    if (from.approval && !to.approval)
        mutation.disapproval = from.approval->day;
    return mutation;
}

} // namespace stintbook
