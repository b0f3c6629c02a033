#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Review/ReviewedWorkItem.h"
#include "Store/PersistentActivitySegmentRepository.h"
#include "Store/PersistentReviewStore.h"
#include "Store/StoreDatabase.h"
#include "Support/TemporaryDirectory.h"

namespace stintbook {

/// An identifier that ends in the number.
template <typename ID> ID numbered(std::uint32_t number)
{
    ID id;
    for (std::size_t byte = 0; byte < 4; ++byte)
        id.uuid.bytes[15 - byte] = static_cast<std::uint8_t>(number >> (8 * byte));
    return id;
}

/// 2026-11-20 in Berlin.
inline const LocalDay sampleDay{{1795129200}, "Europe/Berlin"};

/// One minute of work, the number being the minute of the sample day.
inline ActivitySegment sampleSegment(std::uint32_t minute)
{
    const auto start = sampleDay.start + Seconds{60.0 * minute};
    return {.id = numbered<SegmentID>(minute + 1),
            .start = start,
            .end = start + Seconds{60},
            .application = ApplicationIdentity{"org.example.Editor", "Editor"},
            .context = FocusedContext::windowTitle("notes.txt"),
            .evidence = ContextEvidence::applicationAndWindow,
            .timeZone = {"Europe/Berlin", 3600}};
}

inline std::vector<ActivitySegment> sampleSegments(std::uint32_t from, std::uint32_t count)
{
    std::vector<ActivitySegment> segments;
    for (std::uint32_t minute = from; minute < from + count; ++minute)
        segments.push_back(sampleSegment(minute));
    return segments;
}

/// Frozen from the sample segment of that minute.
inline ReviewedWorkItem sampleItem(std::uint32_t minute)
{
    const auto segment = sampleSegment(minute);
    return {.id = numbered<ReviewedItemID>(minute + 1),
            .day = sampleDay,
            .start = segment.start,
            .end = segment.end,
            .assignment = {numbered<ClientID>(1), numbered<ProjectID>(1), true},
            .slices = {{segment.id, segment.start, segment.end}}};
}

inline constexpr Interval allTime{{-1e12}, {1e12}};

/// A store in a directory of its own.
struct SampleStore {
    TemporaryDirectory directory;
    std::filesystem::path file = directory / "Velloran.store";

    std::shared_ptr<StoreDatabase> open(StoreRole role = StoreRole::owner,
                                        const std::string& fileSystem = {}) const
    {
        auto database = StoreDatabase::open({.file = file, .role = role, .fileSystem = fileSystem});
        EXPECT_TRUE(database) << (database ? "" : message(database.error()));
        return database ? *database : nullptr;
    }
    std::string refusal(StoreRole role = StoreRole::owner) const
    {
        const auto database = StoreDatabase::open({.file = file, .role = role});
        return database ? "it was opened" : message(database.error());
    }
};

inline std::int64_t number(StoreDatabase& database, const std::string& sql)
{
    return *database.read(
        [&](StoreConnection& connection) -> Stored<std::int64_t> { return connection.number(sql); });
}

inline void execute(StoreDatabase& database, const std::string& sql)
{
    ASSERT_TRUE(database.write([&](StoreConnection& connection) -> Stored<void> {
        connection.execute(sql);
        return {};
    }));
}

/// What the database says of itself when all is well.
inline bool isSound(StoreDatabase& database)
{
    return *database.read([](StoreConnection& connection) -> Stored<bool> {
        auto check = connection.query("PRAGMA integrity_check");
        return check.next() && check.take<std::string>() == "ok";
    });
}

} // namespace stintbook
