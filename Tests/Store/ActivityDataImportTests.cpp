// What keeps a document out of a store, which then holds nothing.

#include <gmock/gmock.h>

#include "ActivityDataCopies.h"

namespace stintbook {
namespace {

using testing::StartsWith;

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

    const std::string document = documentOfEverything();
    std::shared_ptr<StoreDatabase> database = StoreDatabase::inMemory();
    const std::string nothing = exported(*database);
};

TEST_F(ActivityDataImport, RefusesWhatNoExportWouldHaveWritten)
{
    struct Change {
        std::string text;
        std::string replacement;
        std::string answer;
    };
    const auto id = [](const std::string& end) { return "00000000-0000-0000-0000-0000000000" + end; };
    for (const auto& [text, replacement, answer] : std::vector<Change>{
             {R"("isArchived": false)", R"("isArchived": 0)",
              "clients[0].isArchived is neither true nor false"},
             {R"("name": "Acme")", R"("name": 5)", "clients[0].name is no text"},
             {R"("name": "Acme")", R"("name": "Acme", "rate": 5)", "clients[0] has an unknown key \"rate\""},
             {",\n      \"name\": \"Acme\"", "", "clients[0] has no \"name\""},
             {"#A0B1C2", "red", "clients[0].colorHex is no colour"},
             {R"("priority": 0)", R"("priority": 5000000000)",
              "attributionRules[0].priority is no whole number of 32 bits"},
             {R"("titleContains": "Plan")", "", "attributionRules[0].match has no condition"},
             {R"("EUR")", R"("euro")", "billingSettings.currencyCode is no currency"},
             {"90.125", "-90.125", "clientBilling[0].hourlyRate is negative"},
             {"90.125", R"("90.125")", "clientBilling[0].hourlyRate is no number"},
             {"90.125", "1e200", "clientBilling[0].hourlyRate has more digits than an exact number can have"},
             {"nearest-6m", "nearest-7m", "clientBilling[0].rounding cannot be \"nearest-7m\""},
             {"2026-11-20@Europe/Berlin", "2026-11-21@Europe/Berlin",
              "dayApprovals[0].dayID is not the day that starts there"},
             {"\"Europe/Berlin\"", "\"Europe/Nowhere\"",
              "dayApprovals[0].timeZoneIdentifier names no known zone: \"Europe/Nowhere\""},
             {R"("knownAmount": 1)", R"("knownAmount": 2)",
              "exportSnapshots[0].totals has another \"knownAmount\" than its lines"},
             {R"("included")", R"("lost")", "reviewedItems[0].disposition cannot be \"lost\""},
             {R"("observed-reviewed")", R"("manual")",
              "reviewedItems[0] is inconsistent (manualItemHasSlices)"},
             {R"("kind": "gap")", R"("kind": "work")",
              "segments[2].gapReason belongs to gaps, and to each of them"},
             {R"("text": "Plan/1")", R"("text": null)", "segments[0].context.text is no text"},
             {R"("timeZoneSecondsFromGMT": 3600)", R"("timeZoneSecondsFromGMT": 360000)",
              "segments[0].timeZoneSecondsFromGMT is more than a day"},
             {"\"segments\": [", "\"segment\": [", "segment is unknown"},
             {"\"projects\": [", "\"clients\": [", "clients stands there twice"},
             {"  \"formatVersion\": 1,\n", "", "the document has no \"formatVersion\""},
             {"\"segments\": [", "\"segments\": [" + std::string(100'000, '['),
              "segments[0] is nested deeper than anything that is stored"},
             // The third segment as the first one, the exclusion rule as an attribution rule.
             {id("03"), id("01"), "segments[2] has an identifier that another one has"},
             {id("A3"), id("A1"), "exclusionRules[0] has an identifier that another one has"},
             {id("C1"), id("C7"), "attributionRules[0] names a client that the document does not hold"},
             {id("D1"), id("D7"), "attributionRules[0] names a project that the document does not hold"},
         })
        EXPECT_EQ(answerTo(text, replacement), answer);
    for (const auto* instant : {"1e999", "1e15", "\"now\"", "-1e-99999999999"})
        EXPECT_THAT(answerTo("1795200000.5", instant), StartsWith("exportedAt ")) << instant;
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

} // namespace
} // namespace stintbook
