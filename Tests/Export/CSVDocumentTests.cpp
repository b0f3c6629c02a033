#include <gmock/gmock.h>

#include "Export/CSVDocument.h"
#include "ExportFixture.h"

namespace stintbook {

namespace {

using testing::HasSubstr;
using testing::StartsWith;

struct CSVDocumentTest : testing::Test, ExportFixture {
    ExportDocumentModel sample() const
    {
        auto layout = item(website, monday, 9, 5400);
        layout.description = "Layout, \"final\"";
        auto unbilled = item(support, monday, 11.5, 1);
        unbilled.assignment.isBillable = false;
        return documentWith({layout, item(website, monday, 14, 420), unbilled});
    }
    ExportDocumentModel summarized(
        ExportFieldSet fields = ExportFieldSet::standard(ExportMode::summarized)) const
    {
        auto document = sample();
        document.request.mode = ExportMode::summarized;
        document.request.fields = fields;
        return document;
    }
};

TEST_F(CSVDocumentTest, WritesARowALine)
{
    EXPECT_EQ(csvText(sample()).value(),
              "date,start,end,client,project,description,actual_seconds,billed_seconds,actual_hours,"
              "billed_hours,billable,rate,currency,amount,rounding\r\n"
              "2026-11-16,2026-11-16T09:00:00+01:00,2026-11-16T10:30:00+01:00,Acme,Website,"
              "\"Layout, \"\"final\"\"\",5400,5400,1.5,1.5,yes,100,EUR,150,exact\r\n"
              "2026-11-16,2026-11-16T11:30:00+01:00,2026-11-16T11:30:01+01:00,Bolt & Söhne,Support,,"
              "1,1,0.0003,0.0003,no,,EUR,,exact\r\n"
              "2026-11-16,2026-11-16T14:00:00+01:00,2026-11-16T14:07:00+01:00,Acme,Website,,"
              "420,420,0.1167,0.1167,yes,100,EUR,11.666666666666666666666666666666666667,exact\r\n");
}

TEST_F(CSVDocumentTest, WritesARowAGroupWithItsLineCountAtTheSeventhPlace)
{
    auto fields = ExportFieldSet::standard(ExportMode::summarized);
    EXPECT_EQ(csvText(summarized(fields)).value(),
              "date,client,project,actual_seconds,billed_seconds,actual_hours,lines,billed_hours,billable,"
              "rate,currency,amount,rounding\r\n"
              "2026-11-16,Acme,Website,5820,5820,1.6167,2,1.6167,yes,100,EUR,"
              "161.66666666666666666666666666666666667,exact\r\n"
              "2026-11-16,Bolt & Söhne,Support,1,1,0.0003,1,0.0003,no,,EUR,,exact\r\n");

    fields.includesDescription = true;
    EXPECT_THAT(
        csvText(summarized(fields)).value(),
        StartsWith("date,client,project,description,actual_seconds,billed_seconds,lines,actual_hours,"));
    fields.includesTimeOfDay = true;
    EXPECT_THAT(csvText(summarized(fields)).value(),
                StartsWith("date,start,end,client,project,description,lines,actual_seconds,"));
    EXPECT_THAT(
        csvText(summarized({})).value(),
        StartsWith("date,client,project,actual_seconds,billed_seconds,actual_hours,lines,billed_hours,"
                   "rounding\r\n"));
}

TEST_F(CSVDocumentTest, ShowsNoAmountWithoutACurrency)
{
    billing.settings.currency = std::nullopt;
    EXPECT_TRUE(
        csvText(documentWith({item(website, monday, 9, 3600)})).value().ends_with(",yes,100,,,exact\r\n"));
}

TEST_F(CSVDocumentTest, WritesTimesInTheLinesOwnZone)
{
    auto document = documentWith({item(website, monday, 9, 60)});
    const auto expectStart = [&](const char* zone, double at, const std::string& text) {
        document.lines[0].timeZoneIdentifier = zone;
        document.lines[0].start = {at};
        EXPECT_THAT(csvText(document).value(), HasSubstr("," + text + ","));
    };
    expectStart("Asia/Kolkata", 1'800'000'000, "2027-01-15T13:30:00+05:30");
    expectStart("America/St_Johns", 1'800'000'000.75, "2027-01-15T04:30:00-03:30");
    expectStart("Europe/London", 1'800'000'000, "2027-01-15T08:00:00Z");
    expectStart("Europe/Paris", -2'000'000'000, "1906-08-16T20:36:01+00:09:21");
    expectStart("Nowhere/Atlantis", 1'800'000'000, "2027-01-15T08:00:00Z");
}

TEST_F(CSVDocumentTest, RefusesTextThatIsNoUTF8)
{
    auto document = sample();
    document.lines[0].clientName = "Acme \xff";
    const auto text = csvText(document);
    ASSERT_FALSE(text);
    EXPECT_EQ(message(text.error()), "The export text could not be encoded.");
}

TEST(CSVCell, PutsAnApostropheBeforeWhatASpreadsheetWouldEvaluate)
{
    EXPECT_EQ(csvCell("=SUM(A1)"), "'=SUM(A1)");
    EXPECT_EQ(csvCell("\rx"), "\"'\rx\"");
    EXPECT_EQ(csvCell("=A1,\"b\""), "\"'=A1,\"\"b\"\"\"");
    EXPECT_EQ(csvCell("a=b"), "a=b");
}

TEST(CSVCell, TakesCRLFForOneCharacterThatNeedsNoQuotes)
{
    EXPECT_EQ(csvCell("two\r\nlines"), "two\r\nlines");
    EXPECT_EQ(csvCell("two\r\nlines\n"), "\"two\r\nlines\n\"");
}

} // namespace

} // namespace stintbook
