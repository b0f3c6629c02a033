// What keeps a document out of a store, which then holds nothing.

#include <gmock/gmock.h>

#include "ActivityDataCopies.h"
#include "Support/FaultyFileSystem.h"

namespace stintbook {
namespace {

using testing::StartsWith;

/// A store with one of everything, as a document.
std::string sampleDocument()
{
    const auto database = StoreDatabase::inMemory();
    PersistentActivitySegmentRepository recorded(database);
    PersistentReviewStore store(database);
    auto gap = sampleSegment(1);
    gap.kind = ActivityKind::gap;
    gap.gapReason = GapReason::systemSleep;
    EXPECT_TRUE(recorded.save({{sampleSegment(0), gap}}));
    const auto client = numbered<ClientID>(1);
    const auto project = numbered<ProjectID>(1);
    EXPECT_TRUE(store.saveClient({.id = client, .name = "Acme", .color = ClientColor::fromText("A0B1C2")}));
    EXPECT_TRUE(store.saveProject({.id = project, .clientID = client, .name = "Website"}));
    EXPECT_TRUE(store.saveSettings({BillingCurrency::fromText("EUR"), RoundingPolicy::exact}));
    EXPECT_TRUE(store.saveClientBilling(client, {Decimal::parse("87.125"), {}}));
    EXPECT_TRUE(store.saveProjectBilling(project, {{}, RoundingPolicy::nearestSixMinutes}));
    EXPECT_TRUE(store.replaceAttributionRules({{.id = numbered<RuleID>(1),
                                                .match = {.titleContains = "notes"},
                                                .clientID = client,
                                                .projectID = project}}));
    EXPECT_TRUE(
        store.replaceExclusionRules({{.id = numbered<RuleID>(2), .match = {.titleContains = "private"}}}));
    EXPECT_TRUE(
        store.apply({.upserts = {sampleItem(0)},
                     .reviewUpserts = {{numbered<SegmentID>(9), {.isIgnored = true}}},
                     .approval = ReviewedDayApproval{sampleDay, {std::string(64, 'a')}, {1795200000}}}));
    ExportSnapshot snapshot{.id = numbered<ExportSnapshotID>(1),
                            .createdAt = {1795200000},
                            .rangeStart = sampleDay,
                            .rangeEnd = sampleDay};
    snapshot.lines.resize(1);
    snapshot.lines[0].timeZoneIdentifier = "Europe/Berlin";
    snapshot.lines[0].amount = Decimal::parse("7.5");
    snapshot.days = {{dayID(sampleDay), sampleDay.start, "Europe/Berlin", "ab"}};
    snapshot.totals = totals(snapshot.lines, BillingCurrency::fromText("EUR"));
    EXPECT_TRUE(store.append(snapshot));
    return exported(*database);
}

class ActivityDataImport : public testing::Test {
protected:
    /// The answer to the document with this text of it replaced, without the line; nothing is stored then.
    std::string answerTo(const std::string& text, const std::string& replacement)
    {
        auto changed = document;
        const auto at = changed.find(text);
        EXPECT_NE(at, std::string::npos) << text;
        changed.replace(at, text.size(), replacement);
        const auto answer = imported(*database, changed);
        EXPECT_EQ(exported(*database), nothing) << answer;
        const auto colon = answer.find(": ");
        EXPECT_TRUE(answer.empty() || answer.ends_with(". Nothing was imported.")) << answer;
        return answer.substr(colon + 2, answer.rfind(". Nothing") - colon - 2);
    }

    const std::string document = sampleDocument();
    std::shared_ptr<StoreDatabase> database = StoreDatabase::inMemory();
    const std::string nothing = exported(*database);
};

TEST_F(ActivityDataImport, RefusesWhatNoExportWouldHaveWritten)
{
    EXPECT_EQ(answerTo(R"("isArchived": false)", R"("isArchived": 0)"),
              "clients[0].isArchived is neither true nor false");
    EXPECT_EQ(answerTo(R"("name": "Acme")", R"("name": 5)"), "clients[0].name is no text");
    EXPECT_EQ(answerTo(R"("name": "Acme")", R"("name": "Acme", "rate": 5)"),
              "clients[0] has an unknown key \"rate\"");
    EXPECT_EQ(answerTo(R"(,
      "name": "Acme")",
                       ""),
              "clients[0] has no \"name\"");
    EXPECT_EQ(answerTo("#A0B1C2", "red"), "clients[0].colorHex is no colour");
    EXPECT_EQ(answerTo(R"("priority": 0)", R"("priority": 5000000000)"),
              "attributionRules[0].priority is no whole number of 32 bits");
    EXPECT_EQ(answerTo(R"("titleContains": "notes")", ""), "attributionRules[0].match has no condition");
    EXPECT_EQ(answerTo(R"("EUR")", R"("euro")"), "billingSettings.currencyCode is no currency");
    EXPECT_EQ(answerTo("87.125", "-87.125"), "clientBilling[0].hourlyRate is negative");
    EXPECT_EQ(answerTo("87.125", R"("87.125")"), "clientBilling[0].hourlyRate is no number");
    EXPECT_EQ(answerTo("87.125", "1e200"),
              "clientBilling[0].hourlyRate has more digits than an exact number can have");
    EXPECT_EQ(answerTo("nearest-6m", "nearest-7m"), "projectBilling[0].rounding cannot be \"nearest-7m\"");
    EXPECT_EQ(answerTo("2026-11-20@Europe/Berlin", "2026-11-21@Europe/Berlin"),
              "dayApprovals[0].dayID is not the day that starts there");
    EXPECT_EQ(answerTo("\"Europe/Berlin\"", "\"Europe/Nowhere\""),
              "dayApprovals[0].timeZoneIdentifier names no known zone: \"Europe/Nowhere\"");
    EXPECT_EQ(answerTo(R"("knownAmount": 7.5)", R"("knownAmount": 8)"),
              "exportSnapshots[0].totals has another \"knownAmount\" than its lines");
    EXPECT_EQ(answerTo(R"("included")", R"("lost")"), "reviewedItems[0].disposition cannot be \"lost\"");
    EXPECT_EQ(answerTo(R"("observed-reviewed")", R"("manual")"),
              "reviewedItems[0] is inconsistent (manualItemHasSlices)");
    EXPECT_EQ(answerTo(R"("kind": "gap")", R"("kind": "work")"),
              "segments[1].gapReason belongs to gaps, and to each of them");
    EXPECT_EQ(answerTo(R"("text": "notes.txt")", R"("text": null)"), "segments[0].context.text is no text");
    EXPECT_EQ(answerTo(R"("timeZoneSecondsFromGMT": 3600)", R"("timeZoneSecondsFromGMT": 360000)"),
              "segments[0].timeZoneSecondsFromGMT is more than a day");
    EXPECT_EQ(answerTo("\"segments\": [", "\"segment\": ["), "segment is unknown");
    EXPECT_EQ(answerTo("\"projects\": [", "\"clients\": ["), "clients stands there twice");
    EXPECT_EQ(answerTo("  \"formatVersion\": 1,\n", ""), "the document has no \"formatVersion\"");
    EXPECT_EQ(answerTo("\"segments\": [", "\"segments\": [" + std::string(100'000, '[')),
              "segments[0] is nested deeper than anything that is stored");
    for (const auto* instant : {"1e999", "1e15", "\"now\"", "-1e-99999999999"})
        EXPECT_THAT(answerTo("1795200000.5", instant), StartsWith("exportedAt ")) << instant;
}

TEST_F(ActivityDataImport, RefusesASecondRecordOfOneIdentifierAndNamesThatNobodyHas)
{
    const auto id = [](int number) { return "00000000-0000-0000-0000-00000000000" + std::to_string(number); };
    // The second segment as the first one, the exclusion rule as the attribution rule.
    EXPECT_EQ(answerTo("\"id\": \"" + id(2) + "\",\n      \"kind\": \"gap\"",
                       "\"id\": \"" + id(1) + "\",\n      \"kind\": \"gap\""),
              "segments[1] has an identifier that another one has");
    EXPECT_EQ(answerTo("\"id\": \"" + id(2) + "\",\n      \"isEnabled\"",
                       "\"id\": \"" + id(1) + "\",\n      \"isEnabled\""),
              "exclusionRules[0] has an identifier that another one has");
    EXPECT_EQ(answerTo("\"projectID\": \"" + id(1), "\"projectID\": \"" + id(7)),
              "attributionRules[0] names a project that the document does not hold");
    EXPECT_EQ(answerTo("\"id\": \"" + id(1) + "\",\n      \"isArchived\"",
                       "\"id\": \"" + id(7) + "\",\n      \"isArchived\""),
              "attributionRules[0] names a client that the document does not hold");
}

TEST_F(ActivityDataImport, TakesKeysInAnyOrderAndTellsTheLine)
{
    // Rewritten by something that has another idea of order and white space.
    auto moved = document;
    const std::string version = "  \"formatVersion\": 1,\n";
    moved.erase(moved.find(version), version.size());
    moved.insert(2, "\"formatVersion\":1\n,");
    EXPECT_EQ(imported(*database, moved), "");
    EXPECT_EQ(exported(*database), document);

    const auto other = StoreDatabase::inMemory();
    EXPECT_EQ(imported(*other, "{\n\"clients\": [\n\n{}"),
              "Line 4: clients[0] has no \"id\". Nothing was imported.");
    EXPECT_EQ(imported(*other, ""), "Line 1: the document is no object. Nothing was imported.");
    EXPECT_EQ(imported(*other, document + "{}"),
              "Line " + std::to_string(std::ranges::count(document, '\n') + 1)
                  + ": the document is followed by something else. Nothing was imported.");
}

TEST_F(ActivityDataImport, RefusesADocumentOfAnotherVersionForThatFirst)
{
    const std::string sentence =
        "The document has the format version 2, which this version of Velloran cannot read. "
        "Nothing was imported.";
    auto later = document;
    later.replace(later.find("\"formatVersion\": 1"), 18, "\"formatVersion\": 2");
    EXPECT_EQ(imported(*database, later), sentence);
    later.replace(later.find("\"name\": \"Acme\""), 14, "\"title\": {\"en\": [\"Acme\"]}");
    EXPECT_EQ(imported(*database, later), sentence);
}

TEST_F(ActivityDataImport, StopsWhenItIsAskedTo)
{
    std::stop_source source;
    source.request_stop();
    std::istringstream stream(document);
    const auto cancelled = importActivityData(*database, stream, {.cancellation = source.get_token()});
    ASSERT_FALSE(cancelled);
    EXPECT_EQ(message(cancelled.error()), "The import was cancelled. Nothing was imported.");
    EXPECT_EQ(exported(*database), nothing);
}

TEST_F(ActivityDataImport, IsWholeOrNotAtAllOnAFailingDisk)
{
    using Fault = FaultyFileSystem::Fault;
    for (const auto fault : {Fault::diskFull, Fault::inputOutputOnce, Fault::tornWrite, Fault::powerLoss}) {
        FaultyFileSystem disk;
        bool hasFailed = true;
        for (int operation = 1; hasFailed; ++operation) {
            SCOPED_TRACE(operation);
            ASSERT_LT(operation, 500);
            const SampleStore store;
            std::string answer;
            {
                const auto failing = store.open(StoreRole::owner, disk.name());
                disk.failFrom(operation, fault);
                answer = imported(*failing, document);
                hasFailed = disk.hasFailed();
            }
            if (fault == Fault::powerLoss)
                disk.losePower(static_cast<unsigned>(operation));
            disk.recover();
            const auto again = store.open();
            EXPECT_TRUE(isSound(*again));
            const auto held = exported(*again);
            EXPECT_TRUE(held == document || (held == nothing && !answer.empty())) << answer;
            if (held == nothing) {
                EXPECT_EQ(imported(*again, document), "");
            }
        }
    }
}

} // namespace
} // namespace stintbook
