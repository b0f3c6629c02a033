#pragma once

#include <memory>

#include "Capture/ActivitySegmentRepository.h"
#include "Store/StoreDatabase.h"

namespace stintbook {

/// Recorded segments in the store. Saving a segment whose identifier is stored replaces it.
///
/// Confined to one executor; it may share its database with a `PersistentReviewStore` on another one, as
/// every call is one transaction of its own.
class PersistentActivitySegmentRepository final : public ActivitySegmentRepository {
public:
    explicit PersistentActivitySegmentRepository(std::shared_ptr<StoreDatabase> database)
        : m_database(std::move(database))
    {
    }

    Stored<void> save(std::span<const ActivitySegment> segments) override;
    Stored<std::vector<ActivitySegment>> segments(Interval overlapping) const override;
    Stored<std::vector<ObservedApplication>> observedApplications() const override;
    Stored<std::optional<ActivitySegment>> latestSegment() const override;

    /// The first recorded instant that is not before the given one.
    Stored<std::optional<Instant>> firstRecorded(Instant from) const;
    /// Leaves alone those whose identifier is stored already; answers how many were missing.
    Stored<int> saveMissing(std::span<const ActivitySegment> segments);

private:
    std::shared_ptr<StoreDatabase> m_database;
};

} // namespace stintbook
