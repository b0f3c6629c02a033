#include <gtest/gtest.h>

#include "Export/DurationText.h"
#include "Export/ExportRemarks.h"
#include "Export/SummaryText.h"
#include "ExportFixture.h"

namespace stintbook {

namespace {

struct SummaryTextTest : testing::Test, ExportFixture {
    std::string text(const std::vector<ReviewedWorkItem>& items) const
    {
        return summaryText(documentWith(items), "en_US").value();
    }
};

TEST_F(SummaryTextTest, GivesALineAnAccountThenTheTotalsAndTheRounding)
{
    billing.settings.defaultRounding = RoundingPolicy::nearestSixMinutes;
    auto unbilled = item(support, monday, 12, 400);
    unbilled.assignment.isBillable = false;
    EXPECT_EQ(text({item(website, monday, 9, 5400), item(website, monday, 11, 1830), unbilled}),
              "Timesheet · 2026-11-16 – 2026-11-17\n"
              "Acme / Website — 2 h · €200.00\n"
              "Bolt & Söhne / Support — 6 min\n"
              "Total: 2 h 6 min\n"
              "Reviewed total: 2 h 7 min 10 s\n"
              "Amount: €200.00\n"
              "Billed to the nearest 6 minutes");
}

TEST_F(SummaryTextTest, SaysWhyAnAmountIsMissing)
{
    EXPECT_EQ(text({item(website, monday, 9, 3600), item(support, monday, 12, 60)}),
              "Timesheet · 2026-11-16 – 2026-11-17\n"
              "Acme / Website — 1 h · €100.00\n"
              "Bolt & Söhne / Support — 1 min · — (rate not set)\n"
              "Total: 1 h 1 min\n"
              "Reviewed total: 1 h 1 min\n"
              "Amount: — (rate not set)\n"
              "Known subtotal: €100.00\n"
              "1 billable entry has no rate, so the amount is unavailable.\n"
              "Billed to the exact");

    billing.settings.currency = std::nullopt;
    EXPECT_EQ(text({item(website, monday, 9, 3600)}),
              "Timesheet · 2026-11-16 – 2026-11-17\n"
              "Acme / Website — 1 h · — (currency not set)\n"
              "Total: 1 h\n"
              "Reviewed total: 1 h\n"
              "Amount: — (currency not set)\n"
              "No billing currency is set, so the amount is unavailable.\n"
              "Billed to the exact");
    EXPECT_EQ(unpricedNote(2), "2 billable entries have no rate, so the amount is unavailable.");
}

TEST_F(SummaryTextTest, NamesTheOneDayAndTheFiltersInItsHeading)
{
    auto narrow = request();
    narrow.rangeEnd = monday;
    narrow.clientFilterID = acme.id;
    narrow.projectFilterID = website.id;
    const auto made = buildDocument(narrow, {}, directory, billing);
    const auto lines = summaryText(made, "de_DE").value();
    EXPECT_EQ(lines.substr(0, lines.find('\n')), "Timesheet · 2026-11-16 · Acme · Website");
    EXPECT_TRUE(lines.ends_with("Total: 0 min\nReviewed total: 0 min\nAmount: 0,00\u00a0€"));
}

TEST(DurationText, NamesThePartsThatAreNotZero)
{
    EXPECT_EQ(durationText(45), "45 s");
    EXPECT_EQ(durationText(3605), "1 h 5 s");
    EXPECT_EQ(durationText(360'000), "100 h");
    EXPECT_EQ(durationText(decimal("59.5")), "1 min");
}

} // namespace

} // namespace stintbook
