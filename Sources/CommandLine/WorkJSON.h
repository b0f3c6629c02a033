#pragma once

#include "App/DayBook.h"
#include "Base/Json.h"

/// What the commands about days and work print as JSON beside the records of a data export.
namespace stintbook {

void write(JsonWriter& json, const WorkBlock& block);
void write(JsonWriter& json, const AttributionEvaluation& evaluation);
void write(JsonWriter& json, const ListedDay& day);
void write(JsonWriter& json, const WorkReviewSummary& summary);
void write(JsonWriter& json, const ReviewedDayLine& line);
void write(JsonWriter& json, const ReviewedWorkTotals& totals);
/// The members of `day show`.
void writeMembers(JsonWriter& json, const OpenedDay& day);
/// {"blocks":[…],"items":[…]}, the members alone.
void writeMembers(JsonWriter& json, const EditedWork& work);

} // namespace stintbook
