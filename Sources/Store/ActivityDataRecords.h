#pragma once

#include <optional>

#include "Base/Json.h"
#include "Billing/BillingSettings.h"
#include "Domain/ActivitySegment.h"
#include "Domain/Client.h"
#include "Export/ExportSnapshot.h"
#include "Review/ReviewedDayApproval.h"
#include "Review/ReviewedWorkItem.h"
#include "Review/SegmentReview.h"
#include "Rules/AttributionRule.h"

/// The JSON records of the activity data export; whoever prints one of these things elsewhere prints the same
/// record. Each call writes one whole object: keys in code-point order, absent optionals left out, instants
/// in seconds since 1970, decimals with all their digits.
namespace stintbook {

/// `ApplicationRecord`.
void write(JsonWriter& json, const ApplicationIdentity& application);
/// `ContextRecord`.
void write(JsonWriter& json, const FocusedContext& context);
/// `Segment`.
void write(JsonWriter& json, const ActivitySegment& segment);
/// `SegmentReviewRecord`.
void write(JsonWriter& json, SegmentID segmentID, const SegmentReview& review);
/// `AssignmentRecord`.
void write(JsonWriter& json, const AttributionAssignment& assignment);
/// `SourceSliceRecord`.
void write(JsonWriter& json, const ReviewedSourceSlice& slice);
/// `ReviewedItemRecord`.
void write(JsonWriter& json, const ReviewedWorkItem& item);
/// `DayApprovalRecord`.
void write(JsonWriter& json, const ReviewedDayApproval& approval);

/// What a list of clients or projects adds to their records.
struct DirectoryListing {
    ClientReferences references;
    std::optional<Decimal> hourlyRate;
    std::optional<RoundingPolicy> rounding;
};
void write(JsonWriter& json, const ClientReferences& references);
/// `ClientRecord`.
void write(JsonWriter& json, const Client& client, const std::optional<DirectoryListing>& listing = {});
/// `ProjectRecord`.
void write(JsonWriter& json, const Project& project, const std::optional<DirectoryListing>& listing = {});

/// `MatchRecord`.
void write(JsonWriter& json, const RuleMatch& match);
/// `AttributionRuleRecord`; a list of rules adds whether the rule loses a conflict.
void write(JsonWriter& json, const AttributionRule& rule, std::optional<bool> losesConflict = {});
/// `ExclusionRuleRecord`.
void write(JsonWriter& json, const ExclusionRule& rule);

/// `BillingSettingsRecord`.
void write(JsonWriter& json, const BillingSettings& settings);
/// `ClientBillingRecord`.
void write(JsonWriter& json, ClientID clientID, const ClientBillingDefaults& defaults);
/// `ProjectBillingRecord`.
void write(JsonWriter& json, ProjectID projectID, const ProjectBillingOverrides& overrides);

/// `FieldRecord`.
void write(JsonWriter& json, const ExportFieldSet& fields);
/// `LineRecord`.
void write(JsonWriter& json, const ExportLine& line);
/// Not in the export, which holds the lines: the same keys as far as a row has them, and `lineCount`.
void write(JsonWriter& json, const ExportSummaryRow& row);
/// `DayRevisionRecord`.
void write(JsonWriter& json, const ExportDayRevision& day);
/// `TotalsRecord`.
void write(JsonWriter& json, const ExportTotals& totals);
/// `Snapshot`.
void write(JsonWriter& json, const ExportSnapshot& snapshot);

} // namespace stintbook
