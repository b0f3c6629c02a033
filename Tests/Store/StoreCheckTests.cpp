#include <algorithm>

#include <gmock/gmock.h>

#include "Store/StoreCheck.h"
#include "StoreSamples.h"

namespace stintbook {
namespace {

using testing::Each;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using testing::UnorderedElementsAreArray;

/// A sound store with a record of every kind, about 20 November 2026 in Berlin.
struct StoreOfEverything : SampleStore {
    StoreOfEverything()
    {
        std::filesystem::copy_file(
            std::string(STINTBOOK_SOURCE_DIRECTORY) + "/Tests/Fixtures/Stores/v9.store", file);
    }

    /// Past every constraint.
    void damage(const std::string& sql) const
    {
        SQLite::Database database(file, SQLite::OPEN_READWRITE);
        database.exec("PRAGMA ignore_check_constraints = ON; PRAGMA writable_schema = ON; " + sql);
    }

    std::vector<std::string> findings() const
    {
        std::vector<std::string> sentences;
        const auto checked = checkStore(*open(StoreRole::reader), [&](const StoreFinding& finding) {
            sentences.push_back(message(finding));
        });
        EXPECT_TRUE(checked) << message(checked.error());
        return sentences;
    }
};

const std::string first = "10000000-0000-0000-0000-000000000001";
const std::string second = "10000000-0000-0000-0000-000000000002";
const std::string client = "20000000-0000-0000-0000-000000000001";
const std::string project = "30000000-0000-0000-0000-000000000001";
const std::string rule = "40000000-0000-0000-0000-000000000001";
const std::string exclusion = "40000000-0000-0000-0000-000000000002";
const std::string item = "50000000-0000-0000-0000-000000000001";
const std::string snapshot = "60000000-0000-0000-0000-000000000001";
const std::string day = "2026-11-20@Europe/Berlin";

struct Damage {
    std::string sql;
    std::vector<std::string> findings;
};

void expectExactly(const std::vector<Damage>& damages)
{
    for (const auto& [sql, findings] : damages) {
        const StoreOfEverything store;
        store.damage(sql);
        EXPECT_THAT(store.findings(), UnorderedElementsAreArray(findings)) << sql;
    }
}

std::string unreadable(const std::string& record, const std::string& field)
{
    return record + " could not be read (field: " + field + ").";
}

TEST(StoreCheck, FindsNothingInASoundStoreAndChangesNothing)
{
    const StoreOfEverything store;
    const auto before = contentsOf(store.file);
    EXPECT_THAT(store.findings(), IsEmpty());
    EXPECT_EQ(contentsOf(store.file), before);
}

TEST(StoreCheck, NeitherCreatesNorMigrates)
{
    const SampleStore missing;
    EXPECT_EQ(missing.refusal(StoreRole::reader), "There is no store " + missing.file.string() + ".");
    EXPECT_THAT(filesIn(missing.directory.path()), IsEmpty());
    std::filesystem::copy_file(std::string(STINTBOOK_SOURCE_DIRECTORY) + "/Tests/Fixtures/Stores/v8.store",
                               missing.file);
    EXPECT_THAT(missing.refusal(StoreRole::reader), testing::HasSubstr("by an earlier version"));
    EXPECT_EQ(filesIn(missing.directory.path()).size(), 1U);
}

TEST(StoreCheck, NamesEveryRecordThatCannotBeRead)
{
    expectExactly({
        {"UPDATE ActivitySegment SET kindRaw = 'x'",
         {unreadable("ActivitySegment " + first, "segment.kind"),
          unreadable("ActivitySegment " + second, "segment.kind")}},
        {"UPDATE SegmentBrowserDomain SET host = 'no host'",
         {unreadable("SegmentBrowserDomain " + first, "segment.browserDomain")}},
        {"UPDATE ClientAppearance SET colorHex = 'red'",
         {unreadable("ClientAppearance " + client, "client.color")}},
        {"UPDATE RuleBrowserDomain SET host = 'no host'",
         {unreadable("RuleBrowserDomain " + rule, "rule.browserDomain")}},
        {"UPDATE ExclusionRule SET applicationBundleIdentifier = NULL",
         {unreadable("ExclusionRule " + exclusion, "exclusionRule.match")}},
        {"UPDATE SegmentReview SET assignedProjectID = NULL",
         {unreadable("SegmentReview " + first, "review.assignment")}},
        {"UPDATE ReviewedDisposition SET dispositionRaw = 'x'",
         {unreadable("ReviewedDisposition " + item, "reviewedDisposition")}},
        {"UPDATE DayReviewApproval SET dayID = 'someday'",
         {unreadable("DayReviewApproval someday", "dayApproval.dayID")}},
        {"UPDATE BillingSettings SET currencyCode = 'XXQ'; UPDATE BillingRounding SET roundingRaw = 'x'",
         {unreadable("BillingSettings billing-settings", "billingSettings.currency"),
          unreadable("BillingRounding billing-rounding", "billingSettings.rounding")}},
        {"UPDATE ClientBilling SET hourlyRate = '-1'; UPDATE ProjectBilling SET roundingRaw = 'x'",
         {unreadable("ClientBilling " + client, "clientBilling.hourlyRate"),
          unreadable("ProjectBilling " + project, "projectBilling.rounding")}},
        {"UPDATE ExportSnapshot SET formatRaw = 'x'; UPDATE ExportLine SET billedSeconds = '';"
         "UPDATE ExportDayRevision SET timeZoneIdentifier = 'Nowhere'",
         {unreadable("ExportSnapshot " + snapshot, "exportSnapshot.format"),
          unreadable("ExportLine " + snapshot + "/0", "exportLine.duration"),
          unreadable("ExportDayRevision " + snapshot + "/0", "exportDay.timeZone")}},
    });
}

TEST(StoreCheck, NamesSegmentsThatOverlapCrossADayOrReverse)
{
    expectExactly({
        {"UPDATE ActivitySegment SET \"end\" = start - 1 WHERE id = x'10000000000000000000000000000001'",
         {"The database is damaged: CHECK constraint failed in ActivitySegment.",
          "ActivitySegment " + first + " does not end after its start."}},
        {"UPDATE ActivitySegment SET start = start - 1 WHERE id = x'10000000000000000000000000000002'",
         {"ActivitySegment " + second + " begins before " + first + " ends."}},
        {"UPDATE ActivitySegment SET \"end\" = 1795215600 WHERE id = x'10000000000000000000000000000002'",
         {}},
        {"UPDATE ActivitySegment SET \"end\" = 1795215601 WHERE id = x'10000000000000000000000000000002'",
         {"ActivitySegment " + second + " does not end with its day, " + day + "."}},
        // The one that ends last counts, not the one before.
        {"INSERT INTO ActivitySegment SELECT x'10000000000000000000000000000003', start + 10, start + 20, "
         "kindRaw,"
         " gapReasonRaw, bundleIdentifier, applicationName, contextKindRaw, contextTitle, evidenceRaw, "
         "originRaw,"
         " timeZoneIdentifier, utcOffsetSeconds FROM ActivitySegment WHERE gapReasonRaw IS NULL;"
         "UPDATE ActivitySegment SET start = start - 1 WHERE gapReasonRaw IS NOT NULL",
         {"ActivitySegment 10000000-0000-0000-0000-000000000003 begins before " + first + " ends.",
          "ActivitySegment " + second + " begins before " + first + " ends."}},
    });
}

TEST(StoreCheck, NamesItemsThatBreakTheirInvariants)
{
    const auto inconsistent = [](const std::string& invariant) {
        return "ReviewedWorkItem " + item + " is inconsistent (" + invariant + ").";
    };
    const auto unapproved = "DayReviewApproval " + day + " approves a day that has no reviewed work.";
    expectExactly({
        {"UPDATE ReviewedWorkItem SET \"end\" = start",
         {"The database is damaged: CHECK constraint failed in ReviewedWorkItem.",
          inconsistent("emptyInterval")}},
        {"UPDATE ReviewedWorkItem SET dayStart = dayStart - 86400",
         {inconsistent("crossesLocalDay"), unapproved}},
        {"UPDATE ReviewedWorkItem SET originRaw = 'manual'", {inconsistent("manualItemHasSlices")}},
        {"DELETE FROM ReviewedSourceSlice", {inconsistent("observedItemHasNoSlices")}},
        {"UPDATE ReviewedSourceSlice SET \"end\" = start",
         {"The database is damaged: CHECK constraint failed in ReviewedSourceSlice.",
          inconsistent("sliceNotPositive")}},
        {"UPDATE ReviewedSourceSlice SET start = start - 1", {inconsistent("sliceOutsideItem")}},
        {"UPDATE ReviewedSourceSlice SET start = start + 1", {inconsistent("slicesNotContiguous")}},
        {"DELETE FROM ReviewedSourceSlice; DELETE FROM ReviewedWorkItem", {unapproved}},
    });
}

TEST(StoreCheck, NamesPartsWithoutTheirWholeAndDaysThatAreUnknown)
{
    const auto unknown = [](const std::string& record, const std::string& named) {
        return record + " names a day that is unknown, " + named + ".";
    };
    expectExactly({
        {"DELETE FROM ReviewedWorkItem; DELETE FROM DayReviewApproval",
         {"ReviewedSourceSlice 1 belongs to a record of ReviewedWorkItem that is not there."}},
        {"DELETE FROM ExportSnapshot",
         {"ExportLine belongs to a record of ExportSnapshot that is not there.",
          "ExportDayRevision belongs to a record of ExportSnapshot that is not there."}},
        {"UPDATE ExportSnapshot SET rangeEndDayID = '2026-02-30@Europe/Berlin'",
         {unknown("ExportSnapshot " + snapshot, "2026-02-30@Europe/Berlin")}},
        {"UPDATE ExportDayRevision SET dayStart = dayStart + 60",
         {unknown("ExportDayRevision " + snapshot + "/0", day)}},
        {"UPDATE ExportLine SET dayID = '2026-11-21@Europe/Berlin'",
         {unknown("ExportLine " + snapshot + "/0", "2026-11-21@Europe/Berlin")}},
    });
}

TEST(StoreCheck, ReportsWhatTheDatabaseFindsInItself)
{
    const StoreOfEverything store;
    // Two indices change places.
    store.damage("CREATE TEMP TABLE Place AS SELECT name, rootpage FROM sqlite_schema"
                 " WHERE name IN ('ActivitySegmentByStart', 'ReviewedWorkItemByStart');"
                 "UPDATE sqlite_master SET rootpage = (SELECT rootpage FROM Place"
                 " WHERE Place.name <> sqlite_master.name) WHERE name IN (SELECT name FROM Place)");
    const auto findings = store.findings();
    EXPECT_THAT(findings, Not(IsEmpty()));
    EXPECT_THAT(findings, Each(StartsWith("The database is damaged: ")));
}

} // namespace
} // namespace stintbook
