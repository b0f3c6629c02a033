#include <algorithm>

#include <gtest/gtest.h>

#include "Store/ActivityDataRecords.h"

namespace stintbook {

namespace {

std::string uuidText(int number)
{
    return "\"00000000-0000-0000-0000-0000000000" + std::to_string(number) + "\"";
}

template <typename... What> std::string json(const What&... what)
{
    std::string text;
    JsonWriter writer(text);
    write(writer, what...);
    return text;
}

const LocalDay day{{1'795'302'000}, "Europe/Berlin"};
const SegmentID segmentID{{{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x10}}};
const ClientID clientID{{{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x20}}};
const ProjectID projectID{{{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x30}}};

TEST(ActivityDataRecords, WritesASegmentWithEverythingKnownAboutIt)
{
    const ActivitySegment segment{
        .id = segmentID,
        .start = {1'795'302'000.125},
        .end = {1'795'302'060},
        .application = ApplicationIdentity{"org.mozilla.firefox", "Firefox"},
        .context = FocusedContext::windowTitle("https://example.org/a"),
        .browserDomain = BrowserDomain::fromText("example.org"),
        .evidence = ContextEvidence::applicationAndWindow,
        .timeZone = {"Europe/Berlin", 3600},
    };
    EXPECT_EQ(json(segment),
              R"({"application":{"bundleIdentifier":"org.mozilla.firefox","displayName":"Firefox"},)"
              R"("browserDomain":"example.org",)"
              R"("context":{"kind":"windowTitle","text":"https://example.org/a"},)"
              R"("end":1795302060,"evidence":"applicationAndWindow","id":)"
                  + uuidText(10)
                  + R"(,"kind":"work","origin":"observed","start":1795302000.125,)"
                    R"("timeZoneIdentifier":"Europe/Berlin","timeZoneSecondsFromGMT":3600})");
}

TEST(ActivityDataRecords, LeavesOutWhatAGapHasNot)
{
    const ActivitySegment gap{
        .id = segmentID,
        .start = {1},
        .end = {2},
        .kind = ActivityKind::gap,
        .timeZone = {"UTC", 0},
        .gapReason = GapReason::systemSleep,
    };
    EXPECT_EQ(json(gap),
              R"({"context":{"kind":"none"},"end":2,"evidence":"none","gapReason":"systemSleep","id":)"
                  + uuidText(10)
                  + R"(,"kind":"gap","origin":"observed","start":1,)"
                    R"("timeZoneIdentifier":"UTC","timeZoneSecondsFromGMT":0})");
}

TEST(ActivityDataRecords, WritesReviewedWork)
{
    const AttributionAssignment assignment{clientID, projectID, false};
    const auto assigned =
        R"({"clientID":)" + uuidText(20) + R"(,"isBillable":false,"projectID":)" + uuidText(30) + "}";
    ReviewedWorkItem item{
        .id = {segmentID.uuid},
        .day = day,
        .start = {1'795'334'400},
        .end = {1'795'338'000},
        .assignment = assignment,
        .description = "Layout",
        .slices = {{segmentID, {1'795'334'400}, {1'795'338'000}}},
    };
    EXPECT_EQ(json(item),
              R"({"assignment":)" + assigned
                  + R"(,"dayID":"2026-11-22@Europe/Berlin","dayStart":1795302000,"description":"Layout",)"
                    R"("disposition":"included","end":1795338000,"id":)"
                  + uuidText(10) + R"(,"origin":"observed-reviewed","slices":[{"end":1795338000,"segmentID":)"
                  + uuidText(10)
                  + R"(,"start":1795334400}],"start":1795334400,"timeZoneIdentifier":"Europe/Berlin"})");

    EXPECT_EQ(json(ReviewedDayApproval{day, {"ab"}, {1'795'400'000}}),
              R"({"approvedAt":1795400000,"dayID":"2026-11-22@Europe/Berlin","dayStart":1795302000,)"
              R"("revision":"ab","timeZoneIdentifier":"Europe/Berlin"})");
    EXPECT_EQ(json(segmentID, SegmentReview{assignment, false, true}),
              R"({"assignment":)" + assigned + R"(,"isConfirmed":true,"isIgnored":false,"segmentID":)"
                  + uuidText(10) + "}");
    EXPECT_EQ(json(segmentID, SegmentReview{.isIgnored = true}),
              R"({"isConfirmed":false,"isIgnored":true,"segmentID":)" + uuidText(10) + "}");
}

TEST(ActivityDataRecords, WritesClientsAndProjectsAndWhatAListAddsInItsPlace)
{
    const Client client{clientID, "Acme", false, ClientColor::fromText("#a0b1c2")};
    const Project project{projectID, clientID, "Website", true, true};
    EXPECT_EQ(json(client),
              R"({"colorHex":"#A0B1C2","id":)" + uuidText(20) + R"(,"isArchived":false,"name":"Acme"})");
    EXPECT_EQ(json(project),
              R"({"clientID":)" + uuidText(20) + R"(,"defaultBillable":true,"id":)" + uuidText(30)
                  + R"(,"isArchived":true,"name":"Website"})");

    const DirectoryListing listing{{1, 2, 3, 4}, Decimal::parse("87.50"), RoundingPolicy::exact};
    const std::string references = R"({"corrections":1,"exports":4,"reviewedItems":2,"rules":3})";
    EXPECT_EQ(json(client, listing),
              R"({"colorHex":"#A0B1C2","hourlyRate":87.5,"id":)" + uuidText(20)
                  + R"(,"isArchived":false,"name":"Acme","references":)" + references
                  + R"(,"rounding":"exact"})");
    EXPECT_EQ(json(project, DirectoryListing{}),
              R"({"clientID":)" + uuidText(20) + R"(,"defaultBillable":true,"id":)" + uuidText(30)
                  + R"(,"isArchived":true,"name":"Website","references":)"
                    R"({"corrections":0,"exports":0,"reviewedItems":0,"rules":0}})");
}

TEST(ActivityDataRecords, WritesRulesWithTheConditionsTheyHave)
{
    const RuleMatch match{"org.gimp.GIMP", BrowserDomain::fromText("Example.org"), "Überblick"};
    EXPECT_EQ(json(AttributionRule{{segmentID.uuid}, true, 3, match, clientID, projectID, false}, true),
              R"({"billableOverride":false,"clientID":)" + uuidText(20) + R"(,"id":)" + uuidText(10)
                  + R"(,"isEnabled":true,"losesConflict":true,"match":)"
                    R"({"applicationBundleIdentifier":"org.gimp.GIMP","browserDomain":"example.org",)"
                    R"("titleContains":"Überblick"},"priority":3,"projectID":)"
                  + uuidText(30) + "}");
    EXPECT_EQ(json(ExclusionRule{{segmentID.uuid}, false, 0, {.titleContains = "x"}}),
              R"({"id":)" + uuidText(10)
                  + R"(,"isEnabled":false,"match":{"titleContains":"x"},"priority":0})");
}

TEST(ActivityDataRecords, WritesBillingWithAllDigitsAndNothingForWhatIsNotSet)
{
    EXPECT_EQ(json(BillingSettings{}), "{}");
    EXPECT_EQ(json(BillingSettings{BillingCurrency::fromText("EUR"), RoundingPolicy::nearestSixMinutes}),
              R"({"currencyCode":"EUR","defaultRounding":"nearest-6m"})");
    EXPECT_EQ(json(clientID, ClientBillingDefaults{Decimal::parse("12345678901234567890.125"), {}}),
              R"({"clientID":)" + uuidText(20) + R"(,"hourlyRate":12345678901234567890.125})");
    EXPECT_EQ(json(projectID, ProjectBillingOverrides{{}, RoundingPolicy::exact}),
              R"({"projectID":)" + uuidText(30) + R"(,"rounding":"exact"})");
}

/// The keys of every object of a value, as they stand.
void expectKeysInOrder(const rapidjson::Value& value)
{
    if (value.IsArray()) {
        for (const auto& element : value.GetArray())
            expectKeysInOrder(element);
    }
    if (!value.IsObject())
        return;
    std::vector<std::string> keys;
    for (const auto& member : value.GetObject()) {
        keys.emplace_back(member.name.GetString());
        expectKeysInOrder(member.value);
    }
    EXPECT_TRUE(std::ranges::is_sorted(keys)) << testing::PrintToString(keys);
}

TEST(ActivityDataRecords, WritesASnapshotWhole)
{
    ExportLine line{
        .dayID = dayID(day),
        .dayStart = day.start,
        .timeZoneIdentifier = day.timeZoneIdentifier,
        .start = {1'795'334'400.5},
        .end = {1'795'334'401},
        .clientName = "Acme",
        .projectName = "Website",
        .actualSeconds = 1,
        .billedSeconds = 360,
        .hourlyRate = Decimal::parse("87.5"),
        .amount = Decimal::parse("8.75"),
        .currencyCode = "EUR",
        .rounding = RoundingPolicy::upToNextSixMinutes,
    };
    EXPECT_EQ(json(line),
              R"({"actualSeconds":1,"amount":8.75,"billedSeconds":360,"clientName":"Acme",)"
              R"("currencyCode":"EUR","dayID":"2026-11-22@Europe/Berlin","dayStart":1795302000,)"
              R"("end":1795334401,"hourlyRate":87.5,"isBillable":true,"projectName":"Website",)"
              R"("rounding":"up-to-next-6m","start":1795334400.5,"timeZoneIdentifier":"Europe/Berlin"})");

    const auto currency = BillingCurrency::fromText("EUR");
    const ExportSnapshot snapshot{
        .id = {segmentID.uuid},
        .createdAt = {1'795'400'000.5},
        .fields = ExportFieldSet::standard(ExportMode::summarized),
        .rangeStart = day,
        .rangeEnd = day,
        .clientFilterID = clientID,
        .clientFilterName = "Acme",
        .projectFilterID = projectID,
        .projectFilterName = "Website",
        .lines = {line},
        .days = {{dayID(day), day.start, day.timeZoneIdentifier, "ab"}},
        .totals = totals({line}, currency),
    };
    EXPECT_EQ(
        json(snapshot),
        R"({"clientFilterID":)" + uuidText(20) + R"(,"clientFilterName":"Acme","createdAt":1795400000.5,)"
            + R"("days":[{"dayID":"2026-11-22@Europe/Berlin","dayStart":1795302000,"revision":"ab",)"
              R"("timeZoneIdentifier":"Europe/Berlin"}],"fields":{"billableState":true,"client":true,)"
              R"("date":false,"description":false,"duration":true,"project":true,"rateAndAmount":true,)"
              R"("timeOfDay":false},"format":"summarized-csv","id":)"
            + uuidText(10) + R"(,"lines":[)" + json(line) + R"(],"mode":"summarized","projectFilterID":)"
            + uuidText(30)
            + R"(,"projectFilterName":"Website","rangeEnd":1795302000,)"
              R"("rangeEndDayID":"2026-11-22@Europe/Berlin","rangeEndTimeZoneIdentifier":"Europe/Berlin",)"
              R"("rangeStart":1795302000,"rangeStartDayID":"2026-11-22@Europe/Berlin",)"
              R"("rangeStartTimeZoneIdentifier":"Europe/Berlin","totals":{"actualSeconds":1,"amount":8.75,)"
              R"("billableBilledSeconds":360,"billedSeconds":360,"currencyCode":"EUR","knownAmount":8.75,)"
              R"("nonBillableBilledSeconds":0,"unpricedLineCount":0}})");
    expectKeysInOrder(parseJson(json(snapshot)).value());
    expectKeysInOrder(parseJson(json(summaryRows({line}).at(0))).value());
}

} // namespace

} // namespace stintbook
