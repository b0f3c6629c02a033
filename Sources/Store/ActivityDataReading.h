#pragma once

#include <utility>

#include "Base/JsonValue.h"
#include "Billing/BillingSettings.h"
#include "Domain/ActivitySegment.h"
#include "Domain/Client.h"
#include "Export/ExportSnapshot.h"
#include "Review/ReviewedDayApproval.h"
#include "Review/ReviewedWorkItem.h"
#include "Review/SegmentReview.h"
#include "Rules/AttributionRule.h"

/// The records of `ActivityDataRecords.h` read back, each with the checks that a stored record passes when it is
/// read, and refused for anything that it does not know.
namespace stintbook {

template <typename Record> JsonRead<Record> readRecord(const JsonValue& value);

template <> JsonRead<ActivitySegment> readRecord(const JsonValue& value);
template <> JsonRead<std::pair<SegmentID, SegmentReview>> readRecord(const JsonValue& value);
template <> JsonRead<AttributionAssignment> readRecord(const JsonValue& value);
template <> JsonRead<ReviewedWorkItem> readRecord(const JsonValue& value);
template <> JsonRead<ReviewedDayApproval> readRecord(const JsonValue& value);
template <> JsonRead<Client> readRecord(const JsonValue& value);
template <> JsonRead<Project> readRecord(const JsonValue& value);
template <> JsonRead<AttributionRule> readRecord(const JsonValue& value);
template <> JsonRead<ExclusionRule> readRecord(const JsonValue& value);
template <> JsonRead<BillingSettings> readRecord(const JsonValue& value);
template <> JsonRead<std::pair<ClientID, ClientBillingDefaults>> readRecord(const JsonValue& value);
template <> JsonRead<std::pair<ProjectID, ProjectBillingOverrides>> readRecord(const JsonValue& value);
template <> JsonRead<ExportSnapshot> readRecord(const JsonValue& value);

} // namespace stintbook
