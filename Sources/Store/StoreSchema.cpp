#include "Store/StoreSchema.h"

#include <array>

#include <fmt/format.h>

#include "Base/Digest.h"

namespace stintbook {

namespace {

// Identifiers are the sixteen bytes of a UUID, instants seconds since 1970 as REAL, exact decimals their text,
// booleans 0 or 1. Records refer to each other by identifier only, except the parts of items and snapshots.
constexpr std::array<std::string_view, currentSchemaVersion> steps = {
    R"(
CREATE TABLE ActivitySegment (
    id BLOB NOT NULL PRIMARY KEY CHECK (length(id) = 16),
    start REAL NOT NULL,
    "end" REAL NOT NULL CHECK ("end" > start AND "end" - start < 1e9),
    kindRaw TEXT NOT NULL,
    gapReasonRaw TEXT,
    bundleIdentifier TEXT,
    applicationName TEXT,
    contextKindRaw TEXT,
    contextTitle TEXT,
    evidenceRaw TEXT NOT NULL,
    originRaw TEXT NOT NULL,
    timeZoneIdentifier TEXT NOT NULL,
    utcOffsetSeconds INTEGER NOT NULL
) STRICT;
CREATE INDEX ActivitySegmentByStart ON ActivitySegment (start);
CREATE INDEX ActivitySegmentByApplication ON ActivitySegment (bundleIdentifier, "end");
CREATE INDEX LongActivitySegment ON ActivitySegment ("end" - start) WHERE "end" - start > 900;
)",
    R"(
CREATE TABLE Client (
    id BLOB NOT NULL PRIMARY KEY CHECK (length(id) = 16),
    name TEXT NOT NULL,
    isArchived INTEGER NOT NULL CHECK (isArchived IN (0, 1))
) STRICT;
CREATE TABLE Project (
    id BLOB NOT NULL PRIMARY KEY CHECK (length(id) = 16),
    clientID BLOB NOT NULL CHECK (length(clientID) = 16),
    name TEXT NOT NULL,
    defaultBillable INTEGER NOT NULL CHECK (defaultBillable IN (0, 1)),
    isArchived INTEGER NOT NULL CHECK (isArchived IN (0, 1))
) STRICT;
CREATE TABLE AttributionRule (
    id BLOB NOT NULL PRIMARY KEY CHECK (length(id) = 16),
    isEnabled INTEGER NOT NULL CHECK (isEnabled IN (0, 1)),
    priority INTEGER NOT NULL,
    applicationBundleIdentifier TEXT,
    titleContains TEXT,
    clientID BLOB NOT NULL CHECK (length(clientID) = 16),
    projectID BLOB NOT NULL CHECK (length(projectID) = 16),
    billableOverride INTEGER CHECK (billableOverride IN (0, 1))
) STRICT;
CREATE TABLE ExclusionRule (
    id BLOB NOT NULL PRIMARY KEY CHECK (length(id) = 16),
    isEnabled INTEGER NOT NULL CHECK (isEnabled IN (0, 1)),
    priority INTEGER NOT NULL,
    applicationBundleIdentifier TEXT,
    titleContains TEXT
) STRICT;
CREATE TABLE SegmentReview (
    segmentID BLOB NOT NULL PRIMARY KEY CHECK (length(segmentID) = 16),
    assignedClientID BLOB CHECK (length(assignedClientID) = 16),
    assignedProjectID BLOB CHECK (length(assignedProjectID) = 16),
    assignedBillable INTEGER CHECK (assignedBillable IN (0, 1)),
    isIgnored INTEGER NOT NULL CHECK (isIgnored IN (0, 1)),
    isConfirmed INTEGER NOT NULL CHECK (isConfirmed IN (0, 1))
) STRICT, WITHOUT ROWID;
)",
    R"(
CREATE TABLE ReviewedWorkItem (
    id BLOB NOT NULL PRIMARY KEY CHECK (length(id) = 16),
    dayStart REAL NOT NULL,
    dayTimeZoneIdentifier TEXT NOT NULL,
    start REAL NOT NULL,
    "end" REAL NOT NULL CHECK ("end" > start AND "end" - start < 1e9),
    originRaw TEXT NOT NULL,
    clientID BLOB NOT NULL CHECK (length(clientID) = 16),
    projectID BLOB NOT NULL CHECK (length(projectID) = 16),
    isBillable INTEGER NOT NULL CHECK (isBillable IN (0, 1)),
    itemDescription TEXT
) STRICT;
CREATE INDEX ReviewedWorkItemByDay ON ReviewedWorkItem (dayStart, dayTimeZoneIdentifier);
CREATE INDEX ReviewedWorkItemByStart ON ReviewedWorkItem (start);
CREATE INDEX ReviewedWorkItemByLength ON ReviewedWorkItem ("end" - start);
CREATE TABLE ReviewedSourceSlice (
    itemID BLOB NOT NULL REFERENCES ReviewedWorkItem (id) ON DELETE CASCADE,
    segmentID BLOB NOT NULL CHECK (length(segmentID) = 16),
    start REAL NOT NULL,
    "end" REAL NOT NULL CHECK ("end" > start)
) STRICT;
CREATE INDEX ReviewedSourceSliceByItem ON ReviewedSourceSlice (itemID, start);
CREATE TABLE DayReviewApproval (
    dayID TEXT NOT NULL PRIMARY KEY,
    dayStart REAL NOT NULL,
    dayTimeZoneIdentifier TEXT NOT NULL,
    revision TEXT NOT NULL,
    approvedAt REAL NOT NULL
) STRICT;
CREATE INDEX DayReviewApprovalByDay ON DayReviewApproval (dayStart, dayTimeZoneIdentifier);
)",
    R"(
CREATE TABLE ReviewedDisposition (
    itemID BLOB NOT NULL PRIMARY KEY CHECK (length(itemID) = 16),
    dispositionRaw TEXT NOT NULL
) STRICT, WITHOUT ROWID;
)",
    R"(
CREATE TABLE ClientBilling (
    clientID BLOB NOT NULL PRIMARY KEY CHECK (length(clientID) = 16),
    hourlyRate TEXT,
    roundingRaw TEXT
) STRICT, WITHOUT ROWID;
CREATE TABLE ProjectBilling (
    projectID BLOB NOT NULL PRIMARY KEY CHECK (length(projectID) = 16),
    hourlyRate TEXT,
    roundingRaw TEXT
) STRICT, WITHOUT ROWID;
CREATE TABLE BillingSettings (
    key TEXT NOT NULL PRIMARY KEY CHECK (key = 'billing-settings'),
    currencyCode TEXT
) STRICT, WITHOUT ROWID;
CREATE TABLE ExportSnapshot (
    id BLOB NOT NULL PRIMARY KEY CHECK (length(id) = 16),
    createdAt REAL NOT NULL,
    formatRaw TEXT NOT NULL,
    modeRaw TEXT NOT NULL,
    includesTimeOfDay INTEGER NOT NULL CHECK (includesTimeOfDay IN (0, 1)),
    includesDescription INTEGER NOT NULL CHECK (includesDescription IN (0, 1)),
    includesBillableState INTEGER NOT NULL CHECK (includesBillableState IN (0, 1)),
    includesRateAndAmount INTEGER NOT NULL CHECK (includesRateAndAmount IN (0, 1)),
    rangeStartDayID TEXT NOT NULL,
    rangeStartDate REAL NOT NULL,
    rangeStartTimeZoneIdentifier TEXT NOT NULL,
    rangeEndDayID TEXT NOT NULL,
    rangeEndDate REAL NOT NULL,
    rangeEndTimeZoneIdentifier TEXT NOT NULL,
    clientFilterID BLOB CHECK (length(clientFilterID) = 16),
    clientFilterName TEXT,
    projectFilterID BLOB CHECK (length(projectFilterID) = 16),
    projectFilterName TEXT,
    currencyCode TEXT,
    totalsActualSeconds TEXT NOT NULL,
    totalsBilledSeconds TEXT NOT NULL,
    totalsBillableSeconds TEXT NOT NULL,
    totalsNonBillableSeconds TEXT NOT NULL,
    totalsAmount TEXT,
    totalsUnpricedLineCount INTEGER NOT NULL
) STRICT;
CREATE INDEX ExportSnapshotByCreation ON ExportSnapshot (createdAt);
CREATE TABLE ExportLine (
    snapshotID BLOB NOT NULL REFERENCES ExportSnapshot (id) ON DELETE CASCADE,
    position INTEGER NOT NULL,
    dayID TEXT NOT NULL,
    dayStart REAL NOT NULL,
    timeZoneIdentifier TEXT NOT NULL,
    start REAL NOT NULL,
    "end" REAL NOT NULL,
    clientName TEXT NOT NULL,
    projectName TEXT NOT NULL,
    itemDescription TEXT,
    actualSeconds TEXT NOT NULL,
    billedSeconds TEXT NOT NULL,
    isBillable INTEGER NOT NULL CHECK (isBillable IN (0, 1)),
    hourlyRate TEXT,
    amount TEXT,
    currencyCode TEXT,
    roundingRaw TEXT NOT NULL,
    PRIMARY KEY (snapshotID, position)
) STRICT, WITHOUT ROWID;
CREATE TABLE ExportDayRevision (
    snapshotID BLOB NOT NULL REFERENCES ExportSnapshot (id) ON DELETE CASCADE,
    position INTEGER NOT NULL,
    dayID TEXT NOT NULL,
    dayStart REAL NOT NULL,
    timeZoneIdentifier TEXT NOT NULL,
    revision TEXT NOT NULL,
    PRIMARY KEY (snapshotID, position)
) STRICT, WITHOUT ROWID;
CREATE INDEX ExportDayRevisionByDay ON ExportDayRevision (dayID);
)",
    R"(
CREATE TABLE SegmentBrowserDomain (
    segmentID BLOB NOT NULL PRIMARY KEY CHECK (length(segmentID) = 16),
    host TEXT NOT NULL
) STRICT, WITHOUT ROWID;
CREATE TABLE RuleBrowserDomain (
    ruleID BLOB NOT NULL PRIMARY KEY CHECK (length(ruleID) = 16),
    ruleKindRaw TEXT NOT NULL,
    host TEXT NOT NULL
) STRICT, WITHOUT ROWID;
)",
    // Snapshots from before had these four columns.
    R"(
ALTER TABLE ExportSnapshot ADD COLUMN includesDate INTEGER NOT NULL DEFAULT 1 CHECK (includesDate IN (0, 1));
ALTER TABLE ExportSnapshot ADD COLUMN includesClient INTEGER NOT NULL DEFAULT 1 CHECK (includesClient IN (0, 1));
ALTER TABLE ExportSnapshot ADD COLUMN includesProject INTEGER NOT NULL DEFAULT 1 CHECK (includesProject IN (0, 1));
ALTER TABLE ExportSnapshot ADD COLUMN includesDuration INTEGER NOT NULL DEFAULT 1 CHECK (includesDuration IN (0, 1));
)",
    R"(
CREATE TABLE ClientAppearance (
    clientID BLOB NOT NULL PRIMARY KEY CHECK (length(clientID) = 16),
    colorHex TEXT NOT NULL
) STRICT, WITHOUT ROWID;
)",
    R"(
CREATE TABLE BillingRounding (
    key TEXT NOT NULL PRIMARY KEY CHECK (key = 'billing-rounding'),
    roundingRaw TEXT
) STRICT, WITHOUT ROWID;
)",
};

constexpr std::array<std::string_view, currentSchemaVersion> layoutDigests = {
    "1f87da17d1661137", "da588aa8c692f4f0", "610291b3d4297899", "a5410cf53cfe9487", "dfbb991f6ac321ca",
    "32d09f47396e643e", "e6137a3f919bb1d8", "e1fcf496bb87265d", "7b72113069da4b28",
};

} // namespace

std::string_view schemaStep(int version)
{
    return steps.at(static_cast<std::size_t>(version - 1));
}

void applySchemaSteps(StoreConnection& connection, int from, int to)
{
    for (int version = from + 1; version <= to; ++version)
        connection.execute(std::string(schemaStep(version)));
    connection.execute(fmt::format("PRAGMA user_version = {}", to));
}

std::vector<std::string> tableNames(StoreConnection& connection)
{
    auto rows = connection.query("SELECT name FROM sqlite_schema WHERE type = 'table'"
                                 " AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\' ORDER BY name");
    std::vector<std::string> names;
    while (rows.next())
        names.push_back(rows.take<std::string>());
    return names;
}

std::string layoutDigest(StoreConnection& connection)
{
    std::string layout;
    auto objects =
        connection.query("SELECT o.type, o.name, o.tbl_name, c.name, c.type, c.\"notnull\", c.pk, c.hidden"
                         " FROM sqlite_schema o LEFT JOIN pragma_table_xinfo(o.name) c"
                         " WHERE o.name NOT LIKE 'sqlite\\_%' ESCAPE '\\' ORDER BY o.name, c.cid");
    while (objects.next()) {
        for (int column = 0; column < 8; ++column)
            layout.append(objects.take<std::optional<std::string>>().value_or("-")).append(" ");
        layout.append("\n");
    }
    return hexadecimal(sha256(layout)).substr(0, layoutDigests.front().size());
}

std::string_view expectedLayoutDigest(int version)
{
    return layoutDigests.at(static_cast<std::size_t>(version - 1));
}

} // namespace stintbook
