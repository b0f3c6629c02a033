#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "Domain/ActivitySegment.h"
#include "Domain/PersistenceError.h"

namespace stintbook {

/// One distinct application found in recorded segments.
struct ObservedApplication {
    std::string bundleIdentifier;
    /// That of the most recent segment.
    std::string displayName;
    /// The end of the most recent segment.
    Instant lastSeen;

    friend bool operator==(const ObservedApplication&, const ObservedApplication&) = default;
};

/// Recorded segments with their browser domains.
class ActivitySegmentRepository {
public:
    virtual ~ActivitySegmentRepository() = default;

    /// All of them or none, in one transaction.
    virtual Stored<void> save(std::span<const ActivitySegment> segments) = 0;
    /// Those that overlap the interval, touching ends aside, by `segmentOrder`.
    virtual Stored<std::vector<ActivitySegment>> segments(Interval overlapping) const = 0;
    virtual Stored<std::vector<ObservedApplication>> observedApplications() const = 0;
    /// The one that starts last; none in an empty store.
    virtual Stored<std::optional<ActivitySegment>> latestSegment() const = 0;
};

} // namespace stintbook
