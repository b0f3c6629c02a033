#include "Billing/RecordsDayState.h"

namespace stintbook {

std::string_view label(RecordsDayState state)
{
    switch (state) {
    case RecordsDayState::needsReview:
        return "Needs review";
    case RecordsDayState::readyToBill:
        return "Ready to bill";
    case RecordsDayState::exported:
        return "Exported";
    case RecordsDayState::changedSinceExport:
        return "Changed since export";
    }
    return {};
}

RecordsDayState recordsState(const std::optional<ReviewedDayRevision>& exported,
                             const ReviewedDayRevision& current, ReviewedDayStatus status)
{
    if (exported)
        return *exported == current ? RecordsDayState::exported : RecordsDayState::changedSinceExport;
    return status == ReviewedDayStatus::ready ? RecordsDayState::readyToBill : RecordsDayState::needsReview;
}

} // namespace stintbook
