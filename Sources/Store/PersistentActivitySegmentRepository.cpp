#include "Store/PersistentActivitySegmentRepository.h"

#include <optional>

#include "Store/RoomForALargeTransaction.h"
#include "Store/SegmentRecords.h"

namespace stintbook {

namespace {

/// From so many segments on a transaction is a large one.
constexpr std::size_t manySegments = 1000;

} // namespace

Stored<void> PersistentActivitySegmentRepository::save(std::span<const ActivitySegment> segments)
{
    return m_database->write([&](StoreConnection& connection) -> Stored<void> {
        std::optional<RoomForALargeTransaction> room;
        if (segments.size() >= manySegments)
            room.emplace(connection);
        for (const auto& segment : segments)
            writeSegment(connection, segment);
        return {};
    });
}

Stored<int> PersistentActivitySegmentRepository::saveMissing(std::span<const ActivitySegment> segments)
{
    return m_database->write([&](StoreConnection& connection) -> Stored<int> {
        int missing = 0;
        for (const auto& segment : segments)
            missing += insertSegmentIfAbsent(connection, segment) ? 1 : 0;
        return missing;
    });
}

Stored<std::vector<ActivitySegment>> PersistentActivitySegmentRepository::segments(Interval overlapping) const
{
    return m_database->read(
        [&](StoreConnection& connection) { return readSegments(connection, overlapping); });
}

Stored<std::vector<ObservedApplication>> PersistentActivitySegmentRepository::observedApplications() const
{
    return m_database->read([](StoreConnection& connection) -> Stored<std::vector<ObservedApplication>> {
        return readObservedApplications(connection);
    });
}

Stored<std::optional<Instant>> PersistentActivitySegmentRepository::firstRecorded(Instant from) const
{
    return m_database->read([&](StoreConnection& connection) -> Stored<std::optional<Instant>> {
        return readFirstRecorded(connection, from);
    });
}

Stored<std::optional<ActivitySegment>> PersistentActivitySegmentRepository::latestSegment() const
{
    return m_database->read([](StoreConnection& connection) { return readLatestSegment(connection); });
}

} // namespace stintbook
