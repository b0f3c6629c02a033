#pragma once

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "Export/ExportDocumentModel.h"
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

inline const auto sampleClient = numbered<ClientID>(0xC1);
inline const auto sampleProject = numbered<ProjectID>(0xD1);

/// Frozen from the sample segment of that minute.
inline ReviewedWorkItem sampleItem(std::uint32_t minute)
{
    const auto segment = sampleSegment(minute);
    return {.id = numbered<ReviewedItemID>(minute + 1),
            .day = sampleDay,
            .start = segment.start,
            .end = segment.end,
            .assignment = {sampleClient, sampleProject, true},
            .slices = {{segment.id, segment.start, segment.end}}};
}

inline ExportSnapshot sampleSnapshot(std::uint32_t index)
{
    const auto line = [](const char* name, std::optional<Decimal> rate, std::optional<Decimal> amount) {
        return ExportLine{.dayID = dayID(sampleDay),
                          .dayStart = sampleDay.start,
                          .timeZoneIdentifier = sampleDay.timeZoneIdentifier,
                          .start = sampleDay.start,
                          .end = sampleDay.start + Seconds{901},
                          .clientName = name,
                          .actualSeconds = 901,
                          .billedSeconds = 1080,
                          .hourlyRate = rate,
                          .amount = amount,
                          .currencyCode = "EUR",
                          .rounding = RoundingPolicy::nearestSixMinutes};
    };
    ExportSnapshot snapshot{
        .id = numbered<ExportSnapshotID>(index + 1),
        .createdAt = {1795190000.5 + index},
        .format = ExportFormat::timesheetPDF,
        .mode = ExportMode::detailed,
        .rangeStart = sampleDay,
        .rangeEnd = sampleDay,
        .clientFilterID = sampleClient,
        .clientFilterName = "Müller",
        .lines = {line("B", Decimal::parse("87.5"), Decimal::parse("26.25")),
                  line("A", Decimal::parse("0.1"), Decimal::parse("0.03")), line("C", {}, {})},
        .days = {{dayID(sampleDay), sampleDay.start, sampleDay.timeZoneIdentifier, std::string(64, 'a')}}};
    snapshot.totals = totals(snapshot.lines, BillingCurrency::fromText("EUR"));
    return snapshot;
}

inline constexpr Interval allTime{{-1e12}, {1e12}};

/// The store that a version wrote.
inline std::filesystem::path fixture(int version)
{
    return fmt::format("{}/Tests/Fixtures/Stores/v{}.store", STINTBOOK_SOURCE_DIRECTORY, version);
}

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

/// For each table the columns that it has, as an expression.
using StoredColumns = std::map<std::string, std::string>;

inline StoredColumns storedColumns(StoreConnection& connection)
{
    StoredColumns columns;
    auto tables =
        connection.query("SELECT name, (SELECT group_concat('quote(\"' || name || '\")', '||')"
                         " FROM pragma_table_info(t.name)) FROM sqlite_schema t WHERE type = 'table'");
    while (tables.next()) {
        const auto name = tables.take<std::string>();
        columns[name] = tables.take<std::string>();
    }
    return columns;
}

/// Every row of every table, as far as the columns say it.
inline std::vector<std::string> storedRows(StoreConnection& connection, const StoredColumns& columns)
{
    std::vector<std::string> rows;
    for (const auto& [table, values] : columns) {
        SQLite::Statement all(connection.database(), fmt::format("SELECT {} FROM \"{}\"", values, table));
        while (all.executeStep())
            rows.push_back(fmt::format("{}: {}", table, all.getColumn(0).getString()));
    }
    std::ranges::sort(rows);
    return rows;
}

inline std::vector<std::string> storedRows(StoreDatabase& database)
{
    return *database.read([](StoreConnection& connection) -> Stored<std::vector<std::string>> {
        return storedRows(connection, storedColumns(connection));
    });
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
