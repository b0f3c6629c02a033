#include <gtest/gtest.h>

#include "Export/ExportFieldSet.h"

namespace stintbook {

namespace {

TEST(ExportFieldSet, HasStandardColumnsThatTheirModeLeavesAsTheyAre)
{
    const auto detailed = ExportFieldSet::standard(ExportMode::detailed);
    const auto summarized = ExportFieldSet::standard(ExportMode::summarized);
    EXPECT_EQ(detailed.tokens(),
              "date,client,project,duration,timeOfDay,description,billableState,rateAndAmount");
    EXPECT_EQ(summarized.tokens(), "client,project,duration,billableState,rateAndAmount");
    EXPECT_EQ(detailed.normalised(ExportMode::detailed), detailed);
    EXPECT_EQ(summarized.normalised(ExportMode::summarized), summarized);

    // There is always a duration, and a date in detailed rows alone.
    const auto fields = ExportFieldSet::parse("description").value();
    EXPECT_EQ(fields.normalised(ExportMode::detailed).tokens(), "date,duration,description");
    EXPECT_EQ(ExportFieldSet::parse("date")->normalised(ExportMode::summarized).tokens(), "duration");
}

TEST(ExportFieldSet, ReadsEverySetThatItWritesAndNothingElse)
{
    for (unsigned bits = 1; bits < 1U << exportFieldTokens.size(); ++bits) {
        ExportFieldSet fields;
        for (std::size_t i = 0; i < exportFieldTokens.size(); ++i)
            fields.*exportFieldTokens[i].field = (bits >> i & 1U) != 0;
        EXPECT_EQ(ExportFieldSet::parse(fields.tokens()), fields) << fields.tokens();
    }
    EXPECT_EQ(ExportFieldSet::parse("project,client,project")->tokens(), "client,project");
    for (const auto* text : {"", ",", "date,", "date, client", "Date", "date;client", "rate"})
        EXPECT_EQ(ExportFieldSet::parse(text), std::nullopt) << text;
}

} // namespace

} // namespace stintbook
