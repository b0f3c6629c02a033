#include "Store/ExportSnapshotRecords.h"

#include <algorithm>
#include <map>
#include <string>

#include "Base/Try.h"
#include "Domain/CalendarContext.h"
#include "Store/StoredFields.h"

namespace stintbook {

namespace {

#define SNAPSHOT_ROWS                                                                                        \
    "SELECT id, createdAt, formatRaw, modeRaw, includesDate, includesClient, includesProject,"               \
    " includesDuration, includesTimeOfDay, includesDescription, includesBillableState,"                      \
    " includesRateAndAmount, rangeStartDate, rangeStartTimeZoneIdentifier, rangeEndDate,"                    \
    " rangeEndTimeZoneIdentifier, clientFilterID, clientFilterName, projectFilterID, projectFilterName,"     \
    " totalsActualSeconds, totalsBilledSeconds, totalsBillableSeconds, totalsNonBillableSeconds,"            \
    " totalsAmount, currencyCode, totalsUnpricedLineCount FROM ExportSnapshot"

#define LINE_COLUMNS                                                                                         \
    "dayID, dayStart, timeZoneIdentifier, start, \"end\", clientName, projectName, itemDescription,"         \
    " actualSeconds, billedSeconds, isBillable, hourlyRate, amount, currencyCode, roundingRaw"

#define DAY_COLUMNS "dayID, dayStart, timeZoneIdentifier, revision"

Stored<LocalDay> readDay(Query& row, const UUID& id, std::string_view field)
{
    const auto start = row.take<Instant>();
    return LocalDay{start, TRY(storedTimeZone(id, field, row.take<std::string>()))};
}

Stored<ExportTotals> readTotals(Query& row, const UUID& id)
{
    const auto seconds = [&] { return storedDecimal(id, "exportSnapshot.totals", row.take<std::string>()); };
    ExportTotals totals;
    totals.actualSeconds = TRY(seconds());
    totals.billedSeconds = TRY(seconds());
    totals.billableBilledSeconds = TRY(seconds());
    totals.nonBillableBilledSeconds = TRY(seconds());
    totals.amount =
        TRY(storedDecimal(id, "exportSnapshot.totalsAmount", row.take<std::optional<std::string>>()));
    totals.currencyCode = row.take<std::optional<std::string>>();
    totals.unpricedLineCount = row.take<int>();
    return totals;
}

Stored<ExportLine> readLine(Query& row, const UUID& snapshot)
{
    ExportLine line;
    line.dayID = row.take<std::string>();
    line.dayStart = row.take<Instant>();
    line.timeZoneIdentifier = TRY(storedTimeZone(snapshot, "exportLine.timeZone", row.take<std::string>()));
    line.start = row.take<Instant>();
    line.end = row.take<Instant>();
    line.clientName = row.take<std::string>();
    line.projectName = row.take<std::string>();
    line.description = row.take<std::optional<std::string>>();
    line.actualSeconds = TRY(storedDecimal(snapshot, "exportLine.duration", row.take<std::string>()));
    line.billedSeconds = TRY(storedDecimal(snapshot, "exportLine.duration", row.take<std::string>()));
    line.isBillable = row.take<bool>();
    line.hourlyRate =
        TRY(storedDecimal(snapshot, "exportLine.hourlyRate", row.take<std::optional<std::string>>()));
    line.amount = TRY(storedDecimal(snapshot, "exportLine.amount", row.take<std::optional<std::string>>()));
    line.currencyCode = row.take<std::optional<std::string>>();
    line.rounding =
        TRY(storedCase<RoundingPolicy>(snapshot, "exportLine.rounding", row.take<std::string_view>()));
    return line;
}

Stored<std::vector<ExportLine>> readLines(StoreConnection& connection, const UUID& snapshot)
{
    auto rows = connection.query("SELECT " LINE_COLUMNS " FROM ExportLine"
                                 " WHERE snapshotID = ?1 ORDER BY position");
    rows.bind(snapshot);
    std::vector<ExportLine> lines;
    while (rows.next())
        lines.push_back(TRY(readLine(rows, snapshot)));
    return lines;
}

Stored<ExportDayRevision> readDayRevision(Query& row, const UUID& snapshot)
{
    ExportDayRevision day;
    day.dayID = row.take<std::string>();
    day.dayStart = row.take<Instant>();
    day.timeZoneIdentifier = TRY(storedTimeZone(snapshot, "exportDay.timeZone", row.take<std::string>()));
    day.revision = row.take<std::string>();
    return day;
}

Stored<std::vector<ExportDayRevision>> readDays(StoreConnection& connection, const UUID& snapshot)
{
    auto rows = connection.query("SELECT " DAY_COLUMNS
                                 " FROM ExportDayRevision WHERE snapshotID = ?1 ORDER BY position");
    rows.bind(snapshot);
    std::vector<ExportDayRevision> days;
    while (rows.next())
        days.push_back(TRY(readDayRevision(rows, snapshot)));
    return days;
}

/// Of a part that is selected with its snapshot and position in front.
template <typename Part, Stored<Part> (*read)(Query&, const UUID&)>
SnapshotPart<Part> readPart(StoreConnection& /*connection*/, Query& row)
{
    const auto snapshot = row.take<ExportSnapshotID>();
    const auto position = row.take<int>();
    return {snapshot, position, read(row, snapshot.uuid)};
}

/// Without lines and days.
Stored<ExportSnapshot> readHead(StoreConnection& /*connection*/, Query& row)
{
    ExportSnapshot snapshot;
    snapshot.id = row.take<ExportSnapshotID>();
    const auto& id = snapshot.id.uuid;
    snapshot.createdAt = row.take<Instant>();
    snapshot.format =
        TRY(storedCase<ExportFormat>(id, "exportSnapshot.format", row.take<std::string_view>()));
    snapshot.mode = TRY(storedCase<ExportMode>(id, "exportSnapshot.mode", row.take<std::string_view>()));
    for (const auto& [token, field] : exportFieldTokens)
        snapshot.fields.*field = row.take<bool>();
    snapshot.rangeStart = TRY(readDay(row, id, "exportSnapshot.rangeStart"));
    snapshot.rangeEnd = TRY(readDay(row, id, "exportSnapshot.rangeEnd"));
    snapshot.clientFilterID = row.take<std::optional<ClientID>>();
    snapshot.clientFilterName = row.take<std::optional<std::string>>();
    snapshot.projectFilterID = row.take<std::optional<ProjectID>>();
    snapshot.projectFilterName = row.take<std::optional<std::string>>();
    snapshot.totals = TRY(readTotals(row, id));
    return snapshot;
}

Stored<ExportSnapshot> readSnapshot(StoreConnection& connection, Query& row)
{
    auto snapshot = TRY(readHead(connection, row));
    snapshot.lines = TRY(readLines(connection, snapshot.id.uuid));
    snapshot.days = TRY(readDays(connection, snapshot.id.uuid));
    for (const auto& line : snapshot.lines)
        addIfPresent(snapshot.totals.knownAmount, line.amount);
    return snapshot;
}

void insertSnapshot(StoreConnection& connection, const ExportSnapshot& snapshot)
{
    const auto& fields = snapshot.fields;
    const auto& totals = snapshot.totals;
    connection
        .query(
            "INSERT INTO ExportSnapshot (id, createdAt, formatRaw, modeRaw, includesDate, includesClient,"
            " includesProject, includesDuration, includesTimeOfDay, includesDescription, "
            "includesBillableState,"
            " includesRateAndAmount, rangeStartDayID, rangeStartDate, rangeStartTimeZoneIdentifier,"
            " rangeEndDayID, rangeEndDate, rangeEndTimeZoneIdentifier, clientFilterID, clientFilterName,"
            " projectFilterID, projectFilterName, totalsActualSeconds, totalsBilledSeconds,"
            " totalsBillableSeconds, totalsNonBillableSeconds, totalsAmount, currencyCode,"
            " totalsUnpricedLineCount) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13, ?14,"
            " ?15, ?16, ?17, ?18, ?19, ?20, ?21, ?22, ?23, ?24, ?25, ?26, ?27, ?28, ?29)")
        .bind(snapshot.id, snapshot.createdAt, snapshot.format, snapshot.mode, fields.includesDate,
              fields.includesClient, fields.includesProject, fields.includesDuration,
              fields.includesTimeOfDay, fields.includesDescription, fields.includesBillableState,
              fields.includesRateAndAmount, dayID(snapshot.rangeStart), snapshot.rangeStart.start,
              snapshot.rangeStart.timeZoneIdentifier, dayID(snapshot.rangeEnd), snapshot.rangeEnd.start,
              snapshot.rangeEnd.timeZoneIdentifier, snapshot.clientFilterID, snapshot.clientFilterName,
              snapshot.projectFilterID, snapshot.projectFilterName, totals.actualSeconds,
              totals.billedSeconds, totals.billableBilledSeconds, totals.nonBillableBilledSeconds,
              totals.amount, totals.currencyCode, totals.unpricedLineCount)
        .run();
}

void insertLine(StoreConnection& connection, ExportSnapshotID snapshot, int position, const ExportLine& line)
{
    connection
        .query(
            "INSERT INTO ExportLine (snapshotID, position, dayID, dayStart, timeZoneIdentifier, start, "
            "\"end\","
            " clientName, projectName, itemDescription, actualSeconds, billedSeconds, isBillable, hourlyRate,"
            " amount, currencyCode, roundingRaw)"
            " VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13, ?14, ?15, ?16, ?17)")
        .bind(snapshot, position, line.dayID, line.dayStart, line.timeZoneIdentifier, line.start, line.end,
              line.clientName, line.projectName, line.description, line.actualSeconds, line.billedSeconds,
              line.isBillable, line.hourlyRate, line.amount, line.currencyCode, line.rounding)
        .run();
}

void insertDay(StoreConnection& connection, ExportSnapshotID snapshot, int position,
               const ExportDayRevision& day)
{
    connection
        .query("INSERT INTO ExportDayRevision (snapshotID, position, dayID, dayStart, timeZoneIdentifier, "
               "revision)"
               " VALUES (?1, ?2, ?3, ?4, ?5, ?6)")
        .bind(snapshot, position, day.dayID, day.dayStart, day.timeZoneIdentifier, day.revision)
        .run();
}

} // namespace

StoredRecords<ExportSnapshot> snapshotsNewestFirst(StoreConnection& connection)
{
    return {connection, SNAPSHOT_ROWS " ORDER BY createdAt DESC, rowid DESC", readSnapshot};
}

StoredRecords<ExportSnapshot> allSnapshotHeads(StoreConnection& connection)
{
    return {connection, SNAPSHOT_ROWS " ORDER BY createdAt DESC, rowid DESC", readHead};
}

StoredRecords<ExportLine, SnapshotPart<ExportLine>> allSnapshotLines(StoreConnection& connection)
{
    return {connection,
            "SELECT snapshotID, position, " LINE_COLUMNS " FROM ExportLine ORDER BY snapshotID, position",
            readPart<ExportLine, readLine>};
}

StoredRecords<ExportDayRevision, SnapshotPart<ExportDayRevision>> allSnapshotDays(StoreConnection& connection)
{
    return {connection,
            "SELECT snapshotID, position, " DAY_COLUMNS
            " FROM ExportDayRevision ORDER BY snapshotID, position",
            readPart<ExportDayRevision, readDayRevision>};
}

StoredRecords<ExportSnapshot> allSnapshots(StoreConnection& connection)
{
    return {connection, SNAPSHOT_ROWS " ORDER BY createdAt, rowid", readSnapshot};
}

Stored<std::optional<ExportSnapshot>> readSnapshot(StoreConnection& connection, ExportSnapshotID id)
{
    auto row = connection.query(SNAPSHOT_ROWS " WHERE id = ?1");
    if (!row.bind(id).next())
        return std::nullopt;
    return TRY(readSnapshot(connection, row));
}

std::optional<ReviewedDayRevision> readExportedRevision(StoreConnection& connection, const LocalDay& day)
{
    auto row = connection.query(
        "SELECT d.revision FROM ExportDayRevision d JOIN ExportSnapshot s ON s.id = d.snapshotID"
        " WHERE d.dayID = ?1 ORDER BY s.createdAt DESC, s.rowid DESC LIMIT 1");
    if (!row.bind(dayID(day)).next())
        return std::nullopt;
    return ReviewedDayRevision{row.take<std::string>()};
}

std::vector<ExportedDay> readExportedDays(StoreConnection& connection)
{
    // Oldest first, so that the latest export of a day is the one that remains.
    auto rows =
        connection.query("SELECT d.dayID, d.revision FROM ExportSnapshot s CROSS JOIN ExportDayRevision d"
                         " ON d.snapshotID = s.id ORDER BY s.createdAt, s.rowid");
    std::map<std::string, std::string> revisions;
    while (rows.next()) {
        auto day = rows.take<std::string>();
        revisions.insert_or_assign(std::move(day), rows.take<std::string>());
    }
    std::vector<ExportedDay> days;
    std::ranges::transform(revisions, std::back_inserter(days),
                           [](const auto& entry) { return ExportedDay{entry.first, entry.second}; });
    return days;
}

bool appendSnapshot(StoreConnection& connection, const ExportSnapshot& snapshot)
{
    if (connection.query("SELECT 1 FROM ExportSnapshot WHERE id = ?1").bind(snapshot.id).next())
        return false;
    insertSnapshot(connection, snapshot);
    for (int position = 0; const auto& line : snapshot.lines)
        insertLine(connection, snapshot.id, position++, line);
    for (int position = 0; const auto& day : snapshot.days)
        insertDay(connection, snapshot.id, position++, day);
    return true;
}

} // namespace stintbook
