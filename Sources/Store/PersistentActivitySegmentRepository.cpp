#include "Store/PersistentActivitySegmentRepository.h"

#include "Store/SegmentRecords.h"

namespace stintbook {

namespace {

/// Keeps the pages of a large transaction in memory for its duration, instead of writing them again and again;
/// otherwise the little that the library takes by itself will do.
class RoomForALargeTransaction {
public:
    RoomForALargeTransaction(StoreConnection& connection, std::size_t segmentCount)
        : m_connection(segmentCount >= 1000 ? &connection : nullptr)
    {
        if (m_connection != nullptr)
            m_connection->execute("PRAGMA cache_size = -32000");
    }
    ~RoomForALargeTransaction()
    {
        if (m_connection != nullptr)
            m_connection->database().tryExec("PRAGMA cache_size = -2000");
    }
    RoomForALargeTransaction(const RoomForALargeTransaction&) = delete;
    RoomForALargeTransaction& operator=(const RoomForALargeTransaction&) = delete;

private:
    StoreConnection* m_connection;
};

} // namespace

Stored<void> PersistentActivitySegmentRepository::save(std::span<const ActivitySegment> segments)
{
    return m_database->write([&](StoreConnection& connection) -> Stored<void> {
        const RoomForALargeTransaction room(connection, segments.size());
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
