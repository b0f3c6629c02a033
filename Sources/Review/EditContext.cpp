#include "Review/EditContext.h"

namespace stintbook {

Edited<void> mustReceiveNewWork(const AttributionAssignment& target, const EditContext& context)
{
    if (const auto problem = context.directory.problem(target.clientID, target.projectID))
        return std::unexpected(TargetCannotReceiveNewWork{*problem});
    return {};
}

} // namespace stintbook
