#include <algorithm>

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "Store/StoreCheck.h"
#include "StoreSamples.h"

namespace stintbook {
namespace {

using testing::Contains;
using testing::Each;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using testing::UnorderedElementsAreArray;

const std::string first = "10000000-0000-0000-0000-000000000001";
const std::string second = "10000000-0000-0000-0000-000000000002";
const std::string client = "20000000-0000-0000-0000-000000000001";
const std::string project = "30000000-0000-0000-0000-000000000001";
const std::string rule = "40000000-0000-0000-0000-000000000001";
const std::string exclusion = "40000000-0000-0000-0000-000000000002";
const std::string item = "50000000-0000-0000-0000-000000000001";
const std::string snapshot = "60000000-0000-0000-0000-000000000001";
const std::string day = "2026-11-20@Europe/Berlin";

/// A sound store with a record of every kind, about 20 November 2026 in Berlin.
struct StoreOfEverything : SampleStore {
    StoreOfEverything() { std::filesystem::copy_file(fixture(9), file); }

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

    /// The fields that stop reads, one after the other.
    std::string unreadableFields() const
    {
        const auto database = open(StoreRole::reader);
        const PersistentActivitySegmentRepository recorded(database);
        const PersistentReviewStore reviewed(database);
        const auto segment = UUID::parse(first).value();
        return field(recorded.segments(allTime)) + field(reviewed.items(allTime))
            + field(reviewed.approval(sampleDay)) + field(reviewed.reviews(std::vector<SegmentID>{{segment}}))
            + field(reviewed.clients()) + field(reviewed.billing()) + field(reviewed.snapshots())
            + field(reviewed.attributionRules()) + field(reviewed.exclusionRules());
    }

private:
    template <typename T> static std::string field(const Stored<T>& read)
    {
        if (read || !std::holds_alternative<UnreadableRecord>(read.error()))
            return "";
        return std::get<UnreadableRecord>(read.error()).field;
    }
};

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

TEST(StoreCheck, FindsNothingInASoundStoreAndChangesNothing)
{
    const StoreOfEverything store;
    const auto before = contentsOf(store.file);
    EXPECT_THAT(store.findings(), IsEmpty());
    EXPECT_EQ(store.unreadableFields(), "");
    EXPECT_EQ(contentsOf(store.file), before);
}

TEST(StoreCheck, NeitherCreatesNorMigrates)
{
    const SampleStore missing;
    EXPECT_EQ(missing.refusal(StoreRole::reader), "There is no store " + missing.file.string() + ".");
    EXPECT_THAT(filesIn(missing.directory.path()), IsEmpty());
    std::filesystem::copy_file(fixture(8), missing.file);
    EXPECT_THAT(missing.refusal(StoreRole::reader), testing::HasSubstr("by an earlier version"));
    EXPECT_EQ(filesIn(missing.directory.path()).size(), 1U);
}

TEST(UnreadableRecords, StopTheReadWhichNamesTheFieldAndAreNamedByTheCheck)
{
    struct Unreadable {
        std::string change;
        std::string identifier;
        std::string field;
    };
    for (const auto& [change, identifier, field] : std::vector<Unreadable>{
             {"ActivitySegment SET kindRaw = 'Work'", first, "segment.kind"},
             {"ActivitySegment SET gapReasonRaw = 'lunch'", first, "segment.gapReason"},
             {"ActivitySegment SET gapReasonRaw = 'systemSleep'", first, "segment.gapReason"},
             {"ActivitySegment SET contextKindRaw = 'tab'", first, "segment.context"},
             {"ActivitySegment SET contextTitle = NULL", first, "segment.context"},
             {"ActivitySegment SET bundleIdentifier = NULL", first, "segment.application"},
             {"ActivitySegment SET evidenceRaw = ''", first, "segment.evidence"},
             {"ActivitySegment SET originRaw = 'x'", first, "segment.origin"},
             {"ActivitySegment SET utcOffsetSeconds = 100000", first, "segment.timeZone"},
             {"SegmentBrowserDomain SET host = 'a b'", first, "segment.browserDomain"},
             {"ReviewedWorkItem SET originRaw = 'x'", item, "reviewedItem.origin"},
             {"ReviewedWorkItem SET dayTimeZoneIdentifier = 'Mars/Base'", item, "reviewedItem.dayTimeZone"},
             {"ReviewedDisposition SET dispositionRaw = 'x'", item, "reviewedDisposition"},
             {"DayReviewApproval SET dayID = 'x'", "x", "dayApproval.dayID"},
             {"SegmentReview SET assignedProjectID = NULL", first, "review.assignment"},
             {"ClientAppearance SET colorHex = 'blue'", client, "client.color"},
             {"BillingSettings SET currencyCode = 'EURO'", "billing-settings", "billingSettings.currency"},
             {"BillingRounding SET roundingRaw = 'x'", "billing-rounding", "billingSettings.rounding"},
             {"ClientBilling SET hourlyRate = '-1'", client, "clientBilling.hourlyRate"},
             {"ClientBilling SET hourlyRate = '1,5'", client, "clientBilling.hourlyRate"},
             {"ClientBilling SET roundingRaw = 'nearest'", client, "clientBilling.rounding"},
             {"ProjectBilling SET hourlyRate = 'x'", project, "projectBilling.hourlyRate"},
             {"ProjectBilling SET roundingRaw = 'x'", project, "projectBilling.rounding"},
             {"ExportSnapshot SET formatRaw = 'csv'", snapshot, "exportSnapshot.format"},
             {"ExportSnapshot SET modeRaw = 'x'", snapshot, "exportSnapshot.mode"},
             {"ExportSnapshot SET rangeEndTimeZoneIdentifier = 'x'", snapshot, "exportSnapshot.rangeEnd"},
             {"ExportSnapshot SET totalsBillableSeconds = '-3'", snapshot, "exportSnapshot.totals"},
             {"ExportSnapshot SET totalsAmount = 'x'", snapshot, "exportSnapshot.totalsAmount"},
             {"ExportLine SET billedSeconds = 'x'", snapshot + "/0", "exportLine.duration"},
             {"ExportLine SET hourlyRate = 'x'", snapshot + "/0", "exportLine.hourlyRate"},
             {"ExportLine SET amount = 'x'", snapshot + "/0", "exportLine.amount"},
             {"ExportLine SET roundingRaw = 'x'", snapshot + "/0", "exportLine.rounding"},
             {"ExportDayRevision SET timeZoneIdentifier = 'x'", snapshot + "/0", "exportDay.timeZone"},
             {"RuleBrowserDomain SET host = 'a..b'", rule, "rule.browserDomain"},
             {"ExclusionRule SET applicationBundleIdentifier = NULL", exclusion, "exclusionRule.match"},
         }) {
        const StoreOfEverything store;
        store.damage("UPDATE " + change);
        EXPECT_EQ(store.unreadableFields(), field) << change;
        const auto table = change.substr(0, change.find(' '));
        EXPECT_THAT(store.findings(),
                    Contains(fmt::format("{} {} could not be read (field: {}).", table, identifier, field)));
    }
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
        {"DELETE FROM ReviewedSourceSlice", {inconsistent("observedItemHasNoSlices")}},
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
