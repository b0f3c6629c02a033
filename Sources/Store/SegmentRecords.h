#pragma once

#include <optional>
#include <span>
#include <vector>

#include "Capture/ActivitySegmentRepository.h"
#include "Store/StoreConnection.h"
#include "Store/StoredRecords.h"

/// Recorded segments as rows. Callers hold the transaction; errors of the database are thrown.
namespace stintbook {

/// In seconds: more than any zone has.
inline constexpr int longestUTCOffset = 26 * 3600;

/// Inserts, or replaces the segment of that identifier.
void writeSegment(StoreConnection& connection, const ActivitySegment& segment);
/// False when a segment of that identifier is there already.
bool insertSegmentIfAbsent(StoreConnection& connection, const ActivitySegment& segment);

/// No segment is longer, so that one which overlaps an interval starts at most this much before it.
Seconds longestSegment(StoreConnection& connection);
/// By `segmentOrder`. The time that it takes depends on what is found, not on what is stored.
Stored<std::vector<ActivitySegment>> readSegments(StoreConnection& connection, Interval overlapping);
/// By `segmentOrder`.
StoredRecords<ActivitySegment> allSegments(StoreConnection& connection);
/// The first recorded instant that is not before the given one.
std::optional<Instant> readFirstRecorded(StoreConnection& connection, Instant from);
Stored<std::optional<ActivitySegment>> readLatestSegment(StoreConnection& connection);
/// From the first recorded instant to the last one.
std::optional<Interval> readRecordedTime(StoreConnection& connection);
std::vector<ObservedApplication> readObservedApplications(StoreConnection& connection);

} // namespace stintbook
