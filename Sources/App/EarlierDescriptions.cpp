#include "App/EarlierDescriptions.h"

#include <algorithm>
#include <ranges>
#include <set>

#include "Base/Try.h"
#include "Store/PersistentReviewStore.h"

namespace stintbook {

Stored<std::vector<std::string>> earlierDescriptions(OpenedStore& store, Instant now)
{
    // What lies ahead may be planned already.
    auto items = TRY(store.review().items(Interval{now - reachOfDescriptions, now + reachOfDescriptions}));
    std::ranges::sort(items, std::greater(), &ReviewedWorkItem::start);
    std::vector<std::string> texts;
    std::set<std::string> known;
    for (const auto& item : items) {
        if (item.description && known.insert(*item.description).second)
            texts.push_back(*item.description);
    }
    return texts;
}

} // namespace stintbook
